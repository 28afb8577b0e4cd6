// What stands in the way of light: the solid brushes of the world.
#pragma once

#include <optional>
#include <vector>

#include "geometry/box_tree.h"

namespace ferrowand {

class Map;
class entity;

class LightBlockers {
 public:
  // Of the map as it is now: brushes that the game makes part of the world, but for liquids and
  // what the game's tools take out. Those of brush entities move, and throw no shadows.
  explicit LightBlockers(const Map& map);

  // Those that may stand between some point of the box and the light.
  std::vector<std::size_t> Between(const Bounds& box, const DVec3& light) const;
  bool Blocks(std::size_t brush, const DVec3& from, const DVec3& to) const;

 private:
  void Add(const entity& e);

  std::vector<Plane> planes_;
  std::vector<std::size_t> ends_;  // of each brush's planes, which begin where the last one's end
  std::vector<Bounds> boxes_;
  std::optional<BoxTree> tree_;
};

}  // namespace ferrowand
