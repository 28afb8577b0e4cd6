#include "shell/documents/shared_data.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "base/options.h"
#include "base/path_text.h"
#include "document/game_data.h"
#include "platform/system.h"

namespace ferrowand {
namespace {

constexpr char BETWEEN_FOLDERS = '|';  // which no folder's name holds
constexpr std::size_t MOST_FOLDERS = 16;

std::vector<std::string> WadFolders(const Options& options) {
  std::vector<std::string> folders;
  std::string_view rest = options.wadFolders;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(BETWEEN_FOLDERS), rest.size());
    if (end > 0) folders.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return folders;
}

}  // namespace

void RememberWadFolder(GameData& data, Options& options, const std::string& folder) {
  std::vector<std::string> folders = WadFolders(options);
  std::erase_if(folders, [&](const std::string& known) { return EqualNoCase(known, folder); });
  folders.insert(folders.begin(), folder);
  folders.resize(std::min(folders.size(), MOST_FOLDERS));
  options.wadFolders.clear();
  for (const std::string& known : folders) options.wadFolders += known + BETWEEN_FOLDERS;
  data.wads.SetFolders(std::move(folders));
}

void FillSearchPath(GameData& data, const Options& options, const std::string& directory) {
  SearchPath path;
  path.Add("");
  path.Add(options.quakeDirectory);
  path.Add(directory);
  if (const auto folder = FindOnSystemPath("quake.pal")) path.Add(*folder);
  data.searchPath = path;
  data.wads.SetFolders(WadFolders(options));
}

void LoadPalette(GameData& data, const Options& options) {
  data.palette.Load(data.searchPath, {options.gammaRed, options.gammaGreen, options.gammaBlue},
                    data.reporter);
  data.wads.ForgetColours();
}

void LimitTextures(GameData& data, const Options& options) {
  data.wads.SetLimits({options.textureCache, options.maxTextureSize});
}

}  // namespace ferrowand
