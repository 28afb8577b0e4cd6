#include "document/written_points.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <span>
#include <utility>

#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "geometry/tolerance.h"

namespace ferrowand {
namespace {

WholePoint Rounded(const WindingPoint& p) {
  return {RoundToInt(p.x), RoundToInt(p.y), RoundToInt(p.z)};
}

// How far their plane misses the face's; infinite for points on a line or seen from behind.
double MissOf(const WholePoints& points, const Face& face) {
  return Difference(PlaneOf(points), face.plane, std::as_const(*face.w).Points());
}

void SetPlanePoints(Face& face, const WholePoints& points) {
  std::ranges::transform(points, face.planepts.begin(),
                         [](const WholePoint& p) { return Vec3(p); });
}

bool IsWrittenAsItIs(const Brush& brush) {
  return std::ranges::all_of(
      brush.Faces(), [](const Face& face) { return !face.HasShape() || face.HasWholePoints(); });
}

void Add(const Brush& brush, Reporter& reporter, SavedShape& all) {
  if (IsWrittenAsItIs(brush) || !std::ranges::all_of(brush.Faces(), &Face::HasShape)) return;
  const SavedShape one = ShapeInFile(brush, reporter);
  all.isCarried = all.isCarried && one.isCarried;
  all.movedFaces += one.movedFaces;
  all.farthest = std::max(all.farthest, one.farthest);
  all.lostFaces += one.lostFaces;
  all.cornerMove = std::max(all.cornerMove, one.cornerMove);
}

void AddTree(const entity& e, bool forGame, Reporter& reporter, SavedShape& all) {
  const EntityKind kind = e.getClass()->Kind();
  const entity* written = &e;
  if (forGame && kind == EntityKind::TemplateClass) return;
  if (forGame && kind == EntityKind::TemplateInstance) written = ExpandInstance(e);
  if (!written) return;
  Add(written->brush, reporter, all);
  for (const EntityPtr& child : written->getEntityList()) AddTree(*child, forGame, reporter, all);
}

}  // namespace

WrittenPoints PointsToWrite(const Face& face) {
  const auto corners = std::as_const(*face.w).Points();
  const WholePoints rounded = {Rounded(corners[0]), Rounded(corners[1]), Rounded(corners[2])};
  if (face.HasWholePoints()) {
    const WholePoints own = AsWhole(face.planepts);
    return {rounded != own && HavePlane(rounded, own) ? rounded : own, 0};
  }
  WrittenPoints best{rounded, MissOf(rounded, face)};
  const bool hasPlane = best.miss < 1;
  if (best.miss <= CARRIED || (hasPlane && IsAxial(face.plane))) return best;
  if (const auto found = FindWholePoints(face.plane, corners)) {
    const double miss = MissOf(*found, face);
    if (miss < best.miss) best = {*found, miss};
  }
  return best;
}

void FindPlanePoints(Face& face) {
  if (!face.HasShape() || face.HasWholePoints()) return;
  const WrittenPoints written = PointsToWrite(face);
  if (written.miss <= CARRIED) SetPlanePoints(face, written.points);
}

Brush OnWholePlanes(const Brush& brush, Reporter& reporter) {
  Brush whole = brush.Copy();
  if (IsWrittenAsItIs(brush)) return whole;
  for (int i = 0; i < whole.getNumFaces(); ++i) {
    Face& face = whole.face(i);
    if (!face.HasShape()) continue;
    const WrittenPoints written = PointsToWrite(face);
    if (written.miss > ON_EPSILON) continue;
    SetPlanePoints(face, written.points);
    face.TakePlane();
  }
  return whole.RenewWindings(reporter) ? std::move(whole) : brush.Copy();
}

SavedShape ShapeInFile(const Brush& brush, Reporter& reporter) {
  SavedShape shape;
  std::array<Plane, MAXFACES> planes;
  std::size_t count = 0;
  for (const Face& face : brush.Faces()) {
    const WrittenPoints written = PointsToWrite(face);
    planes[count++] = PlaneOf(written.points);
    if (written.miss > CARRIED) shape.isCarried = false;
    if (written.miss <= MOVED || !std::isfinite(written.miss)) continue;
    ++shape.movedFaces;
    shape.farthest = std::max(shape.farthest, written.miss);
  }
  const std::span<const Plane> inFile(planes.data(), count);
  shape.lostFaces = static_cast<int>(std::ranges::count_if(inFile, std::not_fn(&Plane::HasNormal)));
  if (shape.lostFaces > 0) return shape;
  std::array<WindingPtr, MAXFACES> read;
  SolidWindings(inFile, read, reporter);
  for (std::size_t i = 0; i < count; ++i) {
    if (read[i]) {
      shape.cornerMove = std::max(shape.cornerMove, CornerDistance(*brush.Faces()[i].w, *read[i]));
    } else {
      ++shape.lostFaces;
    }
  }
  return shape;
}

SavedShape ShapeInFile(const entity& tree, bool forGame, Reporter& reporter) {
  SavedShape all;
  AddTree(tree, forGame, reporter, all);
  return all;
}

}  // namespace ferrowand
