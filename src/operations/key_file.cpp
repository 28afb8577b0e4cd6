#include "operations/key_file.h"

#include <algorithm>

#include "base/path_text.h"
#include "base/text_parts.h"

namespace ferrowand {
namespace {

std::string WithSlashes(std::string_view path) {
  std::string text(path);
  std::ranges::replace(text, '\\', '/');
  return text;
}

}  // namespace

std::string GameFileForKey(std::string_view path, std::string_view quakeDirectory) {
  const std::string whole = WithSlashes(path), lower = LowerCase(whole);
  const PathParts parts = SplitPath(path);
  if (EqualNoCase(parts.extension, ".wav")) {
    constexpr std::string_view SOUNDS = "/sound/";
    const std::size_t at = lower.rfind(SOUNDS);
    if (at != lower.npos) return whole.substr(at + SOUNDS.size());
  }
  const std::string game = InFolder(LowerCase(WithSlashes(quakeDirectory)), "");
  if (!quakeDirectory.empty() && lower.starts_with(WithSlashes(game))) {
    const std::size_t mod = lower.find('/', game.size());
    if (mod != lower.npos) return whole.substr(mod + 1);
  }
  return parts.base + parts.extension;
}

}  // namespace ferrowand
