// New point entities, and taking out what is selected.
#pragma once

#include "geometry/vec.h"
#include "operations/edit_result.h"

namespace ferrowand {

class EntityClass;
class Map;
class entity;

// It joins the leading group or the current layer, and is selected.
EditResult InsertEntity(Map& map, const EntityClass& entityClass, const Vec3& at);
// A copy of it, which may come from outside the map; only its place is its own.
EditResult InsertCopy(Map& map, const entity& prototype, const Vec3& at);

// A group that loses its last member goes with it.
EditResult DeleteSelection(Map& map);

}  // namespace ferrowand
