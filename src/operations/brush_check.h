// Whether a brush that was changed can be kept.
#pragma once

#include "document/brush.h"

namespace ferrowand {

inline constexpr int SMALLEST_SOLID = 4;  // faces

// Whether the brush is a solid, convex and all around closed, that a file gives back: the planes of
// the points that would be written bound every face, and each corner is where it was. Faces that
// lie between whole units may take corners as far as such rounding explains.
bool SurvivesSaving(const Brush& brush, Reporter& reporter);

// That, and no edge or face of it is too small for the game's tools. What is made anew must be so;
// what a map already holds may be finer.
bool IsKeepable(const Brush& brush, Reporter& reporter);

// Whether all of it lies within WORLD_REACH. Not-a-number does not.
bool IsInsideWorld(const Bounds& bounds);

}  // namespace ferrowand
