// How entities point to each other: a key of the one holds what another is called. Names are
// compared letter by letter, as the game does.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "document/entity.h"
#include "operations/edit_result.h"

namespace ferrowand {

class EntityClass;
class Map;

// "target", "target2" and "killtarget", and what the class tells to be such a key.
bool IsLinkKey(const EntityClass& entityClass, std::string_view key);
// "targetname", and what the class tells to be such a key.
bool IsNameKey(const EntityClass& entityClass, std::string_view key);

struct Link {
  entity* from;
  entity* to;  // null: none is called so
  std::string key, name;
  bool isInOtherCase = false;  // `to` is called so in other letters alone: the game finds nothing
};

// Of the map's entities; in map order. Links among the objects themselves are in both.
std::vector<Link> LinksFrom(Map& map, std::span<entity* const> objects);
std::vector<Link> LinksTo(Map& map, std::span<entity* const> objects);
// What links of the selection lead to, or come from: each once, those that can be reached.
std::vector<entity*> LinkedWithSelection(Map& map, bool forward);

// Every name that an entity of the map has, sorted.
std::vector<std::string> NamesIn(const Map& map);

// What the selected objects could be linked by: the target of the first, the names of the others.
// None, and a new name is made; several, and the user is to choose.
std::vector<std::string> NamesToConnect(const Map& map);
// The first of the selected objects targets the others by that name, or, if it is empty, by one
// that is free: that of the second one's class and a number.
EditResult ConnectSelection(Map& map, std::string_view name);

// Of objects that are to come into the map: where both ends of a link are among them, and the map
// has the name already, both get another one. Links that lead out stay.
void RenameInnerLinks(const Map& map, std::span<const EntityPtr> arriving);

}  // namespace ferrowand
