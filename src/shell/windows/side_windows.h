// Windows of their own beside the frame, which owns them: the overview of a compile, what a map
// holds. They are no part of the client area, and none of them keeps a map open.
#pragma once

#include "shell/system/win32.h"

#include <memory>
#include <vector>

namespace ferrowand {

class Map;
class SideWindows;

// The object and the system's window are bound from the window's first message to its last one,
// when the list forgets the object.
class SideWindow {
 public:
  virtual ~SideWindow();
  SideWindow(const SideWindow&) = delete;
  SideWindow& operator=(const SideWindow&) = delete;

  // Null when the system gave none.
  HWND Handle() const { return window_; }
  virtual void OnMapClosing(const Map& map) { (void)map; }
  // Another one, read anew from the same file, takes its place.
  virtual void OnMapReplaced(const Map& map, Map& by) { (void)map, (void)by; }

  // The program waits for its user, or the user's next key or click is about to reach the window.
  virtual void OnIdle() {}
  // What is half typed is done before something else is.
  virtual void FinishTyping() {}
  // Whether a key is none of the window's own.
  virtual bool LeavesToProgram(const MSG& message) const { return (void)message, false; }

  // The procedure of windows of such classes: the object is the argument of creation.
  static LRESULT CALLBACK Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  // The same for dialogs.
  static INT_PTR CALLBACK DispatchDialog(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

 protected:
  explicit SideWindow(SideWindows& windows) : windows_(windows) {}

  // Whether the key gives a command and writes nothing.
  static bool IsProgramKey(const MSG& message);

  // Of a window: what it does not answer itself it hands to DefWindowProc. Of a dialog: whether it
  // has answered.
  virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

 private:
  void Bind(HWND window);
  void Part();

  SideWindows& windows_;
  HWND window_ = nullptr;
};

class SideWindows {
 public:
  // Lives until its window goes. Null, and it is gone, when the system gave it none.
  SideWindow* Add(std::unique_ptr<SideWindow> window);
  // The window is gone.
  void Forget(const SideWindow& window);
  const std::vector<std::unique_ptr<SideWindow>>& All() const { return windows_; }

  // The first one of that class for which `is` holds; null when there is none.
  template <typename Window, typename Test>
  Window* Find(const Test& is) const {
    for (const auto& side : windows_) {
      auto* const window = dynamic_cast<Window*>(side.get());
      if (window && is(*window)) return window;
    }
    return nullptr;
  }
  template <typename Window>
  Window* Find() const {
    return Find<Window>([](const Window&) { return true; });
  }

  // Before anything else sees it: whether the message was for one of them. Its keys are no commands
  // of the program, unless it leaves them to that.
  bool TakesMessage(MSG& message);
  // Each of them may close.
  void OnMapClosing(const Map& map);
  void OnMapReplaced(const Map& map, Map& by);
  void OnIdle();
  void FinishTyping();

 private:
  // That it is, or is a part of; null for none.
  SideWindow* WindowOf(HWND part) const;
  template <typename Tell>
  void TellAll(const Tell& tell);

  std::vector<std::unique_ptr<SideWindow>> windows_;
  bool isClickedBeside_ = false;
};

}  // namespace ferrowand
