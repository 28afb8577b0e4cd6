// What the current tool receives from the 2D views: all mouse and key work of a view is its.
#pragma once

#include <string>

#include "geometry/vec.h"
#include "platform/canvas.h"

namespace ferrowand {

class Map;
class MapView;
class entity;

// Of a press or a release.
inline constexpr int BUTTON_LEFT = 1;
inline constexpr int BUTTON_RIGHT = 2;  // the middle button counts as the right one

// Operations that a tool has no use for do nothing. Positions are pixels of the view's drawing
// area; the numbers are the interface's own.
class Tool {
 public:
  virtual ~Tool() = default;

  virtual std::string Name() const = 0;

  virtual void MouseDown(MapView& view, Pixel at, int button) {
    (void)view, (void)at, (void)button;
  }  // 0
  // `buttons`: 1 left held, 2 right held, 0 none.
  virtual void MouseMove(MapView& view, Pixel at, int buttons) {
    (void)view, (void)at, (void)buttons;
  }  // 1
  virtual void MouseUp(MapView& view, Pixel at, int button) {
    (void)view, (void)at, (void)button;
  }  // 2
  virtual void DoubleClick(MapView& view, Pixel at, int button) {
    (void)view, (void)at, (void)button;
  }                                                     // 3
  virtual void Activate(MapView& view) { (void)view; }  // 4
  // 5: instead of the selection, or to it. Null is nothing.
  virtual void Select(MapView& view, entity* object, bool add) {
    (void)view, (void)object, (void)add;
  }
  // 9: whether the character was one of the tool's.
  virtual bool Key(MapView& view, char c) { return (void)view, (void)c, false; }
  // 10 and 11: after the map has been drawn, and after each drag step. What is drawn by inverting
  // must come out the same however often the view repaints in between.
  virtual void DrawOverlay(MapView& view, Canvas& canvas) { (void)view, (void)canvas; }
  virtual void DrawOverlayForOther(MapView& view, Canvas& canvas) { (void)view, (void)canvas; }
  virtual void Group(MapView& view) { (void)view; }  // 14
  // 25: a command of a context popup, its id less 1000.
  virtual void PopupCommand(MapView& view, unsigned command) { (void)view, (void)command; }
  // 29: of tools that place things.
  virtual void ClickAt(MapView& view, const Vec3& point, int button) {
    (void)view, (void)point, (void)button;
  }

  // Other objects are selected in a map that is shown, or in another order.
  virtual void SelectionChanged(const Map& map) { (void)map; }

  // Whether the tool follows a press that has not been released.
  virtual bool IsDragging() const { return false; }
  // Whether something is drawn by inverting now.
  virtual bool HasPreview() const { return false; }
  // The mouse has been taken away, or another tool is to be used: what has begun ends without
  // effect.
  virtual void Cancel() {}
};

}  // namespace ferrowand
