#include "shell/windows/panel_window.h"

#include "shell/system/controls.h"
#include "shell/system/text_box.h"

namespace ferrowand {

LRESULT PanelWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CREATE:
      OnCreate();
      isMade_ = true;
      break;
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED && isMade_) Layout();
      break;  // the system's own child procedure must see it too
    case WM_COMMAND:
      if (isMade_) OnCommand(LOWORD(wParam), HIWORD(wParam));
      return 0;
    case WM_NOTIFY:
      return isMade_ ? OnNotify(*reinterpret_cast<NMHDR*>(lParam)) : 0;
    case WM_NOTIFYFORMAT:
      return NFR_UNICODE;
    case WM_TIMER:
      OnTimer(wParam);
      return 0;
    case WM_CTLCOLORSTATIC:
      // A box that is only to be read keeps the system's colour.
      if (IsTextBox(reinterpret_cast<HWND>(lParam))) break;
      return OnGrey(wParam);
    case WM_SETFOCUS:
      if (isMade_) SetFocus(KeyControl());
      break;
  }
  return DefMDIChildProcA(Handle(), message, wParam, lParam);
}

}  // namespace ferrowand
