// The box around the selection with the handles to drag it by.
#pragma once

#include <array>

#include "geometry/vec.h"
#include "platform/canvas.h"
#include "views/view_transform.h"

namespace ferrowand {

enum class HandleMode { Scale, Rotate, Skew };

inline constexpr int HANDLE_GAP = 4;   // pixels from the box to the frame that carries the handles
inline constexpr int HANDLE_SIZE = 4;  // pixels, half of a handle
// Pixels around a selection's box in which something of the handles may be drawn.
inline constexpr int HANDLE_REACH = HANDLE_GAP + HANDLE_SIZE + 2;

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
