// What qbsp leaves for the eye: the way out through which a level leaks (PTS), and the openings
// between its rooms (PRT). Texts with numbers; whatever is damaged or no number ends what is read.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/vec.h"

namespace ferrowand {

using Polyline = std::vector<Vec3>;  // world units

// A line of text a point, "x y z"; others are passed over. Points on a straight way between their
// neighbours are left out.
Polyline ParseLeakLine(std::string_view text);
// "PRT1", two counts (or, of PRT1-AM and PRT2, three), then a portal a line: the number of its
// corners, its rooms, its corners in parentheses. Nothing when it is no such file.
std::optional<std::vector<Polyline>> ParsePortals(std::string_view text);

// The files; nothing when one cannot be read.
std::optional<Polyline> ReadLeakLine(const std::string& path);
std::optional<std::vector<Polyline>> ReadPortals(const std::string& path);

}  // namespace ferrowand
