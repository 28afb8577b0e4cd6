#include "gamedata/texture_name.h"

#include <algorithm>

#include "base/path_text.h"
#include "base/report.h"
#include "base/text_parts.h"

namespace ferrowand {
namespace {

constexpr std::size_t LONGEST_NAME = 15;

}  // namespace

std::string WhyNoTextureName(std::string_view name) {
  if (name.empty()) return "A texture must have a name";
  if (name.size() > LONGEST_NAME) {
    return Format("The name of a texture has at most %u characters",
                  static_cast<unsigned>(LONGEST_NAME));
  }
  const bool isWhole = std::ranges::all_of(
      name, [](char c) { return static_cast<unsigned char>(c) > ' ' && c != '"'; });
  return isWhole ? "" : "The name of a texture has no blanks, quotes or line ends";
}

std::string TextureNameOfFile(std::string_view path) {
  std::string name = SplitPath(path).base;
  if (name.starts_with('#')) name.front() = '*';
  return name;
}

std::string FileNameOfTexture(std::string_view name) {
  std::string file(name);
  if (file.starts_with('*')) file.front() = '#';
  return file;
}

std::string AnimationOf(std::string_view name) {
  if (name.size() < 2 || name[0] != '+') return "";
  const std::string key = LowerCase(name);
  const bool isFrame = (key[1] >= '0' && key[1] <= '9') || (key[1] >= 'a' && key[1] <= 'j');
  return isFrame ? "+" + key.substr(2) : "";
}

}  // namespace ferrowand
