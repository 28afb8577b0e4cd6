// What every tool must leave behind: solids. And what of them can be added up.
#pragma once

#include <gtest/gtest.h>

#include <random>

#include "document/brush.h"

namespace ferrowand {

// Closed, convex, its points on their planes, its bounds those of its points. Gaps are within the
// tolerance, and none where all corners are on whole units.
testing::AssertionResult IsSolid(const Brush& brush);
WindingPtr WindingOf(const std::vector<Vec3>& points, Reporter& reporter);

// Whether all its points have whole coordinates.
bool IsOnWholeUnits(const Brush& brush);
// Cubic units, from the windings.
double Volume(const Brush& brush);
double SurfaceArea(const Brush& brush);

// Convex, with all corners on whole units within `reach` of the centre; 4 to 32 faces of any slope.
Brush RandomHull(std::mt19937& random, const Vec3& centre, int reach, Reporter& reporter);
// A box with edges cut off at 45 degrees, all on a grid of 32 units round the centre. What such
// blocks cut from each other has whole corners again.
Brush RandomBlock(std::mt19937& random, const Vec3& centre, int reach, Reporter& reporter);

}  // namespace ferrowand
