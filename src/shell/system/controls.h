// The controls of a window: making and placing them, and what stands in them.
#pragma once

#include "shell/system/win32.h"

#include <string>

namespace ferrowand {

// In the letters of the interface, as yet without a place and a size. Null when the system gave
// none.
HWND AddControl(HWND parent, const wchar_t* windowClass, const wchar_t* text, DWORD style, int id,
                DWORD extendedStyle = 0);
// In pixels of the parent's drawing area. A size below nothing is none.
void PlaceControl(HWND parent, int id, int left, int top, int width, int height);

// All that stands in it, however long that is.
std::wstring WindowText(HWND window);
bool IsTicked(HWND parent, int id);
// At the end of a combo box's list, and of a list box; where it stands there.
void AddChoice(HWND combo, const std::wstring& text);
int AddLine(HWND list, const std::wstring& text);

// The answer to WM_CTLCOLORSTATIC: a text lies on the grey of its window.
LRESULT OnGrey(WPARAM dc);

}  // namespace ferrowand
