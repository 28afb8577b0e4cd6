// Where in the world a click is that places something.
#pragma once

#include "geometry/vec.h"
#include "platform/pixel.h"

namespace ferrowand {

class MapView;
class ViewList;

// What the view does not show is taken from the first other view of the map that does: the middle
// of what is seen there; 0 when there is none. Whole units.
Vec3 PointAt(const MapView& view, const ViewList& views, Pixel at);

}  // namespace ferrowand
