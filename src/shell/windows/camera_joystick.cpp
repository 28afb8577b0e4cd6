#include "shell/windows/camera_joystick.h"

#include "base/options.h"
#include "base/report.h"
#include "views/camera/camera_navigation.h"

namespace ferrowand {

void CameraJoystick::Open() {
  info_.reset();
  if (!options_.useJoystick) return;
  info_ = joysticks_.Find(options_.joystickNumber);
  if (info_) Read(rest_);
}

bool CameraJoystick::Read(JoystickPosition& position) {
  const JoystickReading reading = joysticks_.Read(info_->number, position);
  if (reading == JoystickReading::Read) return true;
  info_.reset();
  if (reading == JoystickReading::Unplugged) {
    reporter_.Show("Joystick/SpaceOrb will not be available", "Joystick unplugged");
  }
  return false;
}

CameraMove CameraJoystick::Poll() {
  JoystickPosition position;
  if (!info_ || !Read(position)) return {};
  return MoveOfJoystick(rest_, position, info_->axes, options_);
}

}  // namespace ferrowand
