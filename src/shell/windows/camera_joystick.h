// The joystick that steers the cameras: the one that the options name, if it is there.
#pragma once

#include <optional>

#include "platform/joystick.h"
#include "views/camera/camera_pose.h"

namespace ferrowand {

class Reporter;
struct Options;

class CameraJoystick {
 public:
  // All outlive it.
  CameraJoystick(Joysticks& joysticks, const Options& options, Reporter& reporter)
      : joysticks_(joysticks), options_(options), reporter_(reporter) {}

  // By the options as they are now; where it stands is its rest. Nothing is said where there is
  // none, but one that has been unplugged is.
  void Open();
  bool IsOpen() const { return info_.has_value(); }
  // What its deflection does now. It is closed, which is said, when it has been unplugged.
  CameraMove Poll();

 private:
  bool Read(JoystickPosition& position);

  Joysticks& joysticks_;
  const Options& options_;
  Reporter& reporter_;
  std::optional<JoystickInfo> info_;
  JoystickPosition rest_;
};

}  // namespace ferrowand
