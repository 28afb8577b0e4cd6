// What of a map is picked by a click or a box, and worked on.
#pragma once

#include <span>
#include <vector>

#include "document/reach.h"
#include "geometry/vec.h"

namespace ferrowand {

class Map;
class entity;

// A click or a box takes whole objects (the outermost group that acts as one), or single brushes.
enum class PickLevel { Objects, Brushes };
// A box takes what it touches, or only what lies inside it as a whole.
enum class BoxRule { Partial, Full };

// What is picked when `e` is hit: itself, or the outermost group around it that acts as one.
entity& ObjectAt(entity& e);
// All that can be picked, in the order of the map.
std::vector<entity*> PickableObjects(entity& tree, PickLevel level);

// Instead of the selection, or, to add, behind it. Null selects nothing more.
void Select(Map& map, entity* e, bool add);
void Select(Map& map, std::span<entity* const> objects, bool add);
// By the bounds of each object, edges included. An axis that does not matter is given the widest
// extent.
void SelectInBox(Map& map, const Bounds& box, BoxRule rule, PickLevel level, bool add);
// What a group or a layer holds, instead of it.
void SelectMembers(Map& map, entity& holder, bool add);

// Of what lies below each other at a place, the uppermost first: the one behind, or before, the
// first that is selected, while there is one; the uppermost where none of them is. Null for no
// objects.
entity* BesideSelected(const Map& map, std::span<entity* const> stack, bool deeper);

Bounds SelectionBounds(const Map& map);
// What a command works on: the selected objects that can be reached, none of which lies within
// another, in the order of selecting.
std::vector<entity*> SelectedRoots(const Map& map);

}  // namespace ferrowand
