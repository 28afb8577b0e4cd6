#include "views/tools/transform_drag.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/report.h"
#include "geometry/vec.h"
#include "views/map_view.h"

namespace ferrowand {
namespace {

// Anchors are kept in 16 bits.
int Short(double world) {
  return static_cast<std::int16_t>(RoundToInt(std::trunc(world)));
}

ViewQuad Corners(const ViewBox& box) {
  return {{{box.mins[0], box.mins[1]},
           {box.maxs[0], box.mins[1]},
           {box.maxs[0], box.maxs[1]},
           {box.mins[0], box.maxs[1]}}};
}

// Not nearer to the anchor than one grid step, and never beyond it.
int Limit(int dragged, int anchor, int direction, int spacing) {
  return direction > 0 ? std::min(dragged, anchor - spacing) : std::max(dragged, anchor + spacing);
}

}  // namespace

int DragRules::Snap(std::size_t axis, double world) const {
  return SnapToGrid(RoundToInt(world), grid[axis]);
}

DragRules RulesOf(const MapView& view) {
  const auto edits = [&](int axis) { return (view.axismask >> axis & 1) != 0; };
  return {.grid = {view.gridu, view.gridv},
          .edits = {edits(view.transform.orienu), edits(view.transform.orienv)},
          .snap = (view.map.optionBits() & MAP_SNAP) != 0,
          .angleSnap = (view.map.optionBits() & MAP_ANGLE_SNAP) != 0,
          .rotationStep = view.rotationStep};
}

MoveStep DragMove(const ViewBox& box, const ViewInts& press, const ViewInts& cursor,
                  const ViewInts& offset, const DragRules& rules) {
  MoveStep step;
  for (std::size_t axis = 0; axis < 2; ++axis) {
    if (!rules.edits[axis]) continue;
    double low = box.mins[axis] + cursor[axis] - press[axis];
    if (rules.snap) low = rules.Snap(axis, low);
    step.by[axis] = low + offset[axis] - box.mins[axis];
  }
  step.status = Format("Translating: (%i, %i)", RoundToInt(step.by[0]), RoundToInt(step.by[1]));
  return step;
}

ScaleStep DragScale(const ViewBox& box, const ViewInts& anchor, const ViewInts& direction,
                    const ViewInts& cursor, const DragRules& rules, Reporter& reporter) {
  ScaleStep step;
  for (std::size_t axis = 0; axis < 2; ++axis) {
    if (direction[axis] != 0 && rules.edits[axis]) {
      const int dragged = rules.snap ? rules.Snap(axis, cursor[axis]) : cursor[axis];
      step.dragged[axis] = Limit(dragged, anchor[axis], direction[axis], 1 << rules.grid[axis]);
    } else if (anchor[axis] == Short(box.mins[axis])) {
      step.dragged[axis] = box.maxs[axis];
    } else {
      if (anchor[axis] != Short(box.maxs[axis])) {
        reporter.Assert(
            axis == 0 ? "p->snap.x==((SI)maxs[p->orienu])" : "p->snap.y==((SI)maxs[p->orienv])",
            "qvtool.cpp", __LINE__);
      }
      step.dragged[axis] = box.mins[axis];
    }
    const bool isStill = direction[axis] == 0 || !rules.edits[axis];
    const double extent = box.maxs[axis] - box.mins[axis];
    if (!isStill && extent > 0) {
      step.factors[axis] = std::abs((anchor[axis] - step.dragged[axis]) / extent);
    }
  }
  step.status = Format("Scaling: (%.1fx%.1f), (%.2fx%.2f)", anchor[0] - step.dragged[0],
                       anchor[1] - step.dragged[1], step.factors[0], step.factors[1]);
  return step;
}

int AngleOf(const ViewInts& centre, const ViewInts& point) {
  const int du = Short(point[0] - centre[0]);
  const int dv = Short(point[1] - centre[1]);
  if (du == 0) return dv < 0 ? 90 : 270;
  const int angle =
      static_cast<int>(std::atan(-dv / static_cast<double>(du)) * 180 / std::numbers::pi);
  return du < 0 ? angle + 180 : angle;
}

RotateStep DragRotate(const ViewBox& box, const ViewInts& centre, int startAngle,
                      const ViewInts& cursor, const DragRules& rules) {
  int angle = AngleOf(centre, cursor) - startAngle;
  while (angle < 0) angle += 360;
  while (angle > 360) angle -= 360;  // Meant: a full turn stays one, none stays none.
  if (rules.angleSnap && rules.rotationStep > 0) {
    angle = (angle + rules.rotationStep / 2) / rules.rotationStep * rules.rotationStep;
  }

  RotateStep step{angle, Corners(box), Format("Rotating: %i\u00B0", angle)};
  const double c = CosDegrees(angle);
  const double s = SinDegrees(angle);
  for (ViewPoint& corner : step.corners) {
    const double u = corner[0] - centre[0];
    const double v = corner[1] - centre[1];
    corner = {centre[0] + u * c + v * s, centre[1] - u * s + v * c};
  }
  return step;
}

SkewStep DragSkew(const ViewBox& box, const SkewGrab& grab, const ViewInts& press,
                  const ViewInts& cursor, const DragRules& rules) {
  const std::size_t along = grab.along;
  int amount = 0;
  if (rules.edits[along]) {
    amount = cursor[along] - press[along];
    if (rules.snap) {
      amount = RoundToInt(rules.Snap(along, box.mins[along] + amount) - box.mins[along]);
    }
  }
  SkewStep step{amount, Corners(box), Format("Skewing: %i", amount)};
  const std::size_t across = 1 - along;
  const double grabbed = grab.highEdge ? box.maxs[across] : box.mins[across];
  for (ViewPoint& corner : step.corners) {
    if (corner[across] == grabbed) corner[along] += amount;
  }
  return step;
}

}  // namespace ferrowand
