#include "operations/brush_check.h"

#include <algorithm>
#include <span>
#include <utility>

#include "document/written_points.h"
#include "geometry/tolerance.h"
#include "geometry/whole_plane.h"
#include "operations/face_check.h"

namespace ferrowand {

namespace {

// Twice the area, along the normal.
DVec3 AreaVector(std::span<const WindingPoint> points) {
  const DVec3 first(points.front().Position());
  DVec3 sum;
  for (std::size_t i = 1; i + 1 < points.size(); ++i) {
    sum = sum + Cross(DVec3(points[i].Position()) - first, DVec3(points[i + 1].Position()) - first);
  }
  return sum;
}

// What is closed has as much area to one side as to the other. Two faces may disagree by the
// tolerance on an edge between them; a wider gap is left where planes are nearly one.
bool IsClosed(const Brush& brush) {
  DVec3 open;
  double edges = 0;
  for (const Face& face : brush.Faces()) {
    const auto points = std::as_const(*face.w).Points();
    open = open + AreaVector(points);
    for (std::size_t i = 0; i < points.size(); ++i) {
      edges += Length(DVec3(points[(i + 1) % points.size()].Position() - points[i].Position()));
    }
  }
  return Length(open) <= ON_EPSILON * edges;
}

}  // namespace

bool SurvivesSaving(const Brush& brush, Reporter& reporter) {
  if (!std::ranges::all_of(brush.Faces(), &Face::HasShape)) return false;
  const auto isWhole = [](const Face& face) { return AreWhole(face.planepts); };
  if (!std::ranges::all_of(brush.FarFaces(), isWhole)) return false;
  if (brush.FarFaces().empty() && !(IsClosed(brush) && IsBrushConvex(brush))) return false;
  const SavedShape shape = ShapeInFile(brush, reporter);
  return shape.lostFaces == 0 &&
         shape.cornerMove <= (shape.isCarried ? LARGEST_SLIP : LARGEST_STRAY);
}

bool IsKeepable(const Brush& brush, Reporter& reporter) {
  // Whether rounded points still make a plane is known better by the save itself.
  const auto isSound = [](const Face& face) {
    const CheckCode code = ShapeCheck(face, ON_EPSILON);
    return code == CheckCode::None || code == CheckCode::NoNormal;
  };
  return brush.getNumFaces() >= SMALLEST_SOLID && std::ranges::all_of(brush.Faces(), isSound) &&
         SurvivesSaving(brush, reporter);
}

bool IsInsideWorld(const Bounds& bounds) {
  for (int axis = 0; axis < 3; ++axis) {
    if (!(bounds.mins[axis] >= -WORLD_REACH && bounds.maxs[axis] <= WORLD_REACH)) return false;
  }
  return true;
}

}  // namespace ferrowand
