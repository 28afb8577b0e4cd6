#include "operations/primitives.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>
#include <utility>
#include <vector>

#include "base/report.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "geometry/convex_hull.h"
#include "geometry/tolerance.h"
#include "operations/brush_check.h"
#include "operations/csg.h"
#include "operations/new_entity.h"

namespace ferrowand {
namespace {

constexpr int FULL = 4;  // radii are counted in quarters

// Of a quarter radius, from one side of the box to the other.
constexpr int STEPS = 2 * FULL;

// A circle of corners round the axis. A radius of 0 is a single corner.
struct Ring {
  int radius;     // 0 .. FULL
  double height;  // from -1, the bottom of the box, to 1, its top
};
using Profile = std::vector<Ring>;

double HalfUp(double value) {
  return std::floor(value + 0.5 + HALF_SLACK);
}

// The box as the solids see it: u and v across, w along the axis.
class Frame {
 public:
  Frame(const WholePoint& mins, const WholePoint& maxs, int axis)
      : mins_(mins), size_(maxs - mins), axes_{(axis + 1) % 3, (axis + 2) % 3, axis} {}

  // Each from -1 to 1.
  WholePoint At(double u, double v, double w) const {
    WholePoint p;
    const std::array<double, 3> part = {u, v, w};
    for (std::size_t i = 0; i < 3; ++i) p[axes_[i]] = Rounded(axes_[i], part[i]);
    return p;
  }
  WholePoint OnRing(const Ring& ring, double u, double v) const {
    return At(u * ring.radius / FULL, v * ring.radius / FULL, ring.height);
  }
  // The corners of all rings as multiples of the same whole steps from the middle: the edges of two
  // rings are exactly parallel then, and the faces between them flat.
  WholePoint OnRingInSteps(const Ring& ring, double u, double v) const {
    WholePoint p = At(0, 0, ring.height);
    const std::array<double, 2> part = {u, v};
    for (std::size_t i = 0; i < 2; ++i) {
      const auto quarter = static_cast<double>(size_[axes_[i]]) / STEPS;
      p[axes_[i]] += ring.radius * static_cast<std::int64_t>(std::copysign(
                                       HalfUp(std::fabs(part[i]) * quarter), part[i]));
    }
    return p;
  }
  // Whether such steps reach the sides of the box.
  bool HasSteps() const { return size_[axes_[0]] % STEPS == 0 && size_[axes_[1]] % STEPS == 0; }

 private:
  std::int64_t Rounded(int axis, double part) const {
    const double offset = HalfUp(static_cast<double>(size_[axis]) * (part + 1) / 2);
    return mins_[axis] + static_cast<std::int64_t>(offset);
  }

