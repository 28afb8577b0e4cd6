// What keys, the mouse and a joystick do to a camera: each becomes a move of its pose.
#pragma once

#include <functional>
#include <optional>
#include <span>

#include "base/options.h"
#include "platform/joystick.h"
#include "platform/pixel.h"
#include "views/camera/camera_pose.h"

namespace ferrowand {

class MapView;

using IsKeyDown = std::function<bool(int code)>;

inline MoveMethod MethodOf(const Options& options) {
  return options.cameraMoveMethod == 0 ? MoveMethod::Unrestricted : MoveMethod::LikeQuake;
}

// --- keys
// All that are held together.
CameraMove MoveOfKeys(const Options& options, const IsKeyDown& isDown);
bool IsLookingByMouse(const Options& options, const IsKeyDown& isDown);

// --- characters
enum class CameraCharacter { Other, SelectNone, GridSmaller, GridLarger };
CameraCharacter MeaningOf(char c);
// Of all these views, each from where it is. Meant: no 4096 units stop it here, as they do in a
// view; only the size of the world does.
void StepGrids(std::span<MapView* const> views, bool larger);

// --- the mouse, in pixels of the camera's window
class CameraMouse {
 public:
  void Press(Pixel at) { last_ = at; }
  // Since the last place. `buttons`: BUTTON_LEFT and BUTTON_RIGHT, as they are held.
  CameraMove MoveTo(Pixel at, int buttons, const Options& options, const IsKeyDown& isDown);
  // Where the cursor is to go when it has come near the edge of the frame, and is taken to be from
  // now on.
  std::optional<Pixel> Wrap(const PixelRect& frame, PixelSize area);

 private:
  Pixel last_;
};

// --- the joystick
// By how far it stands from its rest. Two axes look around and go ahead, with the button sideways
// and up; a third one looks up and down. A ball with six goes and turns along all of them.
CameraMove MoveOfJoystick(const JoystickPosition& rest, const JoystickPosition& now, unsigned axes,
                          const Options& options);

}  // namespace ferrowand
