// The "Set key" dialog: the user presses a key, or a button for one that is hard to press alone.
#pragma once

#include "shell/system/win32.h"

namespace ferrowand {

inline constexpr char KEY_ENTRY_CLASS[] = "FRWKeyEntry";
inline constexpr int NO_KEY = -1;

// Of the part of the dialog that the keys go to.
LRESULT CALLBACK KeyFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// The virtual-key code, or NO_KEY when the user thought better of it. A key that is down already,
// as the one that has opened the dialog, is taken when it is pressed again.
int AskKey(HWND owner);

}  // namespace ferrowand
