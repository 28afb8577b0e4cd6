#include "geometry/winding.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <new>
#include <utility>

#include "base/report.h"

namespace ferrowand {
namespace {

// What a face is clipped in. Unlike DVec3 it costs nothing to make.
struct SpacePoint {
  double x, y, z;
};

DVec3 Position(const SpacePoint& p) {
  return {p.x, p.y, p.z};
}
DVec3 Position(const WindingPoint& p) {
  return DVec3(p.Position());
}

SpacePoint Between(const SpacePoint& a, const SpacePoint& b, double f) {
  return {a.x + f * (b.x - a.x), a.y + f * (b.y - a.y), a.z + f * (b.z - a.z)};
}

WindingPoint Between(const WindingPoint& a, const WindingPoint& b, double f) {
  const auto between = [f](double from, double to) {
    return static_cast<float>(from + f * (to - from));
  };
  return {between(a.x, b.x), between(a.y, b.y), between(a.z, b.z), between(a.s, b.s),
          between(a.t, b.t)};
}

enum class Side { Front, Back, On };

// A distance that is not a number is On: a plane without a normal cuts nothing.
Side SideOf(double distance) {
  if (distance > ON_EPSILON) return Side::Front;
  return distance < -ON_EPSILON ? Side::Back : Side::On;
}

enum class Kept { All, None, Some };

template <typename Point>
Kept WhatIsKept(std::span<const Point> points, const Plane& split) {
  double nearest = 0;
  double farthest = 0;
  for (const Point& p : points) {
    const double distance = split.DistanceTo(Position(p));
    nearest = distance < nearest ? distance : nearest;
    farthest = distance > farthest ? distance : farthest;
  }
  if (SideOf(nearest) != Side::Back) return Kept::All;
  return SideOf(farthest) == Side::Front ? Kept::Some : Kept::None;
}

// How many points a clipped winding is given room for, and no more are kept.
constexpr std::size_t ESTIMATE_EXTRA = 4;

// Writes the part in front of `split`, as much of it as `out` has room for; returns how many
// points it has. A crossing of an axial plane is interpolated like any other, its own coordinate
// too, which may so come out a hair off the plane: this is meant.
template <typename Point>
std::size_t Cut(std::span<const Point> in, const Plane& split, std::span<Point> out) {
  std::size_t count = 0;
  const auto append = [&](const Point& p) {
    if (count < out.size()) out[count] = p;
    ++count;
  };
  double distance = split.DistanceTo(Position(in[0]));
  for (std::size_t i = 0; i < in.size(); ++i) {
    const Point& next = in[i + 1 < in.size() ? i + 1 : 0];
    const double nextDistance = split.DistanceTo(Position(next));
    const Side side = SideOf(distance);
    const Side nextSide = SideOf(nextDistance);
    if (side != Side::Back) append(in[i]);
    if (side != Side::On && nextSide != Side::On && side != nextSide) {
      append(Between(in[i], next, distance / (distance - nextDistance)));
    }
    distance = nextDistance;
  }
  return count;
}

void CheckEstimate(std::size_t points, Reporter& reporter) {
  if (points > MAXWINDINGPOINTS) reporter.Geometry("newWinding: too many points");
}

// The points that `out` really holds.
std::size_t CheckCount(std::size_t count, std::size_t room, Reporter& reporter) {
  if (count <= room) return count;
  reporter.Geometry("ClipWinding: points exceeded estimate");
  return room;
}

std::array<SpacePoint, 4> BaseSquare(const Plane& plane, double size, Reporter& reporter) {
  const DVec3& normal = plane.normal;
  double best = -BOGUS_RANGE;
  int axis = -1;
  for (int i = 0; i < 3; ++i) {
    const double size = std::fabs(normal[i]);
    if (size > best) {
      best = size;
      axis = i;
    }
  }
  if (axis < 0 || !plane.HasNormal()) {
    reporter.Geometry("BasePolyForPlane: no axis found");
    constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
    return {{{NONE, NONE, NONE}, {NONE, NONE, NONE}, {NONE, NONE, NONE}, {NONE, NONE, NONE}}};
  }
  DVec3 up = axis == 2 ? DVec3{1, 0, 0} : DVec3{0, 0, 1};
  up = Normalise(up - normal * Dot(up, normal));
  const DVec3 centre = normal * plane.dist;
  const DVec3 right = Cross(up, normal) * size;
  up = up * size;

  const auto point = [](const DVec3& p) { return SpacePoint{p.x, p.y, p.z}; };
  return {point(centre - right + up), point(centre + right + up), point(centre + right - up),
          point(centre - right - up)};
}

float Snapped(double coordinate) {
  const double whole = RoundToInt(coordinate);
  return static_cast<float>(std::fabs(coordinate - whole) < SNAP_EPSILON ? whole : coordinate);
}

// How far corners lie from the origin.
struct Reach {
  double coordinate = 0;
  double squaredDistance = 0;

