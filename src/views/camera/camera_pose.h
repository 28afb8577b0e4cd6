// Where a camera stands and how it looks. World units; turns in degrees.
#pragma once

#include "geometry/vec.h"

namespace ferrowand {

// How the camera goes, as the options name it: 0 or 1 there.
enum class MoveMethod { Unrestricted, LikeQuake };

// One step of the camera: what every key, drag and joystick becomes. Positive yaw looks right,
// positive pitch down, positive roll tips the camera to its left. Positive sideways goes right,
// negative vertical up, negative forward forwards.
struct CameraMove {
  int yaw = 0, pitch = 0, roll = 0;
  int sideways = 0, vertical = 0, forward = 0;

  friend bool operator==(const CameraMove&, const CameraMove&) = default;
};

// Direction and up are of length 1 and at right angles.
struct CameraPose {
  DVec3 eye;
  DVec3 direction{1, 0, 0};
  DVec3 up{0, 0, 1};

  DVec3 Right() const { return Cross(direction, up); }
  // About and along the camera's own axes. "Like Quake" turns about the world's vertical axis,
  // stops at straight up and down, does not roll and stands upright afterwards, however it stood
  // before. The eye stays within the world of 32,767 units.
  void Move(const CameraMove& move, MoveMethod method);
  // Looks at the point, upright. A point at the eye changes nothing; one straight above or below
  // keeps the way that the camera was turned.
  void LookAt(const DVec3& point);
  // Yaw and pitch as keys of the game's entities tell them: yaw counter-clockwise from east, pitch
  // positive down.
  void Face(double yaw, double pitch);

  friend bool operator==(const CameraPose&, const CameraPose&) = default;
};

}  // namespace ferrowand
