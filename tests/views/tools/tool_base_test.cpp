// What holds for every tool that drags: what ends a drag, what is seen of it, what it may change.
#include "views/tools/tool_base.h"

#include <functional>

#include "operations/primitives.h"
#include "operations/transform_selection.h"
#include "support/cases.h"
#include "views/tools/tool_fixture.h"

namespace ferrowand {
namespace {

// One way to begin a drag, by the cube that is selected.
struct Grip {
  const char* name;
  Tool* tool;
  Pixel at;
  HandleMode mode = HandleMode::Scale;
};

class ToolBaseTest : public ToolTest {
 protected:
  ToolBaseTest() {
    AddPrimitive(map, {.kind = PrimitiveKind::Cuboid, .box = {{0, 0, 0}, {64, 64, 64}}}, "wall");
    MoveSelection(map, {0, 0, 64}, {});
    selection = map.selection.Objects();
  }

  entity& Cube() { return *selection.front(); }
  std::vector<Grip> Grips() {
    const Pixel inside = At(30, 30), corner = At(64, 64), handle{corner.x + 4, corner.y - 4};
    const Pixel empty = At(-200, 160);
    return {{"move objects", &tools.entitySelector, inside},
            {"move brushes", &tools.brushSelector, inside},
            {"scale", &tools.brushSelector, handle, HandleMode::Scale},
            {"turn", &tools.brushSelector, handle, HandleMode::Rotate},
            {"skew", &tools.brushSelector, handle, HandleMode::Skew},
            {"move a face", &tools.brushTool, At(32, 64)},
            {"move a corner", &tools.vertexTool, corner},
            {"pick corners", &tools.vertexTool, empty},
            {"add by a rectangle", &tools.multiSelector, empty},
            {"draw a box", &tools.primitiveTool, empty}};
  }
  void Begin(const Grip& grip, MapView& in) {
    map.selection.Set(selection);
    tools.Use(*grip.tool);
    tools.brushSelector.SetMode(map, grip.mode);
    in.OnMouseDown(grip.at, BUTTON_LEFT, false, false);
    in.OnMouseMove({grip.at.x + 20, grip.at.y - 9}, BUTTON_LEFT, false);
  }
  void End(const Grip& grip, Pixel by) {
    view.OnMouseMove({grip.at.x + by.x, grip.at.y + by.y}, BUTTON_LEFT, false);
    view.OnMouseUp({grip.at.x + by.x, grip.at.y + by.y}, BUTTON_LEFT);
  }