  void Add(const DVec3& p) {
    coordinate = std::max({coordinate, std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
    squaredDistance = std::max(squaredDistance, Dot(p, p));
  }
};

Reach MakeWindings(std::span<const Plane> planes, std::span<WindingPtr> made, double baseSize,
                   Reporter& reporter) {
  Reach reach;
  for (std::size_t i = 0; i < planes.size(); ++i) {
    made[i] = FaceWinding(planes, i, reporter, baseSize);
    if (!made[i]) continue;
    for (const WindingPoint& p : made[i]->Points()) reach.Add(Position(p));
  }
  return reach;
}

WindingPtr Allocate(std::size_t points) {
  void* block = ::operator new(sizeof(winding) + points * sizeof(WindingPoint));
  return WindingPtr(new (block) winding{static_cast<std::int32_t>(points)});
}

}  // namespace

Plane PlaneFromPoints(const DVec3& p0, const DVec3& p1, const DVec3& p2) {
  const DVec3 normal = Normalise(Cross(p0 - p1, p2 - p1));
  return {normal, Dot(p1, normal)};
}

void WindingDelete::operator()(winding* w) const {
  ::operator delete(w);
}

WindingPtr newWinding(unsigned points, Reporter& reporter) {
  CheckEstimate(points, reporter);
  WindingPtr w = Allocate(points);
  std::ranges::fill(w->Points(), WindingPoint{});
  return w;
}

WindingPtr CopyWinding(const winding& w) {
  const std::span<const WindingPoint> points = w.Points();
  WindingPtr copy = Allocate(points.size());
  std::ranges::copy(points, copy->Points().begin());
  return copy;
}

WindingPtr BasePolyForPlane(const Plane& plane, Reporter& reporter) {
  const auto square = BaseSquare(plane, BASE_SIZE, reporter);
  WindingPtr w = newWinding(square.size(), reporter);
  std::ranges::transform(square, w->Points().begin(), [](const SpacePoint& p) {
    return WindingPoint{static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)};
  });
  return w;
}

WindingPtr ClipWinding(WindingPtr in, const Plane& split, Reporter& reporter) {
  if (!in) {
    reporter.Assert("in", "brush.cpp", __LINE__);
    return nullptr;
  }
  const std::span<const WindingPoint> points = std::as_const(*in).Points();
  const Kept kept = WhatIsKept(points, split);
  if (kept == Kept::All) return in;
  if (kept == Kept::None) return nullptr;

  const std::size_t estimate = points.size() + ESTIMATE_EXTRA;
  WindingPtr out = newWinding(static_cast<unsigned>(estimate), reporter);
  const std::size_t count = Cut(points, split, out->Points());
  out->numpoints = static_cast<std::int32_t>(CheckCount(count, estimate, reporter));
  return out;
}

WindingPtr FaceWinding(std::span<const Plane> planes, std::size_t which, Reporter& reporter,
                       double baseSize) {
  SpacePoint buffers[2][MAXWINDINGPOINTS];
  SpacePoint* points = buffers[0];
  SpacePoint* spare = buffers[1];
  std::size_t count = 4;
  std::ranges::copy(BaseSquare(planes[which], baseSize, reporter), points);

  for (std::size_t i = 0; i < planes.size(); ++i) {
    if (i == which) continue;
    const Plane split = planes[i].Flipped();
    const std::span<const SpacePoint> in(points, count);
    const Kept kept = WhatIsKept(in, split);
    if (kept == Kept::All) continue;
    if (kept == Kept::None) return nullptr;

    const std::size_t estimate = count + ESTIMATE_EXTRA;
    CheckEstimate(estimate, reporter);
    const std::size_t room = std::min<std::size_t>(estimate, MAXWINDINGPOINTS);
    count = CheckCount(Cut(in, split, std::span<SpacePoint>(spare, room)), room, reporter);
    std::swap(points, spare);
  }

  WindingPtr w = Allocate(count);
  std::transform(points, points + count, w->Points().begin(), [](const SpacePoint& p) {
    return WindingPoint{Snapped(p.x), Snapped(p.y), Snapped(p.z)};
  });
  return w;
}

bool SolidWindings(std::span<const Plane> planes, std::span<WindingPtr> made, Reporter& reporter) {
  const Reach near = MakeWindings(planes, made, BASE_SIZE, reporter);
  // Of a solid that goes further something reaches to where these squares end, or nothing is there.
  constexpr double SQUARED = BASE_SIZE * BASE_SIZE;
  const bool isSurelyWhole = near.squaredDistance > 0 && near.squaredDistance < SQUARED;
  if (isSurelyWhole || !std::ranges::all_of(planes, &Plane::HasNormal)) return true;
  std::array<WindingPtr, MAXFACES> further;
  const Reach far = MakeWindings(planes, further, FAR_BASE_SIZE, reporter);
  if (far.squaredDistance <= SQUARED) return true;
  if (far.coordinate <= WORLD_REACH) {
    std::move(further.begin(), further.begin() + static_cast<std::ptrdiff_t>(planes.size()),
              made.begin());
    return true;
  }
  for (std::size_t i = 0; i < planes.size(); ++i) {
    if (further[i] && !made[i]) return false;
  }
  return true;
}

double CornerDistance(const winding& a, const winding& b) {
  const auto farthest = [](const winding& from, const winding& to) {
    double greatest = 0;
    for (const WindingPoint& p : from.Points()) {
      double nearest = std::numeric_limits<double>::infinity();
      for (const WindingPoint& q : to.Points()) {
        const DVec3 between = Position(p) - Position(q);
        nearest = std::min(nearest, Dot(between, between));
      }
      greatest = std::max(greatest, nearest);
    }
    return greatest;
  };
  return std::sqrt(std::max(farthest(a, b), farthest(b, a)));
}

}  // namespace ferrowand
