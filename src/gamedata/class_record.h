// What a file of classes (QuakeC comments, DEF, FGD) tells of one class of entities.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ferrowand {

// What the value of a key is, as far as the file tells it; a window picks its field by this.
enum class KeyType : std::uint8_t {
  Text,
  Whole,    // a whole number
  Number,   // a number with a fraction
  Choices,  // one of `choices`, or what is typed
  Name,     // that others point to (targetname)
  Link,     // points to the entities of that name
  Colour,   // three numbers, 0 to 255 or 0 to 1
  Angle,
  File  // a sound, a model
};

struct KeyChoice {
  std::string value, caption;
};

struct KeyDefinition {
  std::string name;  // as it stands in the map
  KeyType type = KeyType::Text;
  std::string caption;       // a short word for it; empty: the name
  std::string defaultValue;  // what the game takes where the key is absent; empty: not told
  std::string help;
  std::vector<KeyChoice> choices;
};

struct ClassRecord {
  std::string classname;                         // matched letter by letter
  std::string description;                       // the help text
  float red = 0, green = 0, blue = 0;            // meant 0 to 1
  std::int16_t minx = -8, miny = -8, minz = -8;  // size box around the origin, world units
  std::int16_t maxx = 8, maxy = 8, maxz = 8;
  bool isMadeOfBrushes = false;  // a "?" for the box; the box is then that of the defaults
  bool isPointToo = false;       // made of brushes, and a point class of the same name is there too
  std::vector<std::string> flags;   // names of the spawnflags, bit 0 first; empty: bit not named
  std::uint32_t flagDefaults = 0;   // the bits of a new entity
  std::vector<KeyDefinition> keys;  // in the order of the file
  bool hasTilde = false;            // the header fixes the editor flags of its entities ...
  std::int32_t tildeValue = 0;      // ... to this

  std::size_t numflags() const { return flags.size(); }
  std::int16_t Min(int axis) const { return axis == 0 ? minx : axis == 1 ? miny : minz; }
  std::int16_t Max(int axis) const { return axis == 0 ? maxx : axis == 1 ? maxy : maxz; }
};

}  // namespace ferrowand
