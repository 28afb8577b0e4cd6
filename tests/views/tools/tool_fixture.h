// Tools as a program has them: one set, two views of a small map, the mouse and the screen in the
// test's hands.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/change_recorder.h"
#include "support/fake_view_host.h"
#include "support/map_text.h"
#include "support/small_map.h"
#include "support/software_canvas.h"
#include "views/tools/tool_host.h"
#include "views/tools/tool_set.h"

namespace ferrowand {

class FakeToolHost : public ToolHost {
 public:
  explicit FakeToolHost(Reporter& reporter) : reporter_(reporter) {}

  HeldKeys keys;
  bool captured = false;
  ToolCursor cursor = ToolCursor::Arrow;
  std::map<const MapView*, SoftwareCanvas*> screens;
  int draws = 0;
  std::vector<Pixel> popups;
  ToolPopup lastPopup = ToolPopup::Selection;
  bool popupTakesRelease = false;
  std::vector<entity*> edited;
  std::optional<int> sides = 8;
  std::optional<std::string> pathName;
  int toolChanges = 0;
  PixelSize threshold{2, 2};

  HeldKeys Keys() const override { return keys; }
  void Capture(MapView&, bool on) override { captured = on; }
  PixelSize DragThreshold() const override { return threshold; }
  void SetCursor(MapView&, ToolCursor c) override { cursor = c; }
  void DrawNow(MapView& view, const std::function<void(Canvas&)>& draw) override {
    ++draws;
    if (!screens.contains(&view)) return;
    SoftwareCanvas& screen = *screens[&view];
    screen.SetClip({0, 0, screen.Size().width, screen.Size().height});
    draw(screen);
  }
  bool TrackPopup(MapView&, Pixel at, ToolPopup which) override {
    popups.push_back(at);
    lastPopup = which;
    return popupTakesRelease;
  }
  void EditProperties(entity& e) override { edited.push_back(&e); }
  std::optional<int> AskSides(PrimitiveKind) override { return sides; }
  std::optional<std::string> AskPathName(const Map&) override { return pathName; }
  std::string CurrentTexture(Map&) override { return "wall"; }
  void ToolChanged() override { ++toolChanges; }
  void Refuse(MapView& view, const std::string& why) override { view.SetStatus(why); }
  Reporter& Report() override { return reporter_; }

 private:
  Reporter& reporter_;
};

// A top view of 400 x 300 pixels, 4 units each, with the world's middle in its own.
class ToolTest : public testing::Test {
 protected:
  ToolTest() {
    view.SetOrientation(Orientation::Top);
    view.CentreOn({0, 0, 0});
  }

  Pixel At(int u, int v) const {
    return {view.transform.ToScreenU(static_cast<float>(u)),
            view.transform.ToScreenV(static_cast<float>(v))};
  }
  void Press(int u, int v, int button = BUTTON_LEFT) {
    view.OnMouseDown(At(u, v), button, false, false);
  }
  void MoveTo(int u, int v, int buttons = BUTTON_LEFT) {
    view.OnMouseMove(At(u, v), buttons, false);
  }
  void Release(int u, int v, int button = BUTTON_LEFT) { view.OnMouseUp(At(u, v), button); }
  void Click(int u, int v) {
    Press(u, v);
    Release(u, v);
  }
  void Drag(int fromu, int fromv, int tou, int tov) {
    Press(fromu, fromv);
    MoveTo(tou, tov);
    Release(tou, tov);
  }

  std::string Status() { return window.texts[ViewText::Message]; }
  std::string Text() const { return ExtendedText(map); }
  std::vector<entity*> Selected() const { return map.selection.Objects(); }
  std::vector<Colour> FreshPaint() {
    SoftwareCanvas canvas(window.area);
    view.Paint(canvas, {0, 0, window.area.width, window.area.height});
    return canvas.Pixels();
  }

  SmallMap small;
  Map& map = small.map;
  ChangeRecorder told{map};
  Options options;
  ViewList list;
  FakeToolHost host{small.reporter};
  ToolSet tools{host, list, options};
  FakeViewHost window;
  MapView view{small.map, window, list, options, tools.Current()};
};

}  // namespace ferrowand
