#include "shell/documents/shared_data.h"

#include "base/options.h"
#include "document/game_data.h"
#include "platform/system.h"

namespace ferrowand {

void FillSearchPath(GameData& data, const Options& options, const std::string& directory) {
  SearchPath path;
  path.Add("");
  path.Add(options.quakeDirectory);
  path.Add(directory);
  if (const auto folder = FindOnSystemPath("quake.pal")) path.Add(*folder);
  data.searchPath = path;
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
