// Groups: an entity that holds its members as children and, unless it is opened, acts as one
// object. A group that a user makes is of class "brush", so that the game never sees it, with its
// name in XMPentityname and the key "groupFather" "1". One group may lead: what is made or pasted
// joins it. Which one leads is the map's own (Map::leadingGroup) and in no file.
#pragma once

#include <string_view>

#include "document/entity.h"
#include "operations/edit_result.h"

namespace ferrowand {

struct Texture;

// It holds something and is not a layer: a user's group, a brush entity, a template class.
bool IsGroup(const entity& e);

// A user's group without members, in no map yet.
EntityPtr NewGroup(const Map& map, std::string_view name);

// Into a new group, where the first of them was; it is what is selected afterwards.
EditResult GroupSelection(Map& map);
// Likewise into a new entity of that class, or, of a single user's group, by giving it the class:
// what makes a door of brushes. With that texture on all faces, if there is one.
EditResult GroupSelectionAs(Map& map, const EntityClass& entityClass, Texture* texture = nullptr);
// Members go to where their group was and are selected; the groups go.
EditResult UngroupSelection(Map& map);
// The selected group leads from now on, or none does when it led already or nothing is selected.
// No change of the document.
EditResult SetAsLeading(Map& map);

}  // namespace ferrowand
