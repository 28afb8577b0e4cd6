// A window of the frame's client area: a 2D view, and whatever else shows a map.
#pragma once

#include "shell/ui/win32.h"

namespace ferrowand {

class Map;
class MapView;

class ChildWindow {
 public:
  virtual ~ChildWindow() = default;

  virtual HWND Handle() const = 0;
  // The map that commands given here act on; null when there is none.
  virtual Map* GetMap() const { return nullptr; }
  virtual MapView* View() { return nullptr; }
  // Whether the map stays open as long as this window does.
  virtual bool KeepsMapOpen() const { return false; }
  virtual void SetTitle() {}
  virtual void Refresh() {}
};

}  // namespace ferrowand
