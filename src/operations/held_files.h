// The files that the program holds for its maps, what they take of its memory, and which of them no
// map uses.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ferrowand {

class Map;
struct GameData;

enum class HeldKind { Map, Wad, Classes };

struct HeldFile {
  HeldKind kind;
  std::string name{};
  std::uint64_t bytes = 0;  // about
  std::string contents{};   // "128 textures, 40 with pixels"
  std::size_t users = 0;    // open maps that use it; of a WAD the default counts as one

  friend bool operator==(const HeldFile&, const HeldFile&) = default;
};

using MapList = std::vector<std::unique_ptr<Map>>;

// Maps, WADs, files of classes, each in the order of opening.
std::vector<HeldFile> HeldFiles(const GameData& data, const MapList& maps);

// Closes the WADs that no map uses and that are not the default; which these were. What steps of
// undo name is opened again when it comes back.
std::vector<std::string> PurgeWads(GameData& data, const MapList& maps);

}  // namespace ferrowand
