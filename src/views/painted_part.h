// What of a view must be painted anew after a change of its map: the box of the change, grown by
// what the view draws beyond the bounds of objects.
#pragma once

#include <optional>

#include "document/announcement.h"
#include "platform/pixel.h"
#include "views/view_transform.h"

namespace ferrowand {

class entity;

// World units from an origin to the tip of what tells its angle.
inline constexpr float MARKER_REACH = 18;

struct PaintRules {
  const ViewTransform& transform;
  unsigned flags = 0;  // DRAW_ bits of the view
};

// In pixels of the view. Empty when nothing of the change can be seen; nothing when all of the view
// is to be painted.
std::optional<PixelRect> PaintedPart(const MapChange& change, const PaintRules& rules);

// Where the box with its handles and the markers of its entities are seen.
PixelRect HandledPart(const Bounds& box, const ViewTransform& transform);

// --- for whoever collects such parts
// Beyond, the mapping to pixels wraps around.
bool IsMapped(const Bounds& box);
// Whether arrows may lead from it or to it.
bool IsLinked(const entity& e);
// Now around both; an empty one adds nothing.
void Add(PixelRect& rect, const PixelRect& other);
// The right column and the lower row of `closed` are inside.
PixelRect Grown(const PixelRect& closed, int by);

}  // namespace ferrowand
