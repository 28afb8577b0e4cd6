// Objects cut by objects: the subtraction from whole trees, and the two commands on a map.
#pragma once

#include <cstddef>
#include <string_view>

#include "document/entity.h"

namespace ferrowand {

class EditStep;

struct CsgCount {
  std::size_t cut = 0;  // brushes that gave way to their pieces
  // Those that a cutter, or several, could not cut.
  std::size_t tooManyFaces = 0;  // of a piece
  std::size_t tooSmall = 0;      // a piece, for whole units
};

// Cuts everything visible and enabled from the target downwards: each brush whose box overlaps the
// cutter's gives way to its pieces outside, which become children of the entity that had it. That
// keeps its keys and its class, and has nothing where it was inside as a whole.
CsgCount Subtract(entity& target, const Brush& cutter, EditStep& step);
// With the cutter's own brush and, where it is a marked group, with those of its children.
CsgCount SubtractEntity(entity& target, const entity& cutter, EditStep& step);

// Cuts the selected objects out of everything else in the map. What had to be left uncut is said in
// one message. New faces have the texture, or, where none is named, that of the first face of what
// was cut.
void SubtractSelection(Map& map, std::string_view texture = {});
// Of exactly two selected objects: what the first has in common with the second, in one new object
// in place of both, which is selected. Null when there is nothing, or the user, asked about a layer
// out of sight, declines: both stay where they were.
entity* IntersectSelection(Map& map, std::string_view texture = {});

}  // namespace ferrowand
