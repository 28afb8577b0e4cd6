// Counts of what a map holds.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "document/entity.h"

namespace ferrowand {

// Cheap to count.
struct MapFigures {
  std::size_t entities = 0;  // the world, point and brush entities
  std::size_t brushes = 0;
  std::size_t faces = 0;
  std::size_t lights = 0;
  std::size_t deathmatchStarts = 0;
};
MapFigures FiguresOf(const entity& world);
// "112 brushes, 59 entities, 13 lights, 689 faces, 5 deathmatch starts"
std::string InWords(const MapFigures& figures);

struct MapStatistics : MapFigures {
  std::size_t missingTextures = 0;  // faces that show the missing-texture pattern
  std::size_t layers = 0, hidden = 0, templateClasses = 0, templateInstances = 0, embeds = 0;
  std::map<std::string, std::size_t> classnames;  // of the entities
  std::set<std::string> textures;                 // names in lower case
  std::vector<std::string> exits;                 // the maps that level changes lead to, in order
  Bounds bounds;                                  // of the brushes
};

MapStatistics CountMap(const entity& world);

}  // namespace ferrowand
