#include "views/tools/brush_selector.h"

#include "support/cases.h"
#include "views/tools/tool_fixture.h"

namespace ferrowand {
namespace {

class BrushSelectorTest : public ToolTest {
 protected:
  BrushSelectorTest() {
    tools.Use(tools.brushSelector);
    map.selection.Set({&cube});
  }

  // With the cursor in the middle of a handle, 4 pixels outside the box.
  Pixel Handle(int edgeu, int edgev) const {
    const Bounds box = cube.GetBounds();
    const PixelRect rect = view.transform.ToScreen(box.mins, box.maxs);
    const int x[]{rect.left - 4, (rect.left + rect.right) / 2, rect.right + 4};
    const int y[]{rect.bottom + 4, (rect.top + rect.bottom) / 2, rect.top - 4};
    return {x[edgeu + 1], y[edgev + 1]};
  }

  entity& cube = small.AddCuboid({0, 0, 0}, {64, 128, 32});
};

TEST_F(BrushSelectorTest, EveryHandleIsGrabbedInItsMiddleAtEveryPlaceOnTheScreen) {
  for (int shift = 0; shift < 16; ++shift) {
    view.transform.originu = static_cast<std::int16_t>(-800 + 4 * shift);
    view.transform.originv = static_cast<std::int16_t>(600 + 4 * shift);
    for (int u = -1; u <= 1; ++u) {
      for (int v = -1; v <= 1; ++v) {
        const GrabbedEdges grabbed = GrabAt(cube.GetBounds(), view.transform, Handle(u, v));
        EXPECT_EQ(grabbed, (GrabbedEdges{{u, v}})) << shift << ": " << u << " " << v;
      }
    }
    Pixel beside = Handle(1, 0);
    beside.y -= 200;
    EXPECT_FALSE(GrabAt(cube.GetBounds(), view.transform, beside).Any());
  }
}

TEST_F(BrushSelectorTest, ADragOfTheBoxMovesScalesTurnsAndSkewsAndUndoGivesItBack) {
  const std::string before = Text();
  constexpr HandleMode SCALE = HandleMode::Scale, SKEW = HandleMode::Skew;
  const Cases<HandleMode, Pixel, Pixel, const char*, Bounds> cases{
      {SCALE, {1, 0}, {130, 0}, "Scaling: ", {{0, 0, 0}, {128, 128, 32}}},
      {SCALE, {-1, -1}, {-64, -128}, "Scaling: ", {{-64, -128, 0}, {64, 128, 32}}},
      {SCALE, {0, 1}, {0, -300}, "Scaling: ", {{0, 0, 0}, {64, 64, 32}}},
      // From the handle at (80, 144) a quarter clockwise about (32, 64).
      {HandleMode::Rotate, {1, 1}, {112, 16}, "Rotating: ", {{-32, 32, 0}, {96, 96, 32}}},
      {SKEW, {0, 1}, {96, 0}, "Skewing: ", {{0, 0, 0}, {128, 128, 32}}},
      {SKEW, {0, -1}, {96, 0}, "Skewing: ", {{0, 0, 0}, {128, 128, 32}}},
      {SKEW, {1, 0}, {0, 128}, "Skewing: ", {{0, 0, 0}, {64, 192, 32}}},
  };
  for (const auto& [mode, handle, end, word, box] : cases) {
    map.selection.Set({&cube});
    tools.brushSelector.SetMode(map, mode);
    const Pixel press = Handle(handle.x, handle.y), to = At(end.x, end.y);
    view.OnMouseDown(press, BUTTON_LEFT, false, false);
    view.OnMouseMove(to, BUTTON_LEFT, false);
    view.OnMouseUp(to, BUTTON_LEFT);
    EXPECT_TRUE(Status().starts_with(word)) << Status();
    EXPECT_EQ(cube.GetBounds(), box) << word << handle.x << handle.y;
    EXPECT_EQ(cube.brush.getNumFaces(), 6);
    map.undo.Undo();
    EXPECT_EQ(Text(), before) << word;
    EXPECT_FALSE(map.undo.CanUndo()) << word;
  }
}

TEST_F(BrushSelectorTest, AClickBetweenTheSelectedOnesKeepsThemAndOneBesideDoesNot) {
  entity& other = small.AddCuboid({128, 0, 0}, {192, 128, 32});
  const Cases<int, int, std::size_t> clicks{
      {96, 64, 2}, {96, -60, 0}, {96, 188, 0}, {-60, 64, 0}, {252, 64, 0}};
  for (const Vec3& middle : {Vec3(-300, -300, 0), Vec3(400, -300, 0), Vec3(400, 400, 0)}) {
    view.CentreOn(middle);
    for (const auto& [u, v, left] : clicks) {
      map.selection.Set({&cube, &other});
      Click(u, v);
      EXPECT_EQ(map.selection.size(), left) << middle.x << ": " << u << " " << v;
    }
  }
}

TEST_F(BrushSelectorTest, ClicksOnTheSelectionGoThroughTheHandles) {
  Drag(32, 32, 96, 32);  // a click after a drag is one
  Drag(96, 32, 32, 32);
  for (const HandleMode mode :
       {HandleMode::Scale, HandleMode::Rotate, HandleMode::Skew, HandleMode::Scale}) {
    EXPECT_EQ(tools.brushSelector.Mode(), mode);
    Click(32, 64);
  }
  small.AddCuboid({-256, 0, 0}, {-128, 64, 64});
  const auto turn = [&] { tools.brushSelector.SetMode(map, HandleMode::Rotate); };
  turn();
  host.keys.control = true;
  Click(-400, -200);
  EXPECT_EQ(tools.brushSelector.Mode(), HandleMode::Rotate) << "nothing else is selected";
  host.keys.control = false;
  Click(-200, 32);
  EXPECT_EQ(tools.brushSelector.Mode(), HandleMode::Scale) << "a new selection starts over";
  turn();
  map.selection.Set({&cube});
  EXPECT_EQ(tools.brushSelector.Mode(), HandleMode::Scale) << "whoever made it";
}

}  // namespace
}  // namespace ferrowand
