// What the comment of a QuakeC file tells of one class of entities.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ferrowand {

struct ClassRecord {
  std::string classname;                         // matched letter by letter
  std::string description;                       // the help text
  float red = 0, green = 0, blue = 0;            // meant 0 to 1
  std::int16_t minx = -8, miny = -8, minz = -8;  // size box around the origin, world units
  std::int16_t maxx = 8, maxy = 8, maxz = 8;
  bool isMadeOfBrushes = false;    // a "?" for the box; the box is then that of the defaults
  std::vector<std::string> flags;  // names of the spawnflags, bit 0 first
  bool hasTilde = false;           // the header fixes the editor flags of its entities ...
  std::int32_t tildeValue = 0;     // ... to this

  std::size_t numflags() const { return flags.size(); }
  std::int16_t Min(int axis) const { return axis == 0 ? minx : axis == 1 ? miny : minz; }
  std::int16_t Max(int axis) const { return axis == 0 ? maxx : axis == 1 ? maxy : maxz; }
};

}  // namespace ferrowand
