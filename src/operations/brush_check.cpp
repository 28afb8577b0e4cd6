#include "operations/brush_check.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>

#include "geometry/tolerance.h"

namespace ferrowand {
namespace {

// What has corners off whole units is rounded anew each time that it is saved and read. Nearly all
// that is going to be lost is lost in the first few.
constexpr int SAVES = 3;

DVec3 Rounded(const Vec3& p) {
  return DVec3(RoundToInt(p.x), RoundToInt(p.y), RoundToInt(p.z));
}

bool Strays(const Bounds& bounds, const Bounds& from) {
  for (int axis = 0; axis < 3; ++axis) {
    if (std::fabs(bounds.mins[axis] - from.mins[axis]) > LARGEST_STRAY) return true;
    if (std::fabs(bounds.maxs[axis] - from.maxs[axis]) > LARGEST_STRAY) return true;
  }
  return false;
}

bool IsFinite(const DVec3& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

}  // namespace

bool SurvivesSaving(const Brush& brush, Reporter& reporter) {
  const auto count = static_cast<std::size_t>(brush.getNumFaces());
  if (!std::ranges::all_of(brush.Faces(), &Face::HasShape)) return false;
  std::array<Plane, MAXFACES> planes;
  std::array<WindingPtr, MAXFACES> read;
  bool isWhole = count == 0;
  for (int save = 0; save < SAVES && !isWhole; ++save) {
    for (std::size_t i = 0; i < count; ++i) {
      const winding& w = read[i] ? *read[i] : *brush.Faces()[i].w;
      const auto points = w.Points();
      planes[i] = PlaneFromPoints(Rounded(points[0].Position()), Rounded(points[1].Position()),
                                  Rounded(points[2].Position()));
      if (!IsFinite(planes[i].normal)) return false;
    }
    Bounds bounds;
    isWhole = true;
    for (std::size_t i = 0; i < count; ++i) {
      read[i] = FaceWinding(std::span(planes).first(count), i, reporter);
      if (!read[i]) return false;
      for (const WindingPoint& p : std::as_const(*read[i]).Points()) {
        bounds.Add(p.Position());
        isWhole = isWhole && Rounded(p.Position()) == DVec3(p.Position());
      }
    }
    if (Strays(bounds, brush.Box())) return false;
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
