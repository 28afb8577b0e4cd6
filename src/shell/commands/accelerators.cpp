#include "shell/commands/accelerators.h"

#include <algorithm>
#include <vector>

#include "shell/commands/commands.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/text_box.h"

namespace ferrowand {
namespace {

BYTE HeldModifiers() {
  const auto flag = [](int key, BYTE held) { return GetKeyState(key) < 0 ? held : BYTE{}; };
  return flag(VK_SHIFT, FSHIFT) | flag(VK_CONTROL, FCONTROL) | flag(VK_MENU, FALT);
}

// What the accelerator table gives for the message; 0 for nothing.
unsigned CommandOfKey(HACCEL table, const MSG& message) {
  const bool isKey = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
  if (!isKey && message.message != WM_CHAR) return 0;
  std::vector<ACCEL> entries(static_cast<std::size_t>(CopyAcceleratorTableA(table, nullptr, 0)));
  CopyAcceleratorTableA(table, entries.data(), static_cast<int>(entries.size()));
  const BYTE flags = isKey ? FVIRTKEY | HeldModifiers() : 0;
  constexpr BYTE ALL = FVIRTKEY | FSHIFT | FCONTROL | FALT;
  const auto found = std::ranges::find_if(entries, [&](const ACCEL& entry) {
    return entry.key == message.wParam && (entry.fVirt & ALL) == flags;
  });
  return found == entries.end() ? 0 : found->cmd;
}

// Keys that write into a text box are none of the accelerators' business.
bool IsForAccelerators(const MSG& message) {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  return !IsTextKey(message);
}

}  // namespace

Accelerators::Accelerators(HINSTANCE instance, Commands& commands, const Frame& frame)
    : commands_(commands),
      frame_(frame),
      table_(LoadAcceleratorsA(instance, MAKEINTRESOURCEA(ID_FRAME))) {}

bool Accelerators::Translate(MSG& message) {
  if (!IsForAccelerators(message)) return false;
  // The system gives no commands while the mouse is captured: a drag makes way for them.
  if (commands_.IsDragging() && commands_.IsAvailable(CommandOfKey(table_, message))) {
    commands_.EndDrag();
  }
  if (TranslateAcceleratorW(frame_.Handle(), table_, &message) == 0) return false;
  // Some systems open the menu when Alt is let go, unless they have seen a key come with it.
  if (message.message == WM_SYSKEYDOWN) {
    DefWindowProcA(frame_.Handle(), WM_SYSKEYDOWN, message.wParam, message.lParam);
  }
  return true;
}

}  // namespace ferrowand
