// Classes as a file defines them, and what they are once their bases have been added.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "gamedata/class_record.h"

namespace ferrowand {

class ClassLog;

enum class ClassKind : std::uint8_t {
  Base,   // no class of its own: others are made of it
  Point,  // stands at a point
  Brush   // made of brushes
};

struct ClassDefinition {
  ClassKind kind = ClassKind::Point;
  ClassRecord record;  // with what the class itself tells
  bool hasColour = false, hasBox = false;
  std::vector<std::string> flagHelp;  // of each spawnflag that has a name and help
  std::vector<std::string> bases;     // by name, in the order of the file
  std::string place;                  // for messages
  unsigned long line = 0;
};

// In the order of their last definitions. What a class does not tell itself its bases do, the
// nearest first: keys, single spawnflags, colour, box. What is told of flags is added to the help.
// Of several definitions of a name the last holds; where one is a point class and one a brush class
// the class is both. A base is found by its name, failing that in any case. What a file may grow to
// this way is bounded: classes that would lead beyond get nothing from their bases, which is told.
std::vector<ClassRecord> WithBases(std::vector<ClassDefinition> definitions, ClassLog& log);

}  // namespace ferrowand
