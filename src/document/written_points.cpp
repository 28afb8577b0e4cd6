#include "document/written_points.h"

#include <algorithm>
#include <utility>

#include "document/classes/special_classes.h"

namespace ferrowand {
namespace {

WholePoint Rounded(const WindingPoint& p) {
  return {RoundToInt(p.x), RoundToInt(p.y), RoundToInt(p.z)};
}

// How far their plane misses the face's; infinite for points on a line or seen from behind.
double MissOf(const WholePoints& points, const Face& face) {
  const Plane plane = PlaneFromPoints(DVec3(points[0]), DVec3(points[1]), DVec3(points[2]));
  return Difference(plane, face.plane, std::as_const(*face.w).Points());
}

bool HasOwnPoints(const Face& face) {
  return AsWhole(face.planepts) &&
         Difference(PlaneFromPoints(DVec3(face.planepts[0]), DVec3(face.planepts[1]),
                                    DVec3(face.planepts[2])),
                    face.plane, std::as_const(*face.w).Points()) <= CARRIED;
}

}  // namespace

WrittenPoints PointsToWrite(const Face& face) {
  const auto corners = std::as_const(*face.w).Points();
  const WholePoints rounded = {Rounded(corners[0]), Rounded(corners[1]), Rounded(corners[2])};
  if (HasOwnPoints(face)) {
    const WholePoints own = *AsWhole(face.planepts);
    return {HavePlane(rounded, own) ? rounded : own, 0};
  }
  WrittenPoints best{rounded, MissOf(rounded, face)};
  const bool isUsable = best.miss < 1;
  if (best.miss <= CARRIED || (isUsable && IsAxial(face.plane))) return best;
  if (const auto found = FindWholePoints(face.plane, corners)) {
    const double miss = MissOf(*found, face);
    if (miss < best.miss) best = {*found, miss};
  }
  return best;
}

void TakeWholePoints(Face& face) {
  if (!face.HasShape() || HasOwnPoints(face)) return;
  const WrittenPoints written = PointsToWrite(face);
  if (written.miss > CARRIED) return;
  std::ranges::transform(written.points, face.planepts.begin(),
                         [](const WholePoint& p) { return Vec3(p); });
  face.TakePlane();
}

MovedFaces FacesMovedBySaving(const entity& tree) {
  MovedFaces moved;
  ForEachEntity(tree, [&](const entity& e) {
    for (const Face& face : e.brush.Faces()) {
      if (!face.HasShape() || HasOwnPoints(face)) continue;
      const double miss = PointsToWrite(face).miss;
      if (miss <= MOVED) continue;
      ++moved.count;
      moved.farthest = std::max(moved.farthest, miss);
    }
  });
  return moved;
}

}  // namespace ferrowand
