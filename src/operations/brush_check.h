// Whether a brush that was changed can be kept.
#pragma once

#include "document/brush.h"

namespace ferrowand {

// Whether a file gives the brush back, and a file of that again: its planes, made of points in
// whole units as they are written, still bound every face, and the bounds stray by no more than the
// rounding explains.
bool SurvivesSaving(const Brush& brush, Reporter& reporter);

// Whether all of it lies where a plane can be cut to a face. Not-a-number does not.
bool IsInsideWorld(const Bounds& bounds);

}  // namespace ferrowand
