// Whether a brush that was changed can be kept.
#pragma once

#include "document/brush.h"

namespace ferrowand {

// Whether the brush is a solid, all around closed, that a file gives back: the planes of the points
// that would be written bound every face, and each corner is where it was. Faces that lie between
// whole units may take corners as far as such rounding explains.
bool SurvivesSaving(const Brush& brush, Reporter& reporter);

// Whether all of it lies within WORLD_REACH. Not-a-number does not.
bool IsInsideWorld(const Bounds& bounds);

}  // namespace ferrowand
