// Planes through three whole points, which is how a map file holds every plane. Decided in whole
// numbers, so that the same plane gives the same bits whichever three of its points it is known by.
#pragma once

#include <array>
#include <optional>
#include <span>

#include "geometry/vec.h"
#include "geometry/winding.h"

namespace ferrowand {

using WholePoints = std::array<WholePoint, 3>;

// Whether all coordinates are whole numbers of which a float holds every one.
bool AreWhole(const std::array<Vec3, 3>& points);
// Of points that are whole.
WholePoints AsWhole(const std::array<Vec3, 3>& points);

// Along the normal of PlaneFromPoints, of any length; 0 when the points lie on one line.
WholePoint WholeNormal(const WholePoints& points);

// Whether `points` have exactly the plane that `of` have, seen from the same side. Of points so far
// from each other that it cannot be computed they have not.
bool HavePlane(const WholePoints& points, const WholePoints& of);

// PlaneFromPoints, and for whole points up to WHOLE_LIMIT the same bits for any three of one plane.
Plane PlaneOf(const std::array<Vec3, 3>& points);
Plane PlaneOf(const WholePoints& points);

// By how much planes differ at the corner where they differ most; infinite when they look to
// different sides or one has no normal.
double Difference(const Plane& a, const Plane& b, std::span<const WindingPoint> corners);

// Whether the plane lies along two of the axes.
bool IsAxial(const Plane& plane);

// Three whole points near the corners, spread at least as wide as these, whose plane differs from
// `plane` there by no more than CARRIED or, where no such plane is found, by little. An axial plane
// stays axial, on the nearest whole unit. Nothing for corners beyond WHOLE_LIMIT or not numbers.
std::optional<WholePoints> FindWholePoints(const Plane& plane,
                                           std::span<const WindingPoint> corners);

}  // namespace ferrowand
