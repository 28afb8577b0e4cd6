// Changing the shape of one brush by its corners or by a face. Nothing is given where the result
// would not be a convex brush with all the faces and corners it should have.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "document/brush.h"
#include "views/tools/corner_set.h"

namespace ferrowand {

// Each once, in the order of the faces.
std::vector<Vec3> CornersOf(const Brush& brush);
std::vector<Vec3> CornersOf(const Face& face);

// Those corners move, the others stay. A face that is not flat any more becomes several, all with
// its texture.
std::optional<Brush> MoveCorners(const Brush& brush, std::span<const Vec3> corners, const Vec3& by,
                                 Reporter& reporter);

// The plane of one face moves; the corners follow.
std::optional<Brush> MoveFace(const Brush& brush, int face, const Vec3& by, Reporter& reporter);

}  // namespace ferrowand
