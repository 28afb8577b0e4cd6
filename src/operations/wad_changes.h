// What a user does to the textures of a WAD, of which every open map may show some. In the WAD
// itself nothing is taken back.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gamedata/wad_file.h"

namespace ferrowand {

class Map;

using MapSpan = std::span<const std::unique_ptr<Map>>;

// Those that the game shows in turn with that one: "+0" to "+9" and "+a" to "+j" before one name.
// Only the texture itself where it is none of these.
std::vector<Texture*> FramesOf(Texture& texture);
// The name of that frame, if all frames of its animation come to be called as `newName` is.
std::string NameOfFrame(std::string_view frame, std::string_view newName);

// Whether another texture of the WAD has the name.
bool IsTaken(const WadFile& wad, std::string_view name, const Texture* but = nullptr);

// For another WAD. Of the real size.
std::unique_ptr<Texture> CopyOf(Texture& texture);

// False when the WAD refused, which it has told, and nothing has changed. The maps are bound anew:
// faces that missed the texture have it, and no face holds one that is no more.
bool AddToWad(MapSpan maps, WadFile& wad, std::unique_ptr<Texture> texture);
bool AddToWad(MapSpan maps, WadFile& wad, std::vector<std::unique_ptr<Texture>> textures);
bool RemoveFromWad(MapSpan maps, WadFile& wad, std::span<Texture* const> textures);
// Other pixels of the same size.
bool RewriteInWad(MapSpan maps, Texture& texture, std::span<const std::uint8_t> pixels);

// Also on the faces of all maps that show them, one step in each.
bool RenameInWad(MapSpan maps, WadFile& wad, std::span<const TextureRename> renames);

}  // namespace ferrowand
