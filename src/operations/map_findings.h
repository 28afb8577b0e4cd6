// What else of a map its user should know before the game's tools read it: what they refuse or cut
// off, and what the game will not do as it was meant. Beside the check's own list (map_check.h).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "operations/map_check.h"

namespace ferrowand {

class Map;

enum class FindingKind : std::uint8_t {
  LongKey,
  LongValue,
  LongWord,         // the name of a texture
  LongTextureName,  // cut off by the tools
  MovedFaces,       // that lie between whole units
  LostFaces,        // too small for whole units
  FarBrush,         // too far out to be shown at all
  BeyondClassic,    // further out than the first tools and engines go
  MixedContents,
  DuplicateBrush,
  NamelessTarget,
  NoPlayerStart,
  OutsideWorld
};

struct Finding {
  entity* e;  // not owned
  std::uint8_t face;
  FindingKind kind;
  std::string detail;  // a name or a number; may be empty

  friend bool operator==(const Finding&, const Finding&) = default;
};

// The heading that they stand under.
inline constexpr char FINDINGS_HEADING[] = "Further findings:";

// Appends what can be told of the object alone.
void FindInObject(entity& e, std::vector<Finding>& list);
// And of all below it, in the order of the map.
void FindInTree(entity& e, std::vector<Finding>& list);
// Appends what can only be told of the map as a whole: what lies twice, what names nothing, what is
// missing, what lies outside. In the order of the map.
void FindInMap(Map& map, std::vector<Finding>& list);

// One line for the user.
std::string ReportLine(const Finding& finding);

}  // namespace ferrowand
