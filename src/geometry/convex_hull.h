// The convex solid around a few points in whole units, computed without any rounding.
#pragma once

#include <span>
#include <vector>

#include "geometry/vec.h"

namespace ferrowand {

// One flat face: its corners, clockwise seen from outside. Points on an edge or in the middle of a
// face are no corners.
using HullFace = std::vector<WholePoint>;

// Empty when all points lie in one plane. For up to a few hundred points, none beyond 100,000
// units: the work grows with the third power of their number.
std::vector<HullFace> ConvexHull(std::span<const WholePoint> points);

}  // namespace ferrowand
