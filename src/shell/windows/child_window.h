// A window of the frame's client area: a 2D view, and whatever else shows a map. The object and
// the system's window are bound at the window's first message and part at its last one, when the
// list of all of them forgets the object.
#pragma once

#include "shell/system/win32.h"

#include <optional>
#include <string>

#include "platform/canvas.h"
#include "views/camera/camera.h"
#include "views/camera/face_place.h"

namespace ferrowand {

class ChildWindows;
class Frame;
class Map;
class MapView;

// In the frame's client area, pixels.
struct ChildPlace {
  int left = CW_USEDEFAULT;
  int top = CW_USEDEFAULT;
  int width = CW_USEDEFAULT;
  int height = CW_USEDEFAULT;
};

class ChildWindow {
 public:
  virtual ~ChildWindow();
  ChildWindow(const ChildWindow&) = delete;
  ChildWindow& operator=(const ChildWindow&) = delete;

  // Null when the system gave none.
  HWND Handle() const { return window_; }
  // The map that commands given here act on; null when there is none.
  virtual Map* GetMap() const { return nullptr; }
  virtual MapView* View() { return nullptr; }
  virtual Camera* GetCamera() { return nullptr; }
  // Whether the map stays open as long as this window does.
  virtual bool KeepsMapOpen() const { return false; }
  // What it keeps only to draw faster is let go, to leave the memory to the game's tools; it may be
  // made anew when it is drawn next, or when the tools have ended.
  virtual void ReleaseMemory() {}
  virtual void RebuildMemory() {}
  // On the face that it shows at that pixel of the screen; none where it shows none, or does not
  // lie open there.
  virtual std::optional<FacePlace> FaceUnder(POINT) { return std::nullopt; }
  // What it shows at that pixel of the screen; nothing where it shows no faces.
  virtual CameraHit HitUnder(POINT) { return {}; }
  // To the rectangle of the frame's client area.
  void MoveTo(const PixelRect& place) const;
  // While it is the active one, before the accelerators: whether the message was for a dialog in
  // it.
  virtual bool TakesMessage(MSG&) { return false; }
  // What the options say of windows is another.
  virtual void OptionsChanged();

  // The procedure of all these windows.
  static LRESULT CALLBACK Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

 protected:
  // Outlive it.
  explicit ChildWindow(ChildWindows& windows);
  // From the constructor of what the window is to be: messages come at once. Its caption is as
  // high as the options say.
  void Create(const char* windowClass, const char* title, const ChildPlace& place = {},
              DWORD style = 0);

  // What it does not answer itself goes on to DefMDIChildProc. It is not told to close.
  virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
  // The mouse is over that part of this window. Where the options want the focus to follow it,
  // takes that from any other window of the frame, but not out of what is being typed.
  void OnMouseOver(HWND inside, POINT mouse);
  // The frame's window, in pixels of the drawing area of one of these.
  PixelRect FrameAround(HWND inside) const;
  // Where the other one stands.
  void MoveOnto(const ChildWindow& other) const;
  // Also into the list of the Window menu.
  void ShowTitle(const std::string& title);

  ChildWindows& windows_;
  Frame& frame_;

 private:
  HWND window_ = nullptr;
  std::string title_;
};

}  // namespace ferrowand
