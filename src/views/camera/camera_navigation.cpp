#include "views/camera/camera_navigation.h"

#include <algorithm>
#include <cstdlib>

#include "base/key_bindings.h"
#include "views/map_view.h"
#include "views/tool.h"
#include "views/wrapped_cursor.h"

namespace ferrowand {
namespace {

constexpr int STEP = 40;                      // world units a key-down message
constexpr int TURN = 10, ROLL = 20;           // degrees
constexpr int RUN = 4;                        // times as far
constexpr std::uint8_t MAX_CAMERA_GRID = 15;  // 32768 units
constexpr int DEAD_ZONE = 4096;               // of the 32768 that an axis reaches to either side
constexpr int TURN_DIVISOR = 10;  // world units of a joystick's move for a degree of its turn

class HeldActions {
 public:
  HeldActions(const Options& options, const IsKeyDown& isDown)
      : options_(options), isDown_(isDown) {}

  bool operator()(KeyAction action) const {
    return std::ranges::any_of(KeysOf(options_, action), isDown_);
  }
  // 1, -1, or 0 for both or none.
  int Between(KeyAction more, KeyAction less) const {
    return static_cast<int>((*this)(more)) - static_cast<int>((*this)(less));
  }
  int RunFactor() const { return (*this)(KeyAction::Run) ? RUN : 1; }

 private:
  const Options& options_;
  const IsKeyDown& isDown_;
};

// Beyond the dead zone, by the sensitivity: the larger the number the slower.
int Deflection(const JoystickPosition& rest, const JoystickPosition& now, std::size_t axis,
               const Options& options) {
  const int way = now.axes[axis] - rest.axes[axis];
  const int beyond = std::max(std::abs(way) - DEAD_ZONE, 0);
  const int units = beyond / std::max<int>(options.joystickSpeed, 1);
  return way < 0 ? -units : units;
}

}  // namespace

CameraMove MoveOfKeys(const Options& options, const IsKeyDown& isDown) {
  const HeldActions held(options, isDown);
  const int step = STEP * held.RunFactor();
  return {.yaw = TURN * held.Between(KeyAction::LookRight, KeyAction::LookLeft),
          .pitch = TURN * held.Between(KeyAction::LookDown, KeyAction::LookUp),
          .roll = ROLL * held.Between(KeyAction::RollLeft, KeyAction::RollRight),
          .sideways = step * held.Between(KeyAction::StrafeRight, KeyAction::StrafeLeft),
          .vertical = step * held.Between(KeyAction::MoveDown, KeyAction::MoveUp),
          .forward = step * held.Between(KeyAction::Backtrack, KeyAction::MoveForward)};
}

bool IsLookingByMouse(const Options& options, const IsKeyDown& isDown) {
  return HeldActions(options, isDown)(KeyAction::Mlook);
}

CameraCharacter MeaningOf(char c) {
  if (c == 'c' || c == 'C') return CameraCharacter::SelectNone;
  switch (GridStepOf(c)) {
    case -1:
      return CameraCharacter::GridSmaller;
    case 1:
      return CameraCharacter::GridLarger;
    default:
      return CameraCharacter::Other;
  }
}

void StepGrids(std::span<MapView* const> views, bool larger) {
  const auto grow = [](std::uint8_t grid) {
    return grid < MAX_CAMERA_GRID ? static_cast<std::uint8_t>(grid + 1) : grid;
  };
  for (MapView* view : views) {
    if (!larger) {
      view->GridSmaller(false);
      continue;
    }
    view->gridu = grow(view->gridu);
    view->gridv = grow(view->gridv);
    view->Refresh();
  }
}

CameraMove CameraMouse::MoveTo(Pixel at, int buttons, const Options& options,
                               const IsKeyDown& isDown) {
  const HeldActions held(options, isDown);
  const Pixel by{at.x - last_.x, at.y - last_.y};
  last_ = at;
  CameraMove move;
  if ((buttons & BUTTON_LEFT) != 0 && held(KeyAction::Mlook)) {
    move.yaw = by.x;
    move.pitch = by.y;
  } else if ((buttons & BUTTON_RIGHT) != 0) {
    move.sideways = by.x * held.RunFactor();
    move.vertical = by.y * held.RunFactor();
  }
  return move;
}

std::optional<Pixel> CameraMouse::Wrap(const PixelRect& frame, PixelSize area) {
  const Pixel to = WrappedCursor(last_, frame, area);
  if (to == last_) return std::nullopt;
  last_ = to;
  return to;
}

CameraMove MoveOfJoystick(const JoystickPosition& rest, const JoystickPosition& now, unsigned axes,
                          const Options& options) {
  const auto along = [&](std::size_t axis) { return Deflection(rest, now, axis, options); };
  const auto about = [&](std::size_t axis) { return along(axis) / TURN_DIVISOR; };
  const int pitchSign = options.swapJoyPitch != 0 ? -1 : 1;
  CameraMove move;
  if (axes >= JOYSTICK_AXES) {
    move = {.yaw = about(4),
            .pitch = about(3),
            .roll = about(5),
            .sideways = along(0),
            .vertical = along(1),
            .forward = along(2)};
  } else if (now.button) {
    move.sideways = along(0);
    move.vertical = along(1);
  } else {
    move.yaw = about(0);
    move.forward = along(1);
  }
  if (axes > 2 && axes < JOYSTICK_AXES) move.pitch = about(2);
  move.pitch *= pitchSign;
  return move;
}

}  // namespace ferrowand
