#include "views/tools/brush_selector.h"

#include <cstdlib>

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

TEST_F(BrushSelectorTest, APressInsideMovesTheBoxOntoTheGrid) {
  entity& odd = small.AddCuboid({-251, 5, 0}, {-201, 45, 32});
  Drag(-220, 20, -120, 30);
  EXPECT_EQ(Status(), "Translating: (123, -5)");
  EXPECT_EQ(odd.GetBounds().mins, Vec3(-128, 0, 0));
}

TEST_F(BrushSelectorTest, ClicksOnTheSelectionGoThroughTheHandles) {
  for (const HandleMode mode :
       {HandleMode::Scale, HandleMode::Rotate, HandleMode::Skew, HandleMode::Scale}) {
    EXPECT_EQ(tools.brushSelector.Mode(), mode);
    Click(32, 64);
  }
  small.AddCuboid({-256, 0, 0}, {-128, 64, 64});
  Click(-200, 32);
  EXPECT_EQ(tools.brushSelector.Mode(), HandleMode::Scale) << "a new selection starts over";
}

TEST_F(BrushSelectorTest, AnyMouseWorkOnTheSampleMapCanBeUndoneToTheLetter) {
  const std::unique_ptr<Map> sample =
      LoadMap(small.data, std::string(FERROWAND_DATA) + "/maps/sample.xmp", 1000);
  ASSERT_NE(sample, nullptr);
  small.sink.messages.clear();
  const std::string before = ExtendedText(*sample);
  FakeViewHost secondWindow;
  MapView second(*sample, secondWindow, list, options, tools.Current());
  std::srand(2);
  for (const Orientation orientation : {Orientation::Top, Orientation::Front, Orientation::Side}) {
    second.SetOrientation(orientation);
    second.ZoomTo(sample->GetBounds());
    for (int i = 0; i < 100; ++i) {
      const auto pixel = [] { return Pixel{std::rand() % 400, std::rand() % 300}; };
      host.keys = {std::rand() % 4 == 0, std::rand() % 4 == 0};
      if (std::rand() % 4 == 0) tools.Next();
      if (std::rand() % 12 == 0) tools.Use(tools.vertexTool);
      tools.brushSelector.SetMode(*sample, static_cast<HandleMode>(std::rand() % 3));
      Pixel press = pixel();
      if (const Bounds box = SelectionBounds(*sample); std::rand() % 2 && !box.IsEmpty()) {
        const PixelRect rect = second.transform.ToScreen(box.mins, box.maxs);
        press = {std::rand() % 2 ? rect.left - 4 : rect.right + 4,
                 std::rand() % 2 ? rect.top - 4 : rect.bottom + 4};
      }
      second.OnMouseDown(press, BUTTON_LEFT, false, false);
      second.OnMouseMove(pixel(), BUTTON_LEFT, false);
      second.OnMouseUp(pixel(), BUTTON_LEFT);
    }
  }
  EXPECT_GT(sample->undo.StepCount(), 20u);
  while (sample->undo.CanUndo()) sample->undo.Undo();
  EXPECT_EQ(ExtendedText(*sample), before);
  EXPECT_TRUE(small.sink.messages.empty()) << small.sink.OnlyText();
}

}  // namespace
}  // namespace ferrowand
