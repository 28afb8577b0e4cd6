// The list of the editor's keys, to read.
#pragma once

#include "shell/windows/panel_window.h"

namespace ferrowand {

inline constexpr char KEY_LIST_CLASS[] = "FRWKeyListClass";

LRESULT CALLBACK KeyList(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

class KeyListWindow : public PanelWindow {
 public:
  // Lives until its window goes; Handle() is null when the system gave none.
  explicit KeyListWindow(ChildWindows& windows);

 private:
  void OnCreate() override;
  void Layout() const override;
  HWND KeyControl() const override { return edit_; }

  HWND edit_ = nullptr;
};

}  // namespace ferrowand
