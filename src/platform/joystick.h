// Joysticks, and what the system counts among them, such as a ball with six axes.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace ferrowand {

inline constexpr std::size_t JOYSTICK_AXES = 6;  // X, Y, Z, R, U, V

struct JoystickInfo {
  unsigned number = 0;  // counted from 0
  std::string name;     // of the device
  unsigned axes = 2;    // from the first on
};

// Each axis from 0 to 65535; one that is not there stands still.
struct JoystickPosition {
  std::array<int, JOYSTICK_AXES> axes{};
  bool button = false;  // the first one is held
};

enum class JoystickReading { Read, Unplugged, Failed };

class Joysticks {
 public:
  virtual ~Joysticks() = default;

  // Nothing where the system knows no joystick of that number.
  virtual std::optional<JoystickInfo> Find(unsigned number) = 0;
  virtual JoystickReading Read(unsigned number, JoystickPosition& position) = 0;

  // Those that answer.
  virtual std::vector<JoystickInfo> Attached() = 0;
};

}  // namespace ferrowand
