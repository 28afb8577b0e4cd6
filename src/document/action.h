// What the user is doing, in words: for the status line, and to name what can be undone.
#pragma once

#include <span>
#include <string>

#include "document/announcement.h"

namespace ferrowand {

struct GameData;

// While it lives, steps of editing are known by its name. Within another the outer one counts.
class ActionScope {
 public:
  ActionScope(GameData& data, std::string name);
  ~ActionScope();
  ActionScope(const ActionScope&) = delete;
  ActionScope& operator=(const ActionScope&) = delete;

 private:
  GameData& data_;
  bool isInner_;
};

// "crate, a brush"; what has no name is "Unnamed".
std::string InWords(const entity& object);
// "1 brush", "3 brushes and 1 entity".
std::string InWords(std::span<const entity* const> objects);
// The action under way and what the step did it to: "Duplicate: 3 brushes". Those are the objects
// given, or what the step itself shows. Empty without an action.
std::string ActionInWords(const Map& map, const MapChange& step,
                          std::span<const entity* const> objects);

}  // namespace ferrowand
