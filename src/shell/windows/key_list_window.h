// The list of the editor's keys, to read.
#pragma once

#include "shell/windows/child_window.h"

namespace ferrowand {

inline constexpr char KEY_LIST_CLASS[] = "FRWKeyListClass";

LRESULT CALLBACK KeyList(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

class KeyListWindow : public ChildWindow {
 public:
  // Lives until its window goes; Handle() is null when the system gave none.
  explicit KeyListWindow(ChildWindows& windows);

 private:
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnCreate();
  void Fit();

  HWND edit_ = nullptr;
};

}  // namespace ferrowand
