#include "document/edit/brush_check.h"

#include <array>
#include <cmath>
#include <span>

#include "geometry/tolerance.h"

namespace ferrowand {
namespace {

// World units by which the bounds of a brush may change when it is saved and read.
constexpr float LARGEST_STRAY = 4;

DVec3 Rounded(const Vec3& p) {
  return DVec3(RoundToInt(p.x), RoundToInt(p.y), RoundToInt(p.z));
}

bool IsFinite(const DVec3& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

}  // namespace

bool SurvivesSaving(const Brush& brush, Reporter& reporter) {
  std::array<Plane, MAXFACES> planes;
  const auto count = static_cast<std::size_t>(brush.getNumFaces());
  for (std::size_t i = 0; i < count; ++i) {
    const Face& face = brush.Faces()[i];
    if (!face.HasShape()) return false;
    const winding& w = *face.w;
    const auto points = w.Points();
    planes[i] = PlaneFromPoints(Rounded(points[0].Position()), Rounded(points[1].Position()),
                                Rounded(points[2].Position()));
    if (!IsFinite(planes[i].normal)) return false;
  }
  Bounds bounds;
  for (std::size_t i = 0; i < count; ++i) {
    const WindingPtr w = FaceWinding(std::span(planes).first(count), i, reporter);
    if (!w) return false;
    for (const WindingPoint& p : w->Points()) bounds.Add(p.Position());
  }
  for (int axis = 0; axis < 3 && count > 0; ++axis) {
    if (std::fabs(bounds.mins[axis] - brush.Box().mins[axis]) > LARGEST_STRAY) return false;
    if (std::fabs(bounds.maxs[axis] - brush.Box().maxs[axis]) > LARGEST_STRAY) return false;
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
