#include "document/brush.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/report.h"
#include "document/texture_projection.h"
#include "gamedata/wad_library.h"
#include "geometry/whole_plane.h"

namespace ferrowand {
namespace {

// What most brushes need, so that reading one moves no faces about.
constexpr std::size_t USUAL_FACES = 6;

bool Stands(const Face& face) {
  const DVec3& normal = face.plane.normal;
  // A face that has just been made has no plane, one of damaged points has none to keep.
  if (!(std::fabs(Dot(normal, normal) - 1) < CORNER_SLACK)) return false;
  return std::ranges::all_of(std::as_const(*face.w).Points(), [&](const WindingPoint& p) {
    return std::fabs(face.plane.DistanceTo(DVec3(p.Position()))) <= CORNER_SLACK;
  });
}

void TakePlaneFromWinding(Face& face) {
  const bool stands = Stands(face);
  if (stands && face.HasWholePoints()) return;
  const auto points = face.w->Points();
  for (std::size_t i = 0; i < 3; ++i) face.planepts[i] = points[i].Position();
  if (!stands) face.TakePlane();
}

bool HasSameLook(const Face& a, const Face& b) {
  return a.texture == b.texture && a.WrittenName() == b.WrittenName() && a.rotation == b.rotation &&
         a.xoff == b.xoff && a.yoff == b.yoff && a.xscale == b.xscale && a.yscale == b.yscale;
}

bool IsSamePlane(const Plane& a, const Plane& b) {
  return a.normal == b.normal && a.dist == b.dist;
}

bool IsSameFace(const Face& a, const Face& b) {
  const auto isSamePoint = [](const WindingPoint& p, const WindingPoint& q) {
    return p.Position() == q.Position();
  };
  return a.planepts == b.planepts && IsSamePlane(a.plane, b.plane) && HasSameLook(a, b) &&
         !a.w == !b.w &&
         (!a.w || std::ranges::equal(std::as_const(*a.w).Points(), std::as_const(*b.w).Points(),
                                     isSamePoint));
}

// There and back, neither of which may round.
bool IsPointMoved(const Vec3& from, const Vec3& to, const Vec3& by) {
  return from + by == to && to - by == from;
}

// Of a face that lies in the plane of whole points, which is all that its corners stand for.
bool IsFaceMoved(const Face& from, const Face& to, const Vec3& by) {
  if (!from.w || !to.w || from.w->numpoints != to.w->numpoints || !HasSameLook(from, to) ||
      !AreWhole(from.planepts) || !AreWhole(to.planepts)) {
    return false;
  }
  for (std::size_t i = 0; i < 3; ++i) {
    if (!IsPointMoved(from.planepts[i], to.planepts[i], by)) return false;
  }
  const auto points = std::as_const(*from.w).Points(), moved = std::as_const(*to.w).Points();
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Vec3 point = points[i].Position();
    if (!IsPointMoved(point, moved[i].Position(), by)) return false;
    if (point == points[(i + 1) % points.size()].Position()) return false;
  }
  return IsSamePlane(from.plane, PlaneOf(from.planepts)) &&
         IsSamePlane(to.plane, PlaneOf(to.planepts));
}

// The same of one that has not been moved yet. What moves has no texture of no size.
bool CanFaceMove(const Face& face, const Vec3& by) {
  if (face.xscale == 0 || face.yscale == 0) return false;
  if (!face.w || !AreWhole(face.planepts) || !IsSamePlane(face.plane, PlaneOf(face.planepts))) {
    return false;
  }
  std::array<Vec3, 3> moved = face.planepts;
  for (std::size_t i = 0; i < 3; ++i) {
    moved[i] = moved[i] + by;
    if (!IsPointMoved(face.planepts[i], moved[i], by)) return false;
  }
  const auto points = std::as_const(*face.w).Points();
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Vec3 point = points[i].Position();
    if (!IsPointMoved(point, point + by, by)) return false;
    if (point == points[(i + 1) % points.size()].Position()) return false;
  }
  return AreWhole(moved);
}

