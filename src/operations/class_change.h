// What an object is to the game: another class for it, and brushes that become an entity's or the
// world's.
#pragma once

#include <span>
#include <string_view>

#include "operations/edit_result.h"

namespace ferrowand {

class EntityClass;
class Map;
class entity;
struct Texture;

// Of one of the map's objects; the world stays what it is. Classes that are made of brushes are for
// what has some, and others for what has none. Keys stay. A name that no class of the map has is
// taken. Of set spawnflags that mean something else afterwards the status tells.
EditResult ChangeClass(Map& map, std::span<entity* const> objects, std::string_view classname);
EditResult SetClassOfSelection(Map& map, const EntityClass& entityClass);

// The first brush entity that is selected, when there are other brushes to be tied to it; or null.
entity* SelectedToTieTo(const Map& map);
// The selected brushes, those of other entities too, become a part of it, with that texture if
// there is one; entities and groups that are emptied go.
EditResult TieToEntity(Map& map, entity& brushEntity, Texture* texture = nullptr);
// The brushes of the selected entities, or those that are selected of one, become the world's; what
// is emptied goes.
EditResult TieToWorld(Map& map);

// What brushes of the class look like as a rule; null for nothing, and where no WAD of the map has
// it.
Texture* UsualTextureIn(const Map& map, const EntityClass& entityClass);

}  // namespace ferrowand
