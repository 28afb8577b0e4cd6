// The program around the tools: the mouse and the keys as the system tells them, drawing on what a
// view's window shows, and the popup menu of the selection.
#pragma once

#include <functional>
#include <optional>

#include "shell/system/win32.h"

#include "views/tools/tool_host.h"

namespace ferrowand {

class ChildWindows;
class CommandTarget;
class Dialogs;
class GdiObjects;
class MapWindow;
class PopupMenus;
class TextureChoice;
class ToolSet;

// What the host works with. All outlive it.
struct ToolHostContext {
  ChildWindows& windows;
  ToolSet& tools;
  CommandTarget& commands;
  Reporter& reporter;
  Dialogs& dialogs;
  PopupMenus& popups;
  GdiObjects& objects;
  TextureChoice& choice;
};

class WindowToolHost : public ToolHost {
 public:
  explicit WindowToolHost(const ToolHostContext& context) : context_(context) {}

  // What the tool wants the mouse to look like.
  HCURSOR Cursor() const;
  // The system, or another window, has taken the mouse: what is being dragged there ends without
  // effect.
  void OnCaptureLost(HWND drawing);
  // The view's window wants it no more.
  void ReleaseMouse(HWND drawing);

  HeldKeys Keys() const override;
  void Capture(MapView& view, bool on) override;
  PixelSize DragThreshold() const override;
  void SetCursor(MapView& view, ToolCursor cursor) override;
  void DrawNow(MapView& view, const std::function<void(Canvas&)>& draw) override;
  bool TrackPopup(MapView& view, Pixel at, ToolPopup which) override;
  // Which is what is selected.
  void EditProperties(entity& e) override;
  std::optional<int> AskSides(PrimitiveKind kind) override;
  std::optional<std::string> AskPathName(const Map& map) override;
  std::string CurrentTexture(Map& map) override;
  void NoteTexture(const std::string& name) override;
  void ToolChanged() override;
  void Refuse(MapView& view, const std::string& why) override;
  Reporter& Report() override;

 private:
  // Null for a view that is no window's.
  MapWindow* WindowOf(const MapView& view) const;

  const ToolHostContext context_;
  ToolCursor cursor_ = ToolCursor::Arrow;
  HWND dragging_ = nullptr;  // the drawing area that a tool has captured the mouse for
  int sides_ = 8;            // of the last round primitive
};

}  // namespace ferrowand
