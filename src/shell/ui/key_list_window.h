// The list of the editor's keys, to read.
#pragma once

#include "shell/ui/child_window.h"

namespace ferrowand {

class App;

inline constexpr char KEY_LIST_CLASS[] = "FRWKeyListClass";

LRESULT CALLBACK KeyList(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

class KeyListWindow : public ChildWindow {
 public:
  // Lives until its window goes; Handle() is null when the system gave none.
  explicit KeyListWindow(App& app);
  ~KeyListWindow() override;
  KeyListWindow(const KeyListWindow&) = delete;
  KeyListWindow& operator=(const KeyListWindow&) = delete;

  HWND Handle() const override { return window_; }

 private:
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void OnCreate();
  void Fit();

  App& app_;
  HWND window_ = nullptr;
  HWND edit_ = nullptr;

  friend LRESULT CALLBACK KeyList(HWND, UINT, WPARAM, LPARAM);
};

}  // namespace ferrowand
