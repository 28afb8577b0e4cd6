// Planes and the convex polygons that faces occupy on them. The method (a huge square on the
// plane, cut down by the other planes) and its tolerances are those of the game's own map tools.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "geometry/tolerance.h"
#include "geometry/vec.h"

namespace ferrowand {

class Reporter;

// A point p lies on the plane when Dot(p, normal) == dist; in front is the outside of a brush.
// Held in doubles: a float's last place grows to a hundredth of a unit where slopes are thin.
struct Plane {
  DVec3 normal;
  double dist = 0;

  double DistanceTo(const DVec3& p) const { return Dot(p, normal) - dist; }
  Plane Flipped() const { return {-normal, -dist}; }
  // Not so when it was made of points on one line.
  bool HasNormal() const { return std::isfinite(Dot(normal, normal)); }
};

// The normal is that of a clockwise face, Cross(p0 - p1, p2 - p1); points on one line give a normal
// that is not a number.
Plane PlaneFromPoints(const DVec3& p0, const DVec3& p1, const DVec3& p2);

struct WindingPoint {
  float x = 0, y = 0, z = 0;  // world units
  float s = 0, t = 0;         // surface values of the texture code, carried along by clipping

  Vec3 Position() const { return {x, y, z}; }
};

// A convex polygon in one block of memory, the count in front of its points. Made by newWinding
// for a fixed capacity; it never grows.
struct winding {
  std::int32_t numpoints;

  std::span<WindingPoint> Points() {
    return {reinterpret_cast<WindingPoint*>(this + 1), static_cast<std::size_t>(numpoints)};
  }
  std::span<const WindingPoint> Points() const {
    return {reinterpret_cast<const WindingPoint*>(this + 1), static_cast<std::size_t>(numpoints)};
  }
};

struct WindingDelete {
  void operator()(winding* w) const;
};
using WindingPtr = std::unique_ptr<winding, WindingDelete>;

// Zero-filled. More than 64 points are reported ("newWinding: too many points") and given all the
// same.
WindingPtr newWinding(unsigned points, Reporter& reporter);
WindingPtr CopyWinding(const winding& w);

// Four points, half-size 8192, clockwise seen from in front. A plane without a finite normal is
// reported ("BasePolyForPlane: no axis found") and gives four points that are not numbers.
WindingPtr BasePolyForPlane(const Plane& plane, Reporter& reporter);

// The part of `in` in front of `split`, or null when there is none. A winding that lies on the
// plane as a whole, or touches it from the front, comes back as it is.
WindingPtr ClipWinding(WindingPtr in, const Plane& split, Reporter& reporter);

// The polygon of planes[which] inside all the other planes (the solid is behind every one), whole
// units snapped; null when nothing is left. The same steps as BasePolyForPlane and ClipWinding by
// the flipped planes in their order, in one go.
WindingPtr FaceWinding(std::span<const Plane> planes, std::size_t which, Reporter& reporter,
                       double baseSize = BASE_SIZE);

// FaceWinding of all the planes, at most MAXFACES, into `made`. A square of BASE_SIZE holds all
// that lies within that distance of the origin; where a closed solid reaches further, its planes
// start from larger ones. False when it leaves the world and faces are missing for that.
bool SolidWindings(std::span<const Plane> planes, std::span<WindingPtr> made, Reporter& reporter);

// How far the farthest corner of one is from the nearest corner of the other.
double CornerDistance(const winding& a, const winding& b);

}  // namespace ferrowand
