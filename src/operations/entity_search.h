// Objects found by what a user knows of them.
#pragma once

#include <set>
#include <span>
#include <string>
#include <vector>

namespace ferrowand {

class Map;
class entity;

// Texts are patterns as in TextPattern; an empty one asks for nothing.
struct EntityQuery {
  std::string classname{};   // of what is hidden the one that it will have again
  std::string key{};         // some key is called so ...
  std::string value{};       // ... and this is its value, or, without a name, that of any key
  std::string target{};      // the name of an end of a link: what it is called, or what it targets
  std::string flag{};        // a spawnflag of that name is set
  bool keyIsAbsent = false;  // no key is called so; the value does not count then
  bool wholeTexts = false;   // a pattern without wildcards is all of the text
  bool caseCounts = false;

  bool IsEmpty() const {
    return classname.empty() && key.empty() && value.empty() && target.empty() && flag.empty();
  }
  friend bool operator==(const EntityQuery&, const EntityQuery&) = default;
};

// In the order of the map; hidden and disabled ones too. Brushes that have no name are found by
// their class alone, the world never.
std::vector<entity*> FindEntities(Map& map, const EntityQuery& query);
// The same among the objects, which are of one map, and what they hold. Each once.
std::vector<entity*> FindEntitiesIn(std::span<entity* const> objects, const EntityQuery& query);

// What is said of objects that were selected: how many of those that were to be are so, and how
// many of them are hidden or disabled.
std::string SelectedInWords(std::size_t wanted, std::size_t selected);
// ", 3 hidden or disabled"; nothing of none.
std::string UnreachedInWords(std::size_t count);

// What is there to be found.
std::set<std::string, std::less<>> ClassesIn(const Map& map);
std::set<std::string, std::less<>> KeysIn(const Map& map);
std::set<std::string, std::less<>> FlagsIn(const Map& map);

}  // namespace ferrowand
