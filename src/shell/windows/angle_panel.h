// The controls for where an entity looks: a dial, eight buttons around it, up, down, and a box to
// type in.
#pragma once

#include "shell/system/win32.h"

#include <functional>
#include <optional>
#include <string>

namespace ferrowand {

// Of the key "angle": no angles about the Z axis.
inline constexpr int ANGLE_UP = -1, ANGLE_DOWN = -2;

class AnglePanel {
 public:
  // Controls of the parent, which hands WM_COMMAND and WM_DRAWITEM on. `choose` is told what the
  // user chooses.
  AnglePanel(HWND parent, std::function<void(const std::string&)> choose);
  AnglePanel(const AnglePanel&) = delete;
  AnglePanel& operator=(const AnglePanel&) = delete;

  // The value of the key; nothing where it differs.
  void Show(const std::optional<std::string>& angle);
  void SetVisible(bool visible) const;
  static SIZE Size();
  void Place(int left, int top) const;
  bool OnCommand(int id);
  void Draw(const DRAWITEMSTRUCT& draw) const;
  // What is typed is chosen; false when nothing has been.
  bool Commit();
  void Drop();
  // What stands there has not been chosen yet.
  bool IsTyped() const;

 private:
  static LRESULT CALLBACK DialFunc(HWND dial, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                   DWORD_PTR panel);
  std::string Typed() const;
  void Turn(LPARAM to, bool exactly);

  HWND parent_;
  std::function<void(const std::string&)> choose_;
  std::string shown_;
  std::optional<int> angle_;  // where the dial points
  bool isTurning_ = false;
};

}  // namespace ferrowand
