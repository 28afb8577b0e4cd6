// A map in the order in which its Quake map is written, and the game's tools count it.
#pragma once

#include <vector>

namespace ferrowand {

class Map;
class entity;

// One block of the file; the world's is the first.
struct GameBlock {
  entity* object;
  // In their order, objects of the map: for a brush that an instance shows, the instance.
  std::vector<entity*> brushes;
};

// `option` is a set of WRITE_ bits.
std::vector<GameBlock> GameOrder(Map& map, unsigned option);

}  // namespace ferrowand
