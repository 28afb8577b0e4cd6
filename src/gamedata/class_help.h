// What the help text of a class tells of its keys. Nothing in the text is marked for a program:
// these are the customs of those who write such texts.
//   "speed"  movement speed (100 default)      a key, its help and its default
//   "sounds"                                   a key, and its choices on the lines below
//   0) silent
//   Keys:                                      lines of keys down to the next empty line
//   wait  seconds until it comes back (3)
// What is said in a sentence ('if "health" is set', 'Default light value is 300') counts too.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gamedata/class_record.h"

namespace ferrowand {

// In the order of the text. `flags` are the names of the class's spawnflags, which are no keys.
std::vector<KeyDefinition> KeysOfHelp(std::string_view help, std::span<const std::string> flags);

// Of a key of that name in every class of the game; Text where that tells nothing.
KeyType UsualKeyType(std::string_view name);

}  // namespace ferrowand