  WholePoint mins_;
  WholePoint size_;
  std::array<int, 3> axes_;
};

struct Corner {
  double u, v;
};

// Of a regular polygon that stands on a side, stretched until it touches -1 and 1 both ways.
std::vector<Corner> PolygonCorners(int sides) {
  std::vector<Corner> corners;
  Corner least{1, 1}, most{-1, -1};
  for (int i = 0; i < sides; ++i) {
    const double angle = std::numbers::pi * (2 * i + 1) / sides;
    corners.push_back({std::sin(angle), std::cos(angle)});
    least = {std::min(least.u, corners.back().u), std::min(least.v, corners.back().v)};
    most = {std::max(most.u, corners.back().u), std::max(most.v, corners.back().v)};
  }
  for (Corner& corner : corners) {
    corner.u = 2 * (corner.u - least.u) / (most.u - least.u) - 1;
    corner.v = 2 * (corner.v - least.v) / (most.v - least.v) - 1;
  }
  return corners;
}

int Quarters(double radius) {
  return static_cast<int>(std::lround(radius * FULL));
}

Profile SphereProfile(int bands) {
  const double step = std::numbers::pi / bands;
  const double widest = bands % 2 ? std::cos(step / 2) : 1;
  Profile profile{{0, -1}};
  for (int i = 1; i < bands; ++i) {
    profile.push_back({Quarters(std::sin(i * step) / widest), -std::cos(i * step)});
  }
  profile.push_back({0, 1});
  return profile;
}

Profile HemisphereProfile(int bands) {
  const double step = std::numbers::pi / 2 / bands;
  Profile profile;
  for (int i = 0; i < bands; ++i) {
    profile.push_back({Quarters(std::cos(i * step)), 2 * std::sin(i * step) - 1});
  }
  profile.push_back({0, 1});
  return profile;
}

// The best first.
std::vector<Profile> ProfilesOf(PrimitiveKind kind, int sides) {
  if (kind == PrimitiveKind::Column) return {{{FULL, -1}, {FULL, 1}}};
  std::vector<Profile> profiles;
  if (kind == PrimitiveKind::Hemisphere) {
    for (int bands = (MAXFACES - 1) / sides; bands > 0; --bands) {
      profiles.push_back(HemisphereProfile(bands));
    }
    return profiles;
  }
  for (int bands = MAXFACES / sides; bands > 2; --bands) profiles.push_back(SphereProfile(bands));
  // Two bands with flat ends are rounder than two that meet in points.
  profiles.push_back({{FULL / 2, -1}, {FULL, 0}, {FULL / 2, 1}});
  profiles.push_back(SphereProfile(2));
  return profiles;
}

std::vector<WholePoint> PointsOf(const Profile& profile, int sides, const Frame& frame,
                                 bool inSteps) {
  std::vector<WholePoint> points;
  const std::vector<Corner> corners = PolygonCorners(sides);
  for (const Ring& ring : profile) {
    if (ring.radius == 0) {
      points.push_back(frame.At(0, 0, ring.height));
      continue;
    }
    for (const auto& [u, v] : corners) {
      points.push_back(inSteps ? frame.OnRingInSteps(ring, u, v) : frame.OnRing(ring, u, v));
    }
  }
  return points;
}

std::vector<WholePoint> PlainPoints(PrimitiveKind kind, const Frame& frame) {
  std::vector<WholePoint> points;
  for (const double u : {-1.0, 1.0}) {
    for (const double v : {-1.0, 1.0}) {
      points.push_back(frame.At(u, v, -1));
      const bool hasTop = kind == PrimitiveKind::Cuboid || (kind == PrimitiveKind::Wedge && u > 0);
      if (hasTop) points.push_back(frame.At(u, v, 1));
    }
  }
  if (kind == PrimitiveKind::Pyramid) points.push_back(frame.At(0, 0, 1));
  return points;
}

// The corners of the solids to try, the best first.
std::vector<std::vector<WholePoint>> CandidatesOf(PrimitiveKind kind, int sides,
                                                  const Frame& frame) {
  if (SidesOf(kind).most == 0) return {PlainPoints(kind, frame)};
  std::vector<std::vector<WholePoint>> candidates;
  for (const Profile& profile : ProfilesOf(kind, sides)) {
    if (kind != PrimitiveKind::Column && frame.HasSteps()) {
      candidates.push_back(PointsOf(profile, sides, frame, true));
    }
    candidates.push_back(PointsOf(profile, sides, frame, false));
  }
  return candidates;
}

// Fewer faces than this are another solid than the one that was asked for.
std::size_t LeastFaces(PrimitiveKind kind, int sides) {
  const auto n = static_cast<std::size_t>(sides);
  switch (kind) {
    case PrimitiveKind::Cuboid:
      return 6;
    case PrimitiveKind::Wedge:
    case PrimitiveKind::Pyramid:
      return 5;
    case PrimitiveKind::Column:
      return n + 2;
    case PrimitiveKind::Sphere:
      return 2 * n;
    case PrimitiveKind::Hemisphere:
      return n + 1;
  }
  return 0;
}

Vec3 ToVec3(const WholePoint& p) {
  return Vec3(p);
}

// Whether the windings came out at the corners of the solid: where it is too thin for the
// tolerances they do not.
bool HasCorners(const Brush& brush, std::span<const HullFace> faces) {
  if (static_cast<std::size_t>(brush.getNumFaces()) != faces.size()) return false;
  for (std::size_t i = 0; i < faces.size(); ++i) {
    const auto points = std::as_const(*brush.Faces()[i].w).Points();
    const bool isSame =
        points.size() == faces[i].size() && std::ranges::all_of(points, [&](const WindingPoint& p) {
          return std::ranges::find(faces[i], p.Position(), ToVec3) != faces[i].end();
        });
    if (!isSame) return false;
  }
  return true;
}

bool FillBrush(Brush& brush, std::span<const HullFace> faces, std::string_view texture,
               const Map& map) {
  Reporter& reporter = map.Data().reporter;
  brush.Clear();
  for (const HullFace& corners : faces) {
    Face* face = brush.AddFace(ToVec3(corners[0]), ToVec3(corners[1]), ToVec3(corners[2]));
    face->SetName(texture);
    face->xscale = face->yscale = 1;
  }
  brush.ResolveTextures(map.wads);
  brush.Rebuild(reporter);
  return HasCorners(brush, faces) && IsKeepable(brush, reporter);
}

// Where many faces meet, the order in which they cut each other decides on what the tolerances
// leave; one that goes well is kept by every file.
bool FillBrushInSomeOrder(Brush& brush, std::vector<HullFace> faces, std::string_view texture,
                          const Map& map) {
  for (std::size_t tries = 0; tries < faces.size(); ++tries) {
    if (FillBrush(brush, faces, texture, map)) return true;
    std::rotate(faces.begin(), faces.begin() + 1, faces.end());
  }
  return false;
}

WholePoint Whole(const Vec3& p) {
  return {RoundToInt(p.x), RoundToInt(p.y), RoundToInt(p.z)};
}

}  // namespace

SideRange SidesOf(PrimitiveKind kind) {
  switch (kind) {
    case PrimitiveKind::Column:
      return {3, MAXFACES - 2};
    case PrimitiveKind::Sphere:
    case PrimitiveKind::Hemisphere:
      return {3, (MAXFACES - 2) / 2};
    default:
      return {0, 0};
  }
}

PrimitiveResult MakePrimitive(const Primitive& primitive, std::string_view texture,
                              const Map& map) {
  const SideRange range = SidesOf(primitive.kind);
  if (range.most > 0 && (primitive.sides < range.least || primitive.sides > range.most)) {
    return {nullptr, Format("The number of sides must be from %d to %d.", range.least, range.most)};
  }
  Bounds box;
  box.Add(primitive.box.mins);
  box.Add(primitive.box.maxs);
  if (!IsInsideWorld(box)) return {nullptr, "This would put an object outside the world."};

  const Frame frame(Whole(box.mins), Whole(box.maxs), primitive.axis);
  EntityPtr object = std::make_unique<entity>(*map.classSet);
  for (const auto& points : CandidatesOf(primitive.kind, primitive.sides, frame)) {
    const std::vector<HullFace> faces = ConvexHull(points);
    const bool fits =
        faces.size() >= LeastFaces(primitive.kind, primitive.sides) && faces.size() <= MAXFACES;
    if (fits && FillBrushInSomeOrder(object->brush, faces, texture, map)) {
      return {std::move(object), {}};
    }
  }
  return {nullptr, range.most == 0 ? "The box is too small."
                                   : "The box is too small for this number of sides."};
}

entity* AddPrimitive(Map& map, const Primitive& primitive, std::string_view texture) {
  Reporter& reporter = map.Data().reporter;
  PrimitiveResult made = MakePrimitive(primitive, texture, map);
  if (!made.object) {
    reporter.Show("Ferrowand says", made.reason);
    return nullptr;
  }
  if (!MayAddTo(map.NewParent())) return nullptr;
  EditStep step(map);
  entity& added = step.Add(std::move(made.object), map);
  map.selection.Set({&added});
  return &added;
}

}  // namespace ferrowand
