// The list of what is wrong in a map.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "operations/face_check.h"

namespace ferrowand {

class WadList;
class entity;

inline constexpr std::uint8_t NO_FACE = 255;  // the brush or the entity as a whole

struct Problem {
  entity* e;          // not owned
  std::uint8_t face;  // its index, or NO_FACE
  CheckCode code;

  friend bool operator==(const Problem&, const Problem&) = default;
};

// Appends what is wrong with the entity and all below it, in the order of the map. The faces take
// their planes from their windings first, so that what is checked is what a file gets.
void CheckMap(entity& e, std::vector<Problem>& list, const WadList& wads, double tolerance);

// One line for the user.
std::string ReportLine(const Problem& problem);

}  // namespace ferrowand
