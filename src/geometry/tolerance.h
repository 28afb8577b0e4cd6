// Every tolerance and limit of the geometry, in world units unless said otherwise.
#pragma once

namespace ferrowand {

// A point nearer to a plane than this lies on it: the mapping tools' own tolerance, so that what
// looks closed here is closed to them.
inline constexpr double ON_EPSILON = 0.1;
// A computed coordinate nearer to a whole unit than this is that unit.
inline constexpr double SNAP_EPSILON = 0.01;
// Half the side of the square that a plane starts from.
inline constexpr double BASE_SIZE = 8192.0;
// Below any component of a unit normal.
inline constexpr double BOGUS_RANGE = 18000.0;
inline constexpr int MAXWINDINGPOINTS = 64;
inline constexpr int MAXFACES = 32;

}  // namespace ferrowand
