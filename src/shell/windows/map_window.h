// The window of one 2D view: the drawing area with its scroll bars, and the status bar under it.
// It turns the system's messages into the view's calls and shows what the view asks for.
#pragma once

#include "shell/system/win32.h"

#include <array>
#include <memory>
#include <string>

#include "shell/system/handles.h"
#include "shell/windows/panel_window.h"
#include "views/map_view.h"
#include "views/tools/camera_faces.h"

namespace ferrowand {

class BackBuffer;
class CommandTarget;
class GdiObjects;
class Reporter;
class ToolSet;
class WindowToolHost;

inline constexpr char CLIENT_CLASS[] = "FRWClientClass";
inline constexpr char MAP_CLASS[] = "FRWMapClass";

LRESULT CALLBACK ClientWindowFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK MapFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// What the windows of 2D views work with. All outlive them.
struct MapWindowContext {
  const Options& options;
  Reporter& reporter;
  CommandTarget& commands;
  ToolSet& tools;
  WindowToolHost& toolHost;
  GdiObjects& objects;
  BackBuffer& backBuffer;
};

class MapWindow : public PanelWindow, public ViewHost {
 public:
  // Lives until its window goes; Handle() is null when the system gave none.
  MapWindow(ChildWindows& windows, const MapWindowContext& context, Map& map,
            Orientation orientation);
  ~MapWindow() override;

  // --- as a child of the frame
  Map* GetMap() const override { return &map_; }
  MapView* View() override { return view_.get(); }
  bool KeepsMapOpen() const override { return true; }
  void OptionsChanged() override;
  void ReleaseMemory() override { view_->ReleaseDrawingData(); }

  // Where the other one, which has a view, stands, and showing what it shows.
  void StandAs(ChildWindow& other);
  HWND Drawing() const { return drawing_; }
  // Red in the status bar, for some seconds or until the next press: hovering writes nothing over
  // it meanwhile. Without a status bar, a box.
  void Refuse(const std::string& why);

  // --- as the view's host
  PixelSize DrawingArea() const override;
  void Invalidate() override;
  void Invalidate(const PixelRect& part) override;
  void ScrollPicture(Pixel by, std::span<const PixelRect> anew) override;
  void SetScrollBars(const ScrollBar& horizontal, const ScrollBar& vertical) override;
  void SetText(ViewText which, const std::string& text) override;
  bool StatusBarShown() const override { return controlsShown_; }
  void SetCaption(const std::string& caption) override;
  PixelSize MeasureLabel(std::string_view text) override;
  PixelRect Frame() const override;
  void MoveCursor(Pixel to) override;
  void CaptureMouse(bool on) override;
  void MoveWindow(const PixelRect& to) override { MoveTo(to); }

 private:
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT OnMapMessage(UINT message, WPARAM wParam, LPARAM lParam);

  void OnCreate() override;
  void Layout() const override;
  HWND KeyControl() const override { return drawing_; }
  void OnCommand(int id, int notification) override;
  void OnTimer(UINT_PTR) override { EndRefusal(); }
  void AddToolTips() const;
  void ToggleControls();
  void OnDrawButton(const DRAWITEMSTRUCT& item);
  void OnPaint();
  void OnScroll(bool vertical, int request);
  void OnWheel(WPARAM wParam, LPARAM lParam, bool sideways);
  void OnDepthWheel(int notches, Pixel at);
  void OnButtonDown(int button, LPARAM lParam, bool twice);
  void OnButtonUp(int button, WPARAM wParam, LPARAM lParam);
  void OnMouseMove(WPARAM wParam, LPARAM lParam);
  void Nudge(WPARAM key);
  bool OnKeyDown(WPARAM key, bool isRepeated);
  void NudgeFaces(WPARAM key, bool isRepeated);
  bool InsertBound(WPARAM key, LPARAM lParam);
  void EndRefusal();
  void SetMouseCursor();

  const MapWindowContext context_;
  Map& map_;
  HWND drawing_ = nullptr;
  std::array<std::string, 3> texts_;  // of the status bar, by ViewText
  bool controlsShown_ = true;
  bool refusing_ = false;
  int wheelRest_ = 0;           // of turns smaller than a notch
  bool altIsForWheel_ = false;  // and its release opens no menu
  FaceNudge nudge_;
  std::unique_ptr<MapView> view_;

  friend LRESULT CALLBACK MapFunc(HWND, UINT, WPARAM, LPARAM);
};

}  // namespace ferrowand
