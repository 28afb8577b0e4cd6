// A cursor that drags without end: near the edge of the frame it is put back.
#pragma once

#include "platform/pixel.h"

namespace ferrowand {

// To the middle of the drawing area along the axis on which it has come near the edge; itself where
// it has not. All in pixels of the drawing area.
Pixel WrappedCursor(Pixel cursor, const PixelRect& frame, PixelSize area);

}  // namespace ferrowand
