#include "shell/windows/key_list_window.h"

#include <optional>
#include <string>

#include "base/safe_file.h"
#include "base/text_parts.h"
#include "platform/system.h"
#include "shell/frame/frame.h"
#include "shell/system/display_scale.h"

namespace ferrowand {

LRESULT CALLBACK KeyList(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return ChildWindow::Dispatch(window, message, wParam, lParam);
}

KeyListWindow::KeyListWindow(ChildWindows& windows) : PanelWindow(windows) {
  Create(KEY_LIST_CLASS, "Key List");
}

void KeyListWindow::OnCreate() {
  edit_ = CreateWindowExA(0, "EDIT", "",
                          WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                              ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL,
                          0, 0, 0, 0, Handle(), nullptr, frame_.Instance(), nullptr);
  SendMessageA(edit_, WM_SETFONT, reinterpret_cast<WPARAM>(FixedFont()), 0);
  std::optional<std::string> text = FileBytes("keylist.txt");
  if (!text) text = FileBytes(ProgramDirectory() + PathSeparator() + "keylist.txt");
  if (text) {
    SetWindowTextA(edit_, WithCrLf(*text).c_str());
  } else {
    SetWindowTextA(Handle(), "Cannot open keylist.txt");
  }
}

void KeyListWindow::Layout() const {
  RECT area;
  GetClientRect(Handle(), &area);
  MoveWindow(edit_, 0, 0, area.right, area.bottom, TRUE);
}

}  // namespace ferrowand
