#include "document/transform.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "document/entity.h"
#include "geometry/tolerance.h"

namespace ferrowand {
namespace {

// Both are applied from the entity downwards, of which a map holds no more than a few levels.
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
  face.plane =
      PlaneFromPoints(DVec3(face.planepts[0]), DVec3(face.planepts[1]), DVec3(face.planepts[2]));
  if (!face.w) return;
  for (WindingPoint& p : face.w->Points()) {
    const Vec3 moved = placement.Apply(p.Position());
    p = {moved.x, moved.y, moved.z, p.s, p.t};
  }
  if (placement.mirrors) std::ranges::reverse(face.w->Points());
  UpdateFromWinding(face);
}

void TransformTree(entity& e, const Placement& placement) {
  for (int i = 0; i < e.brush.getNumFaces(); ++i) TransformFace(e.brush.face(i), placement);
  e.brush.UpdateBounds();
  e.Touch();
  if (e.HasOrigin()) e.SetOrigin(placement.Apply(e.Origin()));
  for (const EntityPtr& child : e.getEntityList()) TransformTree(*child, placement);
}

}  // namespace

void TransformEntity(entity& e, const Matrix& matrix, const DVec3& centre) {
  TransformTree(e, {matrix, centre, Mirrors(matrix)});
}

void TranslateEntity(entity& e, const Vec3& by) {
  e.brush.Translate(by);
  e.Touch();
  if (e.HasOrigin()) e.SetOrigin(e.Origin() + by);
  for (const EntityPtr& child : e.getEntityList()) TranslateEntity(*child, by);
}

}  // namespace ferrowand
