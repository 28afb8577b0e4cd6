// Corners that a turn or a scale has left between whole units.
#pragma once

#include <span>

#include "operations/edit_result.h"

namespace ferrowand {

class Map;
class entity;

inline constexpr int LARGEST_SNAP = 4096;  // units

// Every corner of the selected brushes, and every origin, goes to the nearest multiple of `grid`
// units. A brush that would not stay sound is left as it is. The status tells how many went and how
// many were left.
EditResult SnapSelection(Map& map, int grid);

// Says in the status how many brushes of the trees have corners between whole units, if any.
void TellOffUnits(Map& map, std::span<entity* const> trees);

}  // namespace ferrowand
