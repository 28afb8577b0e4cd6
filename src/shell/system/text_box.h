// Whether a window is one that takes what is typed as text.
#pragma once

#include "shell/system/win32.h"

namespace ferrowand {

inline bool IsTextBox(HWND window) {
  char name[16] = "";
  GetClassNameA(window, name, sizeof name);
  return lstrcmpiA(name, "Edit") == 0;
}

}  // namespace ferrowand
