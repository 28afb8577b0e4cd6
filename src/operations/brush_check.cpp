#include "operations/brush_check.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>
#include <array>
#include <span>

#include "document/written_points.h"
#include "geometry/tolerance.h"

namespace ferrowand {
bool SurvivesSaving(const Brush& brush, Reporter& reporter) {
  if (!std::ranges::all_of(brush.Faces(), &Face::HasShape)) return false;
  std::array<Plane, MAXFACES> planes;
  std::size_t count = 0;
  bool isCarried = true;
  for (const Face& face : brush.Faces()) {
    const WrittenPoints written = PointsToWrite(face);
    if (WholeNormal(written.points) == WholePoint()) return false;
    isCarried = isCarried && written.miss <= CARRIED;
    planes[count++] = PlaneOf(written.points);
  }
  const double limit = isCarried ? LARGEST_SLIP : LARGEST_STRAY;
  for (std::size_t i = 0; i < count; ++i) {
    const WindingPtr read = FaceWinding(std::span(planes).first(count), i, reporter);
    if (!read || !HaveSameCorners(*brush.Faces()[i].w, *read, limit)) {
      if (getenv("DBG")) {
        fprintf(stderr, "face %zu of %zu: %d carried %d\n", i, count, bool(read), isCarried);
        for (const Face& face : brush.Faces()) fprintf(stderr, "  miss %g own %d\n", PointsToWrite(face).miss, AsWhole(face.planepts).has_value());
        for (auto& p : std::as_const(*brush.Faces()[i].w).Points()) fprintf(stderr, " old %f %f %f\n", p.x, p.y, p.z);
        if (read) for (auto& p : std::as_const(*read).Points()) fprintf(stderr, " new %f %f %f\n", p.x, p.y, p.z);
      }
      return false;
    }
  }
  return true;
}

bool IsInsideWorld(const Bounds& bounds) {
  for (int axis = 0; axis < 3; ++axis) {
    if (!(bounds.mins[axis] >= -BASE_SIZE && bounds.maxs[axis] <= BASE_SIZE)) return false;
  }
  return true;
}

}  // namespace ferrowand
