// The row of buttons under the menu. Every command has its button, built or not.
#pragma once

#include "shell/system/win32.h"

#include <functional>

namespace ferrowand {

class Toolbar {
 public:
  // False, with the system's error set, when it cannot be made.
  bool Create(HWND owner, HINSTANCE instance);
  void Destroy();
  bool Exists() const { return window_ != nullptr; }
  HWND Handle() const { return window_; }
  // Fits it to its owner; its height in pixels.
  int Fit();

  using Ask = std::function<bool(unsigned id)>;
  void SetStates(const Ask& isAvailable, const Ask& isChecked);
  // On its button, in degrees.
  void ShowRotationStep(int degrees);

 private:
  HWND window_ = nullptr;
  int shownStep_ = 0;
};

}  // namespace ferrowand
