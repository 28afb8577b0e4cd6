#include "operations/brush_check.h"

#include <algorithm>

#include "document/written_points.h"
#include "geometry/tolerance.h"
#include "geometry/whole_plane.h"

namespace ferrowand {

bool SurvivesSaving(const Brush& brush, Reporter& reporter) {
  if (!std::ranges::all_of(brush.Faces(), &Face::HasShape)) return false;
  const auto isWhole = [](const Face& face) { return AreWhole(face.planepts); };
  if (!std::ranges::all_of(brush.FarFaces(), isWhole)) return false;
  const SavedShape shape = ShapeInFile(brush, reporter);
  return shape.lostFaces == 0 &&
         shape.cornerMove <= (shape.isCarried ? LARGEST_SLIP : LARGEST_STRAY);
}

bool IsInsideWorld(const Bounds& bounds) {
  for (int axis = 0; axis < 3; ++axis) {
    if (!(bounds.mins[axis] >= -WORLD_REACH && bounds.maxs[axis] <= WORLD_REACH)) return false;
  }
  return true;
}

}  // namespace ferrowand
