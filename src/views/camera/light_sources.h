// The light entities of a map as lights, in the simplest form of what the game's own light tool
// makes of them.
#pragma once

#include <vector>

#include "geometry/vec.h"

namespace ferrowand {

class Map;

struct LightSource {
  DVec3 origin;
  // At the origin, where 255 is the brightest that the game shows; it falls by 1 for every world
  // unit. Below 0 it takes light away.
  double value = 0;
  // Of a spotlight where it points, of length 1, and the cosine of half the angle of its cone.
  DVec3 direction;
  double coneCosine = -1;

  friend bool operator==(const LightSource&, const LightSource&) = default;
};

// Of all light entities that the game will have, in the order of the map: also of those that are
// hidden for a while, but not of templates and what stands for them.
std::vector<LightSource> LightsOf(const Map& map);

Bounds ReachOf(const LightSource& light);

}  // namespace ferrowand
