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

inline constexpr double CHECK_TOLERANCE = 0.1, STRICT_TOLERANCE = 0.01;  // units off a plane

struct Problem {
  entity* e;          // not owned
  std::uint8_t face;  // its index, or NO_FACE
  CheckCode code;

  friend bool operator==(const Problem&, const Problem&) = default;
};

// Appends what is wrong with the entity and all below it, in the order of the map. The faces are
// looked at as if they had taken their planes from their windings, so that what is checked is what
// a file gets; nothing is changed.
void CheckMap(entity& e, std::vector<Problem>& list, const WadList& wads, double tolerance);
// The same of the entity alone.
void CheckObject(entity& e, std::vector<Problem>& list, const WadList& wads, double tolerance);

// One line for the user.
std::string ReportLine(const Problem& problem);
// What is said of it, then whose it is, then of which face unless that is NO_FACE.
std::string ReportLine(const std::string& what, const entity& e, std::uint8_t face);

}  // namespace ferrowand
