// What all maps share, as the options want it.
#pragma once

#include <string>

namespace ferrowand {

struct GameData;
struct Options;

// Where files of the game are looked for; `directory` is the current one.
void FillSearchPath(GameData& data, const Options& options, const std::string& directory);
// Also in that folder WADs are found from now on, whatever folder their names tell.
void RememberWadFolder(GameData& data, Options& options, const std::string& folder);
// Says so where there is none.
void LoadPalette(GameData& data, const Options& options);
// Of the textures that are kept, at once.
void LimitTextures(GameData& data, const Options& options);

}  // namespace ferrowand
