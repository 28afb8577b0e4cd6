// A dialog of the resources that stands beside the frame. It takes the system's messages and hands
// on what concerns the window that it is.
#pragma once

#include "shell/windows/side_windows.h"

#include <string>

namespace ferrowand {

class Frame;

// Where such a dialog stands at first.
enum class FirstPlace { AsMade, LowerLeft, LowerRight };

class SideDialog : public SideWindow {
 protected:
  // All outlive it. Where it stood last is kept in `place`, if there is one.
  SideDialog(SideWindows& sides, const Frame& frame, std::string* place = nullptr,
             FirstPlace first = FirstPlace::AsMade);
  // From the constructor of what the dialog is to be: messages come at once. It is not shown yet.
  void Create(int resource);
  void ShowTitle(const std::string& title) const;
  // All that stands in the control.
  std::string TextOf(int id) const;
  bool IsTicked(int id) const;
  // It stays, and is found again where it stood.
  void Hide() const;

  // Whether the system may give the keys to the first control.
  virtual bool OnInit() = 0;
  virtual void OnCommand(int id, int notification) = 0;
  virtual LRESULT OnNotify(NMHDR& header) { return (void)header, 0; }
  virtual void OnTimer() {}
  virtual void OnClose() { DestroyWindow(Handle()); }

  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void PutInPlace() const;
  void KeepPlace() const;

  const Frame& frame_;
  std::string* const place_;
  const FirstPlace first_;
};

}  // namespace ferrowand
