// The tips that a new user reads at start-up: a window of its own that waits for nobody.
#pragma once

#include "shell/system/win32.h"

#include <cstddef>

namespace ferrowand {

class GdiObjects;
struct Options;

class Tips {
 public:
  Tips(Options& options, GdiObjects& objects) : options_(options), objects_(objects) {}
  ~Tips() { Close(); }
  Tips(const Tips&) = delete;
  Tips& operator=(const Tips&) = delete;

  void Show(HINSTANCE instance, HWND owner);
  void Close();
  // Null while it is not shown.
  HWND Handle() const { return dialog_; }

 private:
  static INT_PTR CALLBACK TipsFunc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
  void OnInit(HWND dialog);
  void OnCommand(int id);
  void ShowTip();

  Options& options_;
  GdiObjects& objects_;
  HWND dialog_ = nullptr;
  std::size_t tip_ = 0;
};

}  // namespace ferrowand