// A point that equals its successor exactly goes, in a winding one smaller.
void DropRepeatedPoints(WindingPtr& w) {
  const std::span<WindingPoint> points = w->Points();
  std::size_t kept = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Vec3 next = i + 1 < points.size() ? points[i + 1].Position() : points[0].Position();
    if (points[i].Position() != next) points[kept++] = points[i];
  }
  if (kept == points.size()) return;
  w->numpoints = static_cast<std::int32_t>(kept);
  w = CopyWinding(*w);
}

std::span<const Plane> PlanesOf(const std::vector<Face>& faces,
                                std::array<Plane, MAXFACES>& planes) {
  std::ranges::transform(faces, planes.begin(), &Face::plane);
  return {planes.data(), faces.size()};
}

// Whole textures when one is bound, texels otherwise.
void FitTexture(Face& face) {
  if (face.xscale == 0) face.xscale = 1;
  if (face.yscale == 0) face.yscale = 1;
  const TextureProjection projection(face);
  for (WindingPoint& p : face.w->Points()) {
    const TexturePoint at = projection.Textures(DVec3(p.Position()));
    p.s = static_cast<float>(at.s);
    p.t = static_cast<float>(at.t);
  }
}

}  // namespace

void Face::SetName(std::string_view newName) {
  name.fill(0);
  longName.reset();
  if (newName.size() < name.size()) {
    std::ranges::copy(newName, name.begin());
  } else {
    longName = std::make_unique<const std::string>(newName);
  }
}

void Face::TakeLook(const Face& other) {
  texture = other.texture;
  name = other.name;
  longName = other.longName ? std::make_unique<const std::string>(*other.longName) : nullptr;
  rotation = other.rotation;
  xoff = other.xoff;
  yoff = other.yoff;
  xscale = other.xscale;
  yscale = other.yscale;
}

bool Face::HasShape() const {
  if (!w || w->numpoints < 3) return false;
  return std::ranges::all_of(std::as_const(*w).Points().first(3), [](const WindingPoint& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
  });
}

void Face::TakePlane() {
  plane = PlaneOf(planepts);
}

bool Face::HasWholePoints() const {
  return AreWhole(planepts) &&
         Difference(PlaneFromPoints(DVec3(planepts[0]), DVec3(planepts[1]), DVec3(planepts[2])),
                    plane, std::as_const(*w).Points()) <= CARRIED;
}

Face CopyFace(const Face& face) {
  Face copy;
  copy.TakeLook(face);
  copy.planepts = face.planepts;
  copy.plane = face.plane;
  if (face.w) copy.w = CopyWinding(*face.w);
  return copy;
}

void UpdateFromWinding(Face& face) {
  if (!face.w) return;
  DropRepeatedPoints(face.w);
  if (face.HasShape()) TakePlaneFromWinding(face);
  FitTexture(face);
}

Brush Brush::Copy() const {
  Brush copy(outline_);
  copy.bounds_ = bounds_;
  copy.faces_.reserve(faces_.size());
  for (const Face& face : faces_) copy.faces_.push_back(CopyFace(face));
  for (const Face& face : farFaces_) copy.farFaces_.push_back(CopyFace(face));
  return copy;
}

Face* Brush::AddFace(const Vec3& p0, const Vec3& p1, const Vec3& p2) {
  Face face;
  face.planepts = {p0, p1, p2};
  face.TakePlane();
  return AddFace(std::move(face)) ? &faces_.back() : nullptr;
}

bool Brush::AddFace(Face face) {
  if (faces_.size() >= MAXFACES) return false;
  if (faces_.empty()) faces_.reserve(USUAL_FACES);
  faces_.push_back(std::move(face));
  return true;
}

void Brush::Clear() {
  faces_.clear();
  farFaces_.clear();
  bounds_ = Bounds();
}

void Brush::Rebuild(Reporter& reporter) {
  MakeWindings(reporter);
  DropFacesWithout();
}

bool Brush::MakeWindings(Reporter& reporter) {
  std::array<Plane, MAXFACES> planes;
  std::array<WindingPtr, MAXFACES> made;
  const bool isWhole = SolidWindings(PlanesOf(faces_, planes), made, reporter);
  for (std::size_t i = 0; i < faces_.size(); ++i) {
    faces_[i].w = std::move(made[i]);
    if (!faces_[i].w) continue;
    for (const WindingPoint& p : faces_[i].w->Points()) bounds_.Add(p.Position());
  }
  return isWhole;
}