  std::vector<entity*> selection;
};

TEST_F(ToolBaseTest, WhateverComesInTheMiddleOfADragEndsItWithoutEffect) {
  FakeViewHost secondWindow;
  std::unique_ptr<MapView> second;
  const Pixel away{9, 9};
  const Cases<const char*, std::function<void()>> events{
      {"escape", [&] { second->OnCharacter('\x1b', false); }},
      {"the mouse is taken away", [&] { tools.Current()->Cancel(); }},
      {"the button is let go elsewhere", [&] { second->OnMouseMove(away, 0, false); }},
      {"the other button", [&] { second->OnMouseDown(away, BUTTON_RIGHT, false, false); }},
      {"another tool", [&] { tools.Use(tools.entitySelector); }},
      {"the next tool", [&] { tools.Next(); }},
      {"the mouse goes on in another view", [&] { view.OnMouseMove(away, BUTTON_LEFT, false); }},
      {"an undo moves the object", [&] { map.undo.Undo(); }},
      {"an undo takes the object", [&] { map.undo.Undo(), map.undo.Undo(); }},
      {"the view is closed", [&] { second.reset(); }},
  };
  for (const auto& [event, happen] : events) {
    for (const Grip& grip : Grips()) {
      second = std::make_unique<MapView>(map, secondWindow, list, options, tools.Current());
      second->transform = view.transform;
      Begin(grip, *second);
      ASSERT_TRUE(tools.Current()->HasPreview()) << grip.name;
      ASSERT_TRUE(host.captured) << grip.name;
      happen();
      const std::string expected = Text();
      MapView& where = second ? *second : view;
      where.OnMouseMove({150, 90}, BUTTON_LEFT, false);
      EXPECT_FALSE(tools.Current()->HasPreview()) << event << ": " << grip.name;
      const std::string status = second ? secondWindow.texts[ViewText::Message] : "";
      EXPECT_EQ(status.find(':'), std::string::npos) << event << ": " << status;
      where.OnMouseUp({150, 90}, BUTTON_LEFT);
      EXPECT_EQ(Text(), expected) << event << ": " << grip.name;
      EXPECT_FALSE(second && host.captured) << event << ": " << grip.name;
      EXPECT_NE(tools.Current()->Name(), "Rectangle Selector") << event;
      second.reset();
      // As it was, with the undone steps done again.
      while (map.undo.CanUndo()) map.undo.Undo();
      small.sink.messages.clear();
      AddPrimitive(map, {.kind = PrimitiveKind::Cuboid, .box = {{0, 0, 0}, {64, 64, 64}}}, "wall");
      MoveSelection(map, {0, 0, 64}, {});
      selection = map.selection.Objects();
    }
  }
}

TEST_F(ToolBaseTest, ADragBeginsBeyondTheThresholdOnEitherAxis) {
  tools.Use(tools.brushSelector);
  const Pixel at = At(32, 32);
  host.threshold = {3, 6};
  for (const auto& [by, drags] :
       Cases<Pixel, bool>{{{3, 6}, false}, {{-3, -6}, false}, {{4, 0}, true}, {{0, -7}, true}}) {
    view.OnMouseDown(at, BUTTON_LEFT, false, false);
    view.OnMouseMove({at.x + by.x, at.y + by.y}, BUTTON_LEFT, false);
    EXPECT_EQ(tools.Current()->HasPreview(), drags) << by.x << ' ' << by.y;
    tools.Current()->Cancel();
  }
}

TEST_F(ToolBaseTest, WhatADragShowsLeavesNoTraceHoweverThePictureIsRepainted) {
  SoftwareCanvas screen(window.area);
  host.screens[&view] = &screen;
  for (const Grip& grip : Grips()) {
    Begin(grip, view);
    view.OnCharacter('\x1b', false);
    view.Paint(screen, {0, 0, window.area.width, window.area.height});
    const std::vector<Colour> still = screen.Pixels();
    const int repaints = window.invalidations;
    view.OnMouseDown(grip.at, BUTTON_LEFT, false, false);
    view.OnMouseMove({grip.at.x - 21, grip.at.y + 40}, BUTTON_LEFT, false);
    EXPECT_NE(screen.Pixels(), still) << grip.name;
    view.Paint(screen, {180, 90, 220, 170});
    view.OnMouseMove({grip.at.x + 13, grip.at.y - 9}, BUTTON_LEFT, false);
    view.Paint(screen, {100, 100, 230, 130});
    EXPECT_EQ(screen.Pixels(), FreshPaint()) << grip.name;
    EXPECT_EQ(window.invalidations, repaints) << grip.name;
    view.ScrollBy(64, 0);
    EXPECT_TRUE(window.scrolled.empty()) << "what is inverted must not be moved";
    view.ScrollBy(-64, 0);
    view.OnCharacter('\x1b', false);
    EXPECT_EQ(screen.Pixels(), still) << grip.name;
  }
}

TEST_F(ToolBaseTest, AnAxisThatTheViewDoesNotEditStaysInEveryKindOfDrag) {
  map.SetOptionBits(MAP_GRID);
  std::vector<Grip> grips = Grips();
  grips.resize(7);  // those that change the cube
  const Bounds before = Cube().GetBounds();
  for (const int axis : {0, 1}) {
    tools.ToggleAxisLimit(axis);
    EXPECT_EQ(tools.LimitedAxes(), 1 << axis);
    int changed = 0;
    for (const Grip& grip : grips) {
      const std::size_t steps = map.undo.StepCount();
      Begin(grip, view);
      End(grip, {40, -40});
      const Bounds after = Cube().GetBounds();
      EXPECT_EQ(after.mins[axis], before.mins[axis]) << grip.name;
      EXPECT_EQ(after.maxs[axis], before.maxs[axis]) << grip.name;
      changed += after != before;
      if (map.undo.StepCount() > steps) map.undo.Undo();
      const bool isTurn = grip.name == std::string("turn");
      EXPECT_EQ(Status().starts_with("A turn changes both axes"), isTurn) << grip.name;
    }
    // Not a turn; the skew goes along the first axis, the face along the second.
    EXPECT_EQ(changed, 5) << axis;
    MapView later{small.map, window, list, options, tools.Current()};
    later.SetOrientation(Orientation::Front);
    tools.LimitAxes(later);
    EXPECT_EQ(later.axismask, axis == 0 ? 4 : 5);
    tools.ToggleAxisLimit(axis);
    EXPECT_EQ(later.axismask, 5);
  }
}

TEST_F(ToolBaseTest, CtrlAtTheReleaseCopiesWhatWouldBeMoved) {
  std::vector<Grip> grips = Grips();
  grips.resize(2);
  const std::string before = Text();
  const Bounds box = Cube().GetBounds();
  for (const Grip& grip : grips) {
    host.keys.control = false;
    Begin(grip, view);
    host.keys.control = true;
    End(grip, {32, -16});
    EXPECT_EQ(Cube().GetBounds(), box) << grip.name;
    ASSERT_EQ(map.selection.size(), 1u);
    EXPECT_NE(map.selection[0], &Cube());
    EXPECT_EQ(map.selection[0]->GetBounds().mins, box.mins + Vec3(128, 64, 0)) << grip.name;
    map.undo.Undo();
    EXPECT_EQ(Text(), before) << grip.name;
  }
}

TEST_F(ToolBaseTest, TexturesGoWithWhatIsDraggedWhileTheyAreLocked) {
  map.SetOptionBits(MAP_GRID);
  std::vector<Grip> grips = Grips();
  grips.resize(5);  // those that move the faces as they are
  const auto settings = [&] {
    std::vector<float> all;
    for (const Face& f : map.selection.front()->brush.Faces()) {
      all.insert(all.end(), {f.xoff, f.yoff, f.rotation, f.xscale, f.yscale});
    }
    return all;
  };
  const std::vector<float> before = settings();
  for (const bool lock : {false, true}) {
    options.textureLock = lock;
    for (const bool copy : {false, true}) {
      for (const Grip& grip : grips) {
        host.keys.control = false;
        Begin(grip, view);
        host.keys.control = copy;
        End(grip, {33, -18});
        EXPECT_EQ(settings() == before, !lock) << grip.name;
        map.undo.Undo();
        map.selection.Set(selection);
      }
    }
  }
}

TEST_F(ToolBaseTest, TheCursorTellsWhatAPressWouldDo) {
  small.AddCuboid({-128, 0, 0}, {-64, 64, 64});  // not selected
  constexpr HandleMode SCALE = HandleMode::Scale, TURN = HandleMode::Rotate;
  constexpr HandleMode SKEW = HandleMode::Skew;
  const Cases<Tool&, HandleMode, Pixel, Pixel, ToolCursor> cases{
      {tools.brushSelector, SCALE, At(64, 64), {4, -4}, ToolCursor::SizeRising},
      {tools.brushSelector, SCALE, At(0, 0), {-4, 4}, ToolCursor::SizeRising},
      {tools.brushSelector, SCALE, At(64, 0), {4, 4}, ToolCursor::SizeFalling},
      {tools.brushSelector, SCALE, At(64, 32), {4, 0}, ToolCursor::SizeAcross},
      {tools.brushSelector, SCALE, At(32, 64), {0, -4}, ToolCursor::SizeUpDown},
      {tools.brushSelector, TURN, At(0, 64), {-4, -4}, ToolCursor::Turn},
      {tools.brushSelector, TURN, At(64, 32), {4, 0}, ToolCursor::Arrow},
      {tools.brushSelector, SKEW, At(64, 64), {4, -4}, ToolCursor::SizeAcross},
      {tools.brushSelector, SKEW, At(64, 32), {4, 0}, ToolCursor::SizeUpDown},
      {tools.brushSelector, TURN, At(32, 32), {0, 0}, ToolCursor::Move},
      {tools.brushSelector, TURN, At(-100, 32), {0, 0}, ToolCursor::Arrow},
      {tools.multiSelector, SCALE, At(32, 32), {0, 0}, ToolCursor::Move},
      {tools.entitySelector, SCALE, At(-100, 32), {0, 0}, ToolCursor::Entity},
      {tools.entitySelector, SCALE, At(-200, 32), {0, 0}, ToolCursor::Arrow},
      {tools.brushTool, SCALE, At(64, 32), {0, 0}, ToolCursor::Move},
      {tools.brushTool, SCALE, At(64, 64), {0, 0}, ToolCursor::Arrow},
      {tools.vertexTool, SCALE, At(64, 64), {3, -3}, ToolCursor::Move},
      {tools.vertexTool, SCALE, At(32, 64), {0, 2}, ToolCursor::Move},
      {tools.vertexTool, SCALE, At(32, 32), {0, 0}, ToolCursor::Arrow},
      {tools.primitiveTool, SCALE, At(0, 0), {0, 0}, ToolCursor::Cross},
  };
  for (const auto& [tool, mode, at, beside, cursor] : cases) {
    tools.Use(tool);
    tools.brushSelector.SetMode(map, mode);
    view.OnMouseMove({at.x + beside.x, at.y + beside.y}, 0, false);
    EXPECT_EQ(host.cursor, cursor) << tool.Name() << ' ' << at.x << ' ' << at.y;
  }
  tools.Use(tools.brushSelector);
  host.keys.control = true;
  view.OnMouseMove({At(64, 64).x + 4, At(64, 64).y - 4}, 0, false);
  EXPECT_EQ(host.cursor, ToolCursor::Arrow);
}

}  // namespace
}  // namespace ferrowand
