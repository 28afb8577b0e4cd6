// The arithmetic of dragging the selection's box in a view: what a cursor position means as a move,
// a scale, a turn or a skew, and the words for it. No view, no map: numbers in, numbers out.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace ferrowand {

class MapView;
class Reporter;

// Across and up, on the axes of a view; world units.
using ViewInts = std::array<int, 2>;
using ViewPoint = std::array<double, 2>;

struct ViewBox {
  ViewPoint mins{}, maxs{};
};
// From the low corner on: along the low edge, up, back along the high edge.
using ViewQuad = std::array<ViewPoint, 4>;

// What of the view and its map bears on a drag.
struct DragRules {
  std::array<std::uint8_t, 2> grid{6, 6};  // exponents
  std::array<bool, 2> edits{true, true};   // whether the view edits the axis
  bool snap = false;
  bool angleSnap = false;
  int rotationStep = 15;  // degrees

  int Snap(std::size_t axis, double world) const;
};
DragRules RulesOf(const MapView& view);

struct MoveStep {
  ViewPoint by{};
  std::string status;
};
// `offset` is added to the snapped corner.
MoveStep DragMove(const ViewBox& box, const ViewInts& press, const ViewInts& cursor,
                  const ViewInts& offset, const DragRules& rules);

struct ScaleStep {
  ViewPoint dragged{};  // the corner opposite the anchor
  ViewPoint factors{1, 1};
  std::string status;
};
// `direction` points from the dragged edge to the anchor: 1 where the low edge is dragged, -1 for
// the high one, 0 for neither. An anchor that is on no edge of the box is a failed assertion.
ScaleStep DragScale(const ViewBox& box, const ViewInts& anchor, const ViewInts& direction,
                    const ViewInts& cursor, const DragRules& rules, Reporter& reporter);

// Degrees, clockwise as the view shows it, -90 .. 270.
int AngleOf(const ViewInts& centre, const ViewInts& point);

struct RotateStep {
  int angle = 0;  // degrees, clockwise as the view shows it, 0 .. 360
  ViewQuad corners{};
  std::string status;
};
RotateStep DragRotate(const ViewBox& box, const ViewInts& centre, int startAngle,
                      const ViewInts& cursor, const DragRules& rules);

// Along one axis of the view, by the low or the high edge of the other one.
struct SkewGrab {
  std::size_t along = 0;
  bool highEdge = false;
};
struct SkewStep {
  int amount = 0;  // world units
  ViewQuad corners{};
  std::string status;
};
SkewStep DragSkew(const ViewBox& box, const SkewGrab& grab, const ViewInts& press,
                  const ViewInts& cursor, const DragRules& rules);

}  // namespace ferrowand
