// A window of the frame's client area that is made of controls. It takes the system's messages and
// hands on what concerns the window that it is.
#pragma once

#include "shell/windows/child_window.h"

namespace ferrowand {

class PanelWindow : public ChildWindow {
 protected:
  using ChildWindow::ChildWindow;

  // Makes the controls. Until that is over they tell nothing.
  virtual void OnCreate() = 0;
  // Places them in the window as large as it is.
  virtual void Layout() const = 0;
  // That has the keys when the window has got them.
  virtual HWND KeyControl() const = 0;

  virtual void OnCommand(int id, int notification) { (void)id, (void)notification; }
  virtual LRESULT OnNotify(NMHDR& header) { return (void)header, 0; }
  virtual void OnTimer(UINT_PTR timer) { (void)timer; }

  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  bool isMade_ = false;
};

}  // namespace ferrowand
