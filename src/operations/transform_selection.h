// Moving, turning, scaling, skewing and multiplying the selection. Each is one step of the undo
// store, and refused as a whole when one brush would not survive it.
#pragma once

#include "geometry/matrix.h"
#include "geometry/vec.h"
#include "operations/edit_result.h"

namespace ferrowand {

class Map;

// Bit 0 for X, 1 for Y, 2 for Z: the axes along which objects may be moved and scaled.
inline constexpr unsigned ALL_AXES = 7;

struct TransformOptions {
  bool textureLock = true;  // textures follow their faces; else they stay in the world
  unsigned axes = ALL_AXES;
};

EditResult MoveSelection(Map& map, const Vec3& by, const TransformOptions& options);
// Every point p becomes centre + matrix (3 x 3) times (p - centre). The axes do not limit it. A
// turn turns where entities look, too. One by right angles, and a flip, leaves whole corners on
// whole units: the centre gives way by half a unit where it must. Of any other turn or scale the
// status tells how many brushes have corners between units afterwards.
EditResult TransformSelection(Map& map, const Matrix& matrix, const DVec3& centre,
                              const TransformOptions& options);
// The factor of an axis that is off counts as 1.
EditResult ScaleSelection(Map& map, const DVec3& factors, const DVec3& centre,
                          const TransformOptions& options);
// In the middle of the selection's bounds.
EditResult FlipSelection(Map& map, int axis, const TransformOptions& options);
// From axis u towards axis v.
EditResult RotateSelection(Map& map, int axisu, int axisv, double degrees, const DVec3& centre,
                           const TransformOptions& options);
// One edge of the selection's bounds, the high or the low one of `across`, goes by `amount` along
// the other axis; the opposite edge stays.
EditResult SkewSelection(Map& map, int along, int across, bool highEdge, double amount,
                         const TransformOptions& options);

// Turns about X, then Y, then Z, in degrees, each counter-clockwise seen against its axis. Exact at
// right angles.
Matrix TurnMatrix(const DVec3& degrees);
// In the plane of two axes, from the first towards the second.
Matrix TurnMatrix(int axisu, int axisv, double degrees);

// Copies join the leading group, or else what holds their original, and are what is selected
// afterwards. They lie where the originals do, moved by the offset.
EditResult DuplicateSelection(Map& map, const Vec3& offset, const TransformOptions& options);

// Objects that several copies may have together: what a 32-bit program has room for.
inline constexpr int MAXCOPIES = 250000;

struct MultiDuplicate {
  int count = 1;  // of copies
  Vec3 offset;    // each against the one before
  DVec3 turn{};   // degrees, likewise: about X, then Y, then Z, through the selection's middle
  bool namesLinksAnew = false;  // within each copy, where both ends of a link are in it
};
EditResult DuplicateSelection(Map& map, const MultiDuplicate& how, const TransformOptions& options);

}  // namespace ferrowand
