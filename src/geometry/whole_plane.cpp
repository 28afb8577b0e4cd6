#include "geometry/whole_plane.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>

namespace ferrowand {
namespace {

// Of differences between points, so that their products stay below 2^54.
constexpr std::int64_t REACH_LIMIT = std::int64_t{2} * WHOLE_LIMIT;

bool IsWithin(const WholePoint& p, std::int64_t limit) {
  const auto fits = [limit](std::int64_t v) { return v >= -limit && v <= limit; };
  return fits(p.x) && fits(p.y) && fits(p.z);
}

bool IsNear(const WholePoint& difference) {
  return IsWithin(difference, REACH_LIMIT);
}

bool IsWhole(float coordinate) {
  constexpr float EVERY = 16777216;  // up to which floats hold every whole number
  // Not-a-number compares to nothing.
  return std::fabs(coordinate) <= EVERY &&
         static_cast<float>(static_cast<std::int32_t>(coordinate)) == coordinate;
}

}  // namespace

bool AreWhole(const std::array<Vec3, 3>& points) {
  return std::ranges::all_of(
      points, [](const Vec3& p) { return IsWhole(p.x) && IsWhole(p.y) && IsWhole(p.z); });
}

WholePoints AsWhole(const std::array<Vec3, 3>& points) {
  return {WholePoint(points[0]), WholePoint(points[1]), WholePoint(points[2])};
}

WholePoint WholeNormal(const WholePoints& points) {
  return Cross(points[0] - points[1], points[2] - points[1]);
}

bool HavePlane(const WholePoints& points, const WholePoints& of) {
  for (const WholePoint& p : points) {
    if (!IsNear(p - of[1])) return false;
  }
  if (!IsNear(of[0] - of[1]) || !IsNear(of[2] - of[1])) return false;
  const WholePoint normal = WholeNormal(of);
  for (const WholePoint& p : points) {
    if (Dot(p - of[1], normal) != 0) return false;
  }
  // Both normals lie along one line then, or there are none: any part that is not 0 tells the side.
  const WholePoint other = WholeNormal(points);
  for (int axis = 0; axis < 3; ++axis) {
    if (normal[axis] != 0)
      return (other[axis] > 0 && normal[axis] > 0) || (other[axis] < 0 && normal[axis] < 0);
  }
  return false;
}

Plane PlaneOf(const WholePoints& points) {
  if (!std::ranges::all_of(points, [](const auto& p) { return IsWithin(p, WHOLE_LIMIT); })) {
    return PlaneFromPoints(DVec3(points[0]), DVec3(points[1]), DVec3(points[2]));
  }
  WholePoint normal = WholeNormal(points);
  const std::int64_t divisor = std::gcd(std::gcd(normal.x, normal.y), normal.z);
  if (divisor > 1) normal = {normal.x / divisor, normal.y / divisor, normal.z / divisor};
  const DVec3 along(normal);
  const double length = Length(along);
  return {{along.x / length, along.y / length, along.z / length},
          static_cast<double>(Dot(points[1], normal)) / length};
}

Plane PlaneOf(const std::array<Vec3, 3>& points) {
  if (AreWhole(points)) return PlaneOf(AsWhole(points));
  return PlaneFromPoints(DVec3(points[0]), DVec3(points[1]), DVec3(points[2]));
}

double Difference(const Plane& a, const Plane& b, std::span<const WindingPoint> corners) {
  // Also when one is not a number.
  if (!(Dot(a.normal, b.normal) > 0)) return std::numeric_limits<double>::infinity();
  const DVec3 normal = a.normal - b.normal;
  const double dist = a.dist - b.dist;
  double greatest = 0;
  for (const WindingPoint& p : corners) {
    greatest = std::max(greatest, std::fabs(Dot(DVec3(p.Position()), normal) - dist));
  }
  return greatest;
}

bool IsAxial(const Plane& plane) {
  int along = 0;
  for (int axis = 0; axis < 3; ++axis) along += std::fabs(plane.normal[axis]) <= FACTOR_SLACK;
  return along == 2;
}

}  // namespace ferrowand
