// The box around the selection with the handles to drag it by.
#pragma once

#include <array>

#include "geometry/vec.h"
#include "platform/canvas.h"
#include "platform/display.h"
#include "views/view_transform.h"

namespace ferrowand {

enum class HandleMode { Scale, Rotate, Skew };

// Pixels from the box to the frame that carries the handles.
inline int HandleGap() {
  return Scaled(4);
}
// Half of a handle, in pixels.
inline int HandleSize() {
  return Scaled(4);
}
// Pixels around a selection's box in which something of the handles may be drawn.
inline int HandleReach() {
  return HandleGap() + HandleSize() + 2;
}

// Of each view axis: -1 the edge that is low in the world, 1 the high one, 0 neither.
struct GrabbedEdges {
  std::array<int, 2> edge{};

  bool Any() const { return edge[0] != 0 || edge[1] != 0; }
  bool IsCorner() const { return edge[0] != 0 && edge[1] != 0; }

  friend bool operator==(const GrabbedEdges&, const GrabbedEdges&) = default;
};

// `box` is the selection's, in the world.
GrabbedEdges GrabAt(const Bounds& box, const ViewTransform& transform, Pixel at);

void DrawHandles(const Bounds& box, const ViewTransform& transform, HandleMode mode, const Pen& pen,
                 Canvas& canvas);

}  // namespace ferrowand
