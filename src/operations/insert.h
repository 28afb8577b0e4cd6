// New point entities, keys of what is selected, and taking it out.
#pragma once

#include <string_view>

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

// Of every selected object.
EditResult SetKeyOfSelection(Map& map, std::string_view name, std::string_view value);
EditResult RemoveKeyOfSelection(Map& map, std::string_view name);
EditResult SetClassOfSelection(Map& map, const EntityClass& entityClass);

// A group that loses its last member goes with it.
EditResult DeleteSelection(Map& map);

}  // namespace ferrowand
