// The WADs of a map, as a user arranges them.
#pragma once

#include <string>
#include <vector>

#include "operations/edit_result.h"

namespace ferrowand {

class Map;
class TextureUses;

struct WadRow {
  std::string name{};                 // as the map calls it
  std::string file{};                 // that is open; empty for one that is missing
  std::size_t textures = 0;           // in it
  unsigned used = 0;                  // of those, how many faces have
  unsigned faces = 0;                 // that have one of them
  std::vector<std::string> shared{};  // of its textures those whose names other WADs have too

  bool IsMissing() const { return file.empty(); }
};

// In the order of the map.
std::vector<WadRow> WadRows(const Map& map, const TextureUses& uses);

// The name under which the map finds the file: from a folder of the search path or its own where
// the file lies below one, with slashes.
std::string WadNameOf(const Map& map, const std::string& path);

// One step each. The new one comes behind the others.
EditResult AddWad(Map& map, const std::string& path);
EditResult RemoveWad(Map& map, std::size_t index);
EditResult MoveWad(Map& map, std::size_t from, std::size_t to);
// Another file in the place of one.
EditResult ExchangeWad(Map& map, std::size_t index, const std::string& path);

// Looks again for those that are missing; how many have been found. No step: the map names them
// already.
std::size_t FindMissingWads(Map& map);

}  // namespace ferrowand
