#include "views/camera/camera_pose.h"

#include <algorithm>
#include <cmath>

namespace ferrowand {

namespace {

constexpr double WORLD_END = 32767;
constexpr double RADIANS = 3.14159265358979323846 / 180;
constexpr DVec3 WORLD_UP{0, 0, 1};

// Counter-clockwise seen against the axis, which is of length 1.
DVec3 Turned(const DVec3& v, const DVec3& axis, double degrees) {
  const double cosine = std::cos(degrees * RADIANS);
  const double sine = std::sin(degrees * RADIANS);
  return v * cosine + Cross(axis, v) * sine + axis * (Dot(axis, v) * (1 - cosine));
}

// What rounding took from the right angle goes after every turn, so that it never adds up.
void Straighten(CameraPose& pose) {
  pose.direction = Normalise(pose.direction);
  pose.up = Normalise(pose.up - pose.direction * Dot(pose.up, pose.direction));
}

double PitchOf(const CameraPose& pose) {
  return -std::asin(std::clamp(pose.direction.z, -1.0, 1.0)) / RADIANS;
}

// Which way the camera is turned; where it looks straight up or down, its upper side tells.
double YawOf(const CameraPose& pose) {
  constexpr double STEEP = 0.99999;
  DVec3 ahead = pose.direction;
  if (std::abs(ahead.z) > STEEP) ahead = ahead.z > 0 ? -pose.up : pose.up;
  return std::atan2(ahead.y, ahead.x) / RADIANS;
}

void TurnFreely(CameraPose& pose, const CameraMove& move) {
  pose.direction = Turned(pose.direction, pose.up, -move.yaw);
  Straighten(pose);
  const DVec3 right = pose.Right();
  pose.direction = Turned(pose.direction, right, -move.pitch);
  pose.up = Turned(pose.up, right, -move.pitch);
  pose.up = Turned(pose.up, pose.direction, -move.roll);
  Straighten(pose);
}

}  // namespace

void CameraPose::Move(const CameraMove& move, MoveMethod method) {
  if (method == MoveMethod::LikeQuake) {
    Face(YawOf(*this) - move.yaw, PitchOf(*this) + move.pitch);
  } else if (move.yaw != 0 || move.pitch != 0 || move.roll != 0) {
    TurnFreely(*this, move);
  }
  eye = eye + Right() * move.sideways + up * -move.vertical + direction * -move.forward;
  for (int axis = 0; axis < 3; ++axis) eye[axis] = std::clamp(eye[axis], -WORLD_END, WORLD_END);
}

void CameraPose::LookAt(const DVec3& point) {
  const DVec3 way = point - eye;
  if (Length(way) == 0) return;
  const double flat = std::hypot(way.x, way.y);
  const double yaw = flat == 0 ? YawOf(*this) : std::atan2(way.y, way.x) / RADIANS;
  Face(yaw, -std::atan2(way.z, flat) / RADIANS);
}

void CameraPose::Face(double yaw, double pitch) {
  const double steep = std::clamp(pitch, -90.0, 90.0) * RADIANS;
  const double around = yaw * RADIANS;
  const DVec3 ahead{std::cos(around), std::sin(around), 0};
  direction = ahead * std::cos(steep) + WORLD_UP * -std::sin(steep);
  up = ahead * std::sin(steep) + WORLD_UP * std::cos(steep);
}

}  // namespace ferrowand
