#include "views/camera/camera_marker.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/display.h"

namespace ferrowand {
namespace {

// Pixels of a screen of 96 dots an inch.
constexpr int RING = 6, GRIP = 7, AROUND = 9, ARROW = 36, HEAD = 8, HEAD_HALF = 4;
constexpr double SHORTEST_ARROW = 1.0 / 3;  // of the whole one

Pixel EyeOn(const ViewTransform& seen, const CameraPose& pose) {
  return seen.ToScreen(Vec3(pose.eye));
}

struct OnScreen {
  double x = 0, y = 0;

  double Length() const { return std::hypot(x, y); }
};

// Of the direction, which is of length 1.
OnScreen WayOn(const ViewTransform& seen, const CameraPose& pose) {
  return {std::copysign(pose.direction[seen.orienu], pose.direction[seen.orienu] * seen.scaleu),
          std::copysign(pose.direction[seen.orienv], pose.direction[seen.orienv] * seen.scalev)};
}

Pixel Beside(Pixel from, const OnScreen& way, double along, double across) {
  return {from.x + RoundToInt(way.x * along - way.y * across),
          from.y + RoundToInt(way.y * along + way.x * across)};
}

Pixel TipOn(const ViewTransform& seen, const CameraPose& pose) {
  return Beside(EyeOn(seen, pose), WayOn(seen, pose), Scaled(ARROW), 0);
}

bool IsNear(Pixel a, Pixel b) {
  const int grip = Scaled(GRIP);
  return std::abs(a.x - b.x) <= grip && std::abs(a.y - b.y) <= grip;
}

}  // namespace

void DrawCameraMarker(Canvas& canvas, const ViewTransform& seen, const CameraPose& pose,
                      const Pen& pen) {
  const Pixel eye = EyeOn(seen, pose);
  const int ring = Scaled(RING);
  canvas.Ellipse(pen, std::nullopt,
                 {eye.x - ring, eye.y - ring, eye.x + ring + 1, eye.y + ring + 1});
  const OnScreen way = WayOn(seen, pose);
  if (way.Length() < SHORTEST_ARROW) return;
  const OnScreen ahead{way.x / way.Length(), way.y / way.Length()};
  const Pixel tip = TipOn(seen, pose);
  canvas.Lines(pen, std::array<PixelLine, 1>{{{Beside(eye, ahead, ring, 0), tip}}});
  const int head = Scaled(HEAD), half = Scaled(HEAD_HALF);
  canvas.Polygon(
      pen, pen.colour,
      std::array<Pixel, 3>{tip, Beside(tip, ahead, -head, half), Beside(tip, ahead, -head, -half)});
}

PixelRect CameraMarkerBox(const ViewTransform& seen, const CameraPose& pose) {
  const Pixel eye = EyeOn(seen, pose), tip = TipOn(seen, pose);
  const int around = Scaled(AROUND);
  return {std::min(eye.x, tip.x) - around, std::min(eye.y, tip.y) - around,
          std::max(eye.x, tip.x) + around, std::max(eye.y, tip.y) + around};
}

CameraGrip CameraGripAt(const ViewTransform& seen, const CameraPose& pose, Pixel at) {
  const bool hasArrow = WayOn(seen, pose).Length() >= SHORTEST_ARROW;
  if (hasArrow && IsNear(at, TipOn(seen, pose))) return CameraGrip::Arrow;
  return IsNear(at, EyeOn(seen, pose)) ? CameraGrip::Eye : CameraGrip::None;
}

CameraPose MovedTo(const ViewTransform& seen, const CameraPose& pose, Pixel to) {
  CameraPose moved = pose;
  moved.eye[seen.orienu] = seen.ToWorldU(to.x);
  moved.eye[seen.orienv] = seen.ToWorldV(to.y);
  return moved;
}

CameraPose TurnedTo(const ViewTransform& seen, const CameraPose& pose, Pixel to) {
  const double u = seen.ToWorldU(to.x) - pose.eye[seen.orienu];
  const double v = seen.ToWorldV(to.y) - pose.eye[seen.orienv];
  const double away = std::hypot(u, v);
  if (away == 0) return pose;
  DVec3 direction = pose.direction;
  const double across = std::hypot(direction[seen.orienu], direction[seen.orienv]);
  // One that looked along the depth turns into the view.
  const double length = across < SHORTEST_ARROW ? 1 : across;
  if (length == 1) direction = {};
  direction[seen.orienu] = u / away * length;
  direction[seen.orienv] = v / away * length;
  CameraPose turned = pose;
  turned.LookAt(pose.eye + direction);
  return turned;
}

}  // namespace ferrowand
