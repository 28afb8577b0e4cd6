#include "document/transform.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "document/classes/class_set.h"
#include "document/entity.h"
#include "document/written_points.h"
#include "geometry/tolerance.h"
#include "geometry/whole_plane.h"

namespace ferrowand {
namespace {

struct Placement {
  const Matrix& matrix;
  DVec3 centre;
  bool mirrors;

  // What a factor of 32 bits misses a whole unit by is made good.
  Vec3 Apply(const Vec3& p) const {
    DVec3 moved = Transform(DVec3(p), matrix, centre);
    for (int axis = 0; axis < 3; ++axis) {
      const double whole = std::round(moved[axis]);
      if (std::fabs(moved[axis] - whole) < SNAP_EPSILON) moved[axis] = whole;
    }
    return Vec3(moved);
  }

  // By three points that lie as far apart as planes reach.
  Plane Apply(const Plane& plane) const {
    const DVec3& n = plane.normal;
    const int least = std::fabs(n.x) < std::fabs(n.y) ? (std::fabs(n.x) < std::fabs(n.z) ? 0 : 2)
                                                      : (std::fabs(n.y) < std::fabs(n.z) ? 1 : 2);
    DVec3 aside;
    aside[least] = BASE_SIZE;
    const DVec3 right = Cross(aside, n), up = Cross(right, n);
    const DVec3 on = n * plane.dist;
    const DVec3 points[] = {Transform(on + up, matrix, centre), Transform(on, matrix, centre),
                            Transform(on + right, matrix, centre)};
    return mirrors ? PlaneFromPoints(points[2], points[1], points[0])
                   : PlaneFromPoints(points[0], points[1], points[2]);
  }
};

bool Mirrors(const Matrix& matrix) {
  const auto row = [&](unsigned y) {
    return DVec3(matrix.At(0, y), matrix.At(1, y), matrix.At(2, y));
  };
  return Dot(row(0), Cross(row(1), row(2))) < 0;
}

void TransformFace(Face& face, const Placement& placement) {
  for (Vec3& p : face.planepts) p = placement.Apply(p);
  if (placement.mirrors) std::swap(face.planepts[0], face.planepts[2]);
  face.plane = placement.Apply(face.plane);
  if (!face.w) return;
  for (WindingPoint& p : face.w->Points()) {
    const Vec3 moved = placement.Apply(p.Position());
    p = {moved.x, moved.y, moved.z, p.s, p.t};
  }
  if (placement.mirrors) std::ranges::reverse(face.w->Points());
  if (face.HasWholePoints()) face.TakePlane();
}

bool HasCornersOnPlane(const Face& face) {
  return face.w && std::ranges::all_of(std::as_const(*face.w).Points(), [&](const WindingPoint& p) {
           return std::fabs(face.plane.DistanceTo(DVec3(p.Position()))) <= CARRIED;
         });
}

void TransformAlone(entity& e, const Placement& placement) {
  const int faces = e.brush.getNumFaces();
  for (int i = 0; i < faces; ++i) TransformFace(e.brush.face(i), placement);
  for (Face& face : e.brush.FarFaces()) TransformFace(face, placement);
  // Corners that had been snapped to whole units are not on the planes that have gone elsewhere.
  if (!std::ranges::all_of(e.brush.Faces(), HasCornersOnPlane)) {
    e.brush.RenewWindings(e.getClass()->Set().Library().Report());
  }
  for (int i = 0; i < faces; ++i) {
    UpdateFromWinding(e.brush.face(i));
    FindPlanePoints(e.brush.face(i));
  }
  e.brush.UpdateBounds();
  e.Touch();
  if (e.HasOrigin()) e.SetOrigin(placement.Apply(e.Origin()));
}

}  // namespace

bool GoesAlong(const entity& child) {
  return child.getClass()->Kind() != EntityKind::TemplateClass;
}

void TransformEntity(entity& e, const Matrix& matrix, const DVec3& centre) {
  const Placement placement{matrix, centre, Mirrors(matrix)};
  ForEachAlong(e, [&](entity& part) { TransformAlone(part, placement); });
}

void TranslateEntity(entity& e, const Vec3& by) {
  ForEachAlong(e, [&](entity& part) {
    part.brush.Translate(by);
    part.Touch();
    if (part.HasOrigin()) part.SetOrigin(part.Origin() + by);
  });
}

}  // namespace ferrowand
