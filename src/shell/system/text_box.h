// Of what class a window is, and whether it takes what is typed as text.
#pragma once

#include "shell/system/win32.h"

#include <string>

namespace ferrowand {

inline std::string ClassOf(HWND window) {
  char name[100] = "";
  GetClassNameA(window, name, sizeof name);
  return name;
}

inline bool IsTextBox(HWND window) {
  return lstrcmpiA(ClassOf(window).c_str(), "Edit") == 0;
}

// Whether the message is of a key that writes in a text box, or moves about in it.
inline bool IsTextKey(const MSG& message) {
  if (!IsTextBox(message.hwnd)) return false;
  if (message.message != WM_KEYDOWN) return message.message == WM_CHAR;
  const WPARAM key = message.wParam;
  if (key >= VK_F1 && key <= VK_F24) return false;
  if (GetKeyState(VK_CONTROL) >= 0 || key < 'A' || key > 'Z') return true;
  return key == 'A' || key == 'C' || key == 'V' || key == 'X' || key == 'Z';
}

}  // namespace ferrowand
