// The joysticks of the machine.
#pragma once

#include "platform/joystick.h"

namespace ferrowand {

class SystemJoysticks : public Joysticks {
 public:
  std::optional<JoystickInfo> Find(unsigned number) override;
  JoystickReading Read(unsigned number, JoystickPosition& position) override;
  std::vector<JoystickInfo> Attached() override;
};

}  // namespace ferrowand
