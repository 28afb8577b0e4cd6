// Paths that trains and monsters of the game follow: closed loops of entities, each the target of
// the one before.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "geometry/vec.h"
#include "operations/edit_result.h"

namespace ferrowand {

class Map;

// One path_corner at each place, named by the base name and a number from 0 on; the last one leads
// to the first. They join the leading group or the current layer, and are selected.
EditResult LayPath(Map& map, std::span<const Vec3> corners, std::string_view baseName);
// A base name that no path of the map has.
std::string UnusedPathName(const Map& map);

}  // namespace ferrowand
