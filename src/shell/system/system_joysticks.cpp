#include "shell/system/system_joysticks.h"

#include "shell/system/wide_text.h"
#include "shell/system/win32.h"

#include <mmsystem.h>

namespace ferrowand {

std::optional<JoystickInfo> SystemJoysticks::Find(unsigned number) {
  JOYCAPSW capabilities{};
  if (joyGetDevCapsW(number, &capabilities, sizeof capabilities) != JOYERR_NOERROR) {
    return std::nullopt;
  }
  return JoystickInfo{number, FromWide(capabilities.szPname), capabilities.wNumAxes};
}

JoystickReading SystemJoysticks::Read(unsigned number, JoystickPosition& position) {
  JOYINFOEX info{};
  info.dwSize = sizeof info;
  info.dwFlags = JOY_RETURNALL;
  const MMRESULT result = joyGetPosEx(number, &info);
  if (result == JOYERR_UNPLUGGED) return JoystickReading::Unplugged;
  if (result != JOYERR_NOERROR) return JoystickReading::Failed;
  const DWORD axes[] = {info.dwXpos, info.dwYpos, info.dwZpos,
                        info.dwRpos, info.dwUpos, info.dwVpos};
  for (std::size_t i = 0; i < JOYSTICK_AXES; ++i) position.axes[i] = static_cast<int>(axes[i]);
  position.button = (info.dwButtons & JOY_BUTTON1) != 0;
  return JoystickReading::Read;
}

std::vector<JoystickInfo> SystemJoysticks::Attached() {
  std::vector<JoystickInfo> attached;
  JoystickPosition position;
  for (unsigned number = 0; number < joyGetNumDevs(); ++number) {
    std::optional<JoystickInfo> info = Find(number);
    if (info && Read(number, position) == JoystickReading::Read) {
      attached.push_back(std::move(*info));
    }
  }
  return attached;
}

}  // namespace ferrowand
