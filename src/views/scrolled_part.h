// What of a picture is not simply elsewhere when the view is scrolled by whole pixels. A point that
// lies halfway between two pixels belongs to the one farther from the first column or row, so its
// pixel changes sides when that is crossed, and all that is drawn to it changes a little.
#pragma once

#include <optional>
#include <vector>

#include "platform/pixel.h"
#include "views/view_transform.h"

namespace ferrowand {

class Map;

// Both transforms differ in their origins alone.
struct PictureScroll {
  const ViewTransform& before;
  const ViewTransform& after;
  Pixel by;             // how far the picture goes
  unsigned flags = 0;   // DRAW_ bits of the view
  PixelSize area = {};  // of the view
};

// The parts to be painted anew, in pixels of the view, beyond what the scroll uncovers. Nothing
// when that is all of the view.
std::optional<std::vector<PixelRect>> StrayedParts(const Map& map, const PictureScroll& scroll);

}  // namespace ferrowand