void Brush::DropFacesWithout() {
  std::erase_if(faces_, [](const Face& face) { return !face.w; });
  faces_.shrink_to_fit();
}

bool Brush::RenewWindings(Reporter& reporter) {
  std::array<Plane, MAXFACES> planes;
  const std::span<const Plane> inUse = PlanesOf(faces_, planes);
  if (!std::ranges::all_of(inUse, &Plane::HasNormal)) return false;
  std::array<WindingPtr, MAXFACES> made;
  SolidWindings(inUse, made, reporter);
  for (std::size_t i = 0; i < faces_.size(); ++i) {
    const winding* old = faces_[i].w.get();
    if (!made[i] || !old || CornerDistance(*old, *made[i]) > ON_EPSILON) return false;
  }
  for (std::size_t i = 0; i < faces_.size(); ++i) faces_[i].w = std::move(made[i]);
  UpdateBounds();
  return true;
}

void Brush::Translate(const Vec3& by) {
  for (Face& face : faces_) {
    const bool isCarried = !face.HasShape() || face.HasWholePoints();
    for (Vec3& p : face.planepts) p = p + by;
    const bool keepsPlane = isCarried && AreWhole(face.planepts);
    if (keepsPlane) {
      face.TakePlane();
    } else {
      face.plane.dist += Dot(face.plane.normal, DVec3(by));
    }
    if (!face.w) continue;
    for (WindingPoint& p : face.w->Points()) {
      p.x += by.x;
      p.y += by.y;
      p.z += by.z;
    }
    if (keepsPlane) {
      DropRepeatedPoints(face.w);
      FitTexture(face);
    } else {
      UpdateFromWinding(face);
    }
  }
  for (Face& face : farFaces_) {
    for (Vec3& p : face.planepts) p = p + by;
  }
  if (bounds_.IsEmpty()) return;
  bounds_.mins = bounds_.mins + by;
  bounds_.maxs = bounds_.maxs + by;
}

bool Brush::CanMove(const Vec3& by) const {
  return farFaces_.empty() && IsPointMoved(bounds_.mins, bounds_.mins + by, by) &&
         IsPointMoved(bounds_.maxs, bounds_.maxs + by, by) &&
         std::ranges::all_of(faces_, [&by](const Face& face) { return CanFaceMove(face, by); });
}

bool Brush::IsMoved(const Brush& from, const Vec3& by) const {
  if (!IsPointMoved(from.bounds_.mins, bounds_.mins, by) ||
      !IsPointMoved(from.bounds_.maxs, bounds_.maxs, by)) {
    return false;
  }
  const auto isFaceMoved = [&by](const Face& was, const Face& is) {
    return IsFaceMoved(was, is, by);
  };
  if (from.farFaces_.empty() && farFaces_.empty() &&
      std::ranges::equal(from.faces_, faces_, isFaceMoved)) {
    return true;
  }
  Brush brush = from.Copy();
  brush.Translate(by);
  if (!IsSame(brush, *this)) return false;
  brush.Translate(-by);
  return IsSame(brush, from);
}

std::size_t Brush::Bytes() const {
  std::size_t bytes = sizeof *this + (faces_.capacity() + farFaces_.capacity()) * sizeof(Face);
  for (const Face& face : faces_) {
    if (face.w) bytes += sizeof(winding) + face.w->Points().size_bytes();
  }
  return bytes;
}

void Brush::ResolveTextures(const WadList& wads) {
  for (auto* faces : {&faces_, &farFaces_}) {
    for (Face& face : *faces) face.texture = wads.FindTexture(face.Name());
  }
}

bool IsSame(const Brush& a, const Brush& b) {
  return a.Box() == b.Box() && std::ranges::equal(a.Faces(), b.Faces(), IsSameFace) &&
         std::ranges::equal(a.FarFaces(), b.FarFaces(), IsSameFace);
}

}  // namespace ferrowand
