// What the tools ask of the program around them: the mouse, the screen, and whatever waits for the
// user. Implemented by the windows; scripted in tests.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/canvas.h"

namespace ferrowand {

class Map;
class MapView;
class Reporter;
class entity;
enum class PrimitiveKind;

struct HeldKeys {
  bool control = false;
  bool shift = false;
};

// Rising: along the diagonal from the bottom left to the top right; Falling: along the other one.
enum class ToolCursor {
  Arrow,
  Entity,
  Move,
  Cross,
  SizeAcross,
  SizeUpDown,
  SizeRising,
  SizeFalling,
  Turn,
  Refused
};

// The context popups of the 2D views.
enum class ToolPopup { Selection, TouchUp, FaceEdit };

class ToolHost {
 public:
  virtual ~ToolHost() = default;

  // As they are now.
  virtual HeldKeys Keys() const = 0;
  // While captured, the view gets what the mouse does anywhere.
  virtual void Capture(MapView& view, bool on) = 0;
  // Pixels on either axis by which the mouse may leave a press before that becomes a drag.
  virtual PixelSize DragThreshold() const { return {4, 4}; }
  virtual void SetCursor(MapView& view, ToolCursor cursor) = 0;
  // Lets `draw` draw on what the view shows now, at once and with no repaint.
  virtual void DrawNow(MapView& view, const std::function<void(Canvas&)>& draw) = 0;

  // At that pixel. Comes back when it has been closed and what was chosen has been done; whether
  // the menu took the release of the button that opened it.
  virtual bool TrackPopup(MapView& view, Pixel at, ToolPopup which) = 0;
  virtual void EditProperties(entity& e) = 0;
  // Of a round primitive, within what SidesOf allows; nothing when the user thought better of it.
  virtual std::optional<int> AskSides(PrimitiveKind kind) = 0;
  // Of a path that has been placed in the map; nothing when the user thought better of it.
  virtual std::optional<std::string> AskPathName(const Map& map) = 0;
  // That is put on faces of the map; it counts as used.
  virtual std::string CurrentTexture(Map& map) = 0;
  // Another one that is put on faces: it counts as used, too.
  virtual void NoteTexture(const std::string& name) { (void)name; }

  // The current tool is another one.
  virtual void ToolChanged() = 0;

  // Why a drag has changed nothing, in the view where it was made, so that it is noticed.
  virtual void Refuse(MapView& view, const std::string& why) = 0;
  virtual Reporter& Report() = 0;
};

}  // namespace ferrowand
