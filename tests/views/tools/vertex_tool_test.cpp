#include "views/tools/vertex_tool.h"

#include <algorithm>
#include <cstdlib>

#include "support/canvas_recorder.h"
#include "support/cases.h"
#include "views/tools/brush_reshape.h"
#include "views/tools/tool_fixture.h"

namespace ferrowand {
namespace {

class ReshapeTest : public ToolTest {
 protected:
  ReshapeTest() {
    map.SetOptionBits(MAP_GRID);
    map.selection.Set({&cube});
  }

  entity& cube = small.AddCuboid({0, 0, 0}, {64, 64, 64});
};

TEST_F(ReshapeTest, MovedCornersMakeTheFacesTheyNeedOrAreRefused) {
  const Vec3 top(64, 64, 64);
  // The corners, how they move, and how many faces come of it: 0 when it is refused.
  const Cases<const char*, std::vector<Vec3>, Vec3, int> cases{
      {"a corner outwards", {top}, {16, 16, 16}, 9},
      {"a corner inwards", {top}, {-16, -16, -16}, 9},
      {"along an edge", {top}, {0, 0, 16}, 7},
      {"an edge", {{64, 0, 64}, top}, {16, 0, 0}, 6},
      {"a whole face", {{0, 0, 64}, {64, 0, 64}, {0, 64, 64}, top}, {8, 8, 32}, 6},
      {"into the solid, beyond the others", {top}, {-50, -50, -50}, 0},
      {"through the opposite side", {top}, {-128, 0, 0}, 0},
      {"onto another corner", {top}, {0, 0, -64}, 0},
      {"a face onto the opposite one", {{0, 0, 64}, {64, 0, 64}, {0, 64, 64}, top}, {0, 0, -64}, 0},
      {"out of the world", {top}, {33000, 0, 0}, 0},
  };
  for (const auto& [what, corners, by, faces] : cases) {
    const auto result = MoveCorners(cube.brush, corners, by, small.reporter);
    ASSERT_EQ(result.has_value(), faces != 0) << what;
    if (!result) continue;
    EXPECT_EQ(result->getNumFaces(), faces) << what;
    const std::vector<Vec3> made = CornersOf(*result);
    EXPECT_EQ(made.size(), 8u) << what;
    for (const Vec3& from : corners) {
      const Vec3 to = from + by;
      const auto isThere = [&](const Vec3& corner) { return IsSameCorner(corner, to); };
      EXPECT_TRUE(std::ranges::any_of(made, isThere)) << what;
    }
  }
  EXPECT_TRUE(small.sink.messages.empty());
}

TEST_F(ReshapeTest, CornersAndFacesAreDraggedWithAllThatLiesThere) {
  entity& neighbour = small.AddCuboid({64, 0, 0}, {128, 64, 64});
  const std::string before = Text();
  Tool &corner = tools.vertexTool, &face = tools.brushTool;
  const Vec3 still(128, 64, 64);
  const Cases<Tool&, bool, bool, Pixel, Pixel, Pixel, Vec3, Vec3> cases{
      {corner, false, false, {64, 64}, {96, 80}, {32, 16}, {96, 80, 64}, still},
      {face, false, false, {64, 32}, {100, 60}, {36, 0}, {100, 64, 64}, still},
      // The corner itself goes onto the grid, which is one of 128 units.
      {corner, false, true, {64, 64}, {100, 90}, {64, 64}, {128, 128, 64}, still},
      {corner, true, false, {64, 64}, {64, 80}, {0, 16}, {64, 80, 64}, {128, 80, 64}},
      {face, true, false, {32, 64}, {0, 80}, {0, 16}, {64, 80, 64}, still},
  };
  view.gridu = view.gridv = 7;
  for (const auto& [tool, both, snap, from, to, by, high, neighbourHigh] : cases) {
    tools.Use(tool);
    map.selection.Set({&cube});
    if (both) map.selection.Add(neighbour);
    map.SetOptionBits(snap ? MAP_GRID | MAP_SNAP : MAP_GRID);
    Drag(from.x, from.y, to.x, to.y);
    EXPECT_EQ(Status(), Format("Translating: (%i, %i)", by.x, by.y));
    EXPECT_EQ(cube.GetBounds(), (Bounds{{0, 0, 0}, high}));
    EXPECT_EQ(neighbour.GetBounds().maxs, neighbourHigh);
    EXPECT_EQ(cube.brush.getNumFaces(), 6);
    map.undo.Undo();
    EXPECT_EQ(Text(), before);
    EXPECT_FALSE(map.undo.CanUndo());
  }
}

TEST_F(ReshapeTest, EdgesThatLieOverEachOtherAreSeenWhileTheyAreDragged) {
  tools.Use(tools.vertexTool);
  map.selection.Set({&cube, &small.AddCuboid({64, 0, 0}, {128, 64, 64})});
  const auto before = FreshPaint();
  Press(64, 64);
  MoveTo(96, 80);
  // Of either brush between a corner that stays and the one that is dragged.
  for (const Pixel on : {At(48, 72), At(112, 72)}) {
    const auto at = static_cast<std::size_t>(on.y * window.area.width + on.x);
    EXPECT_NE(FreshPaint()[at], before[at]) << on.x;
  }
}

TEST_F(ReshapeTest, AnEdgeIsPickedByItsEndsAndManyByARectangle) {
  tools.Use(tools.vertexTool);
  view.SetOrientation(Orientation::Front);
  Drag(32, 64, 32, 96);
  EXPECT_EQ(tools.vertexTool.Picked().size(), 2u);
  EXPECT_EQ(Status(), "Translating: (0, 32)");
  EXPECT_EQ(cube.GetBounds().maxs.z, 96);

  view.SetOrientation(Orientation::Top);
  Drag(-40, 100, 20, -40);
  EXPECT_EQ(tools.vertexTool.Picked().size(), 4u);
  EXPECT_TRUE(view.OnCharacter('i', false));
  EXPECT_EQ(tools.vertexTool.Picked().size(), 4u);
  EXPECT_TRUE(view.OnCharacter('L', false));
  EXPECT_EQ(tools.vertexTool.Picked().size(), 8u);
  Drag(0, 0, 32, 0);
  EXPECT_EQ(cube.GetBounds().mins, Vec3(32, 0, 0));
}

TEST_F(ReshapeTest, WhatCannotBeIsShownInDashesAndRefused) {
  const Cases<Tool&, Pixel, Pixel, Pixel> cases{{tools.vertexTool, {64, 64}, {80, 80}, {10, 10}},
                                                {tools.brushTool, {64, 32}, {100, 32}, {-80, 32}}};
  const std::string before = Text();
  const auto lines = [&] {
    CanvasRecorder canvas;
    tools.Current()->DrawOverlay(view, canvas);
    std::vector<PixelLine> found;
    for (const auto& call : canvas.Of(CanvasRecorder::Kind::Polyline)) {
      if (call.points.size() == 2) found.push_back({call.points[0], call.points[1]});
    }
    return std::pair{found, canvas.LinesIn({{255, 255, 255}})};
  };
  for (const auto& [tool, grip, sound, broken] : cases) {
    tools.Use(tool);
    Press(grip.x, grip.y);
    MoveTo(sound.x, sound.y);
    EXPECT_TRUE(lines().second.empty());
    EXPECT_EQ(host.cursor, ToolCursor::Move);
    MoveTo(broken.x, broken.y);
    EXPECT_EQ(host.cursor, ToolCursor::Refused);
    const auto [whole, dashes] = lines();
    EXPECT_EQ(whole.size(), 1u) << "only from the press to the cursor";
    EXPECT_TRUE(std::ranges::any_of(dashes, [&, x = At(broken.x, 0).x](const PixelLine& dash) {
      return std::abs(dash.from.x - x) <= 4;
    })) << "the corners are where the cursor is";
    EXPECT_EQ(Status(), "The brush would not be convex or would lose a face");
    Release(broken.x, broken.y);
    EXPECT_EQ(Status(), "The brush would not be convex or would lose a face");
    EXPECT_EQ(Text(), before);
    EXPECT_FALSE(map.undo.CanUndo());
  }
  tools.vertexTool.Group(view);
  EXPECT_EQ(small.sink.OnlyText(), "Cannot group with this tool");
}

TEST_F(ReshapeTest, TheRightButtonOpensThePopupOfTheMode) {
  tools.Use(tools.vertexTool);
  Press(200, 200, BUTTON_RIGHT);
  EXPECT_EQ(host.popups.size(), 1u);
  EXPECT_EQ(host.lastPopup, ToolPopup::TouchUp);
  tools.vertexTool.PopupCommand(view, 0);
  EXPECT_EQ(tools.vertexTool.Picked().size(), 8u);
  tools.vertexTool.PopupCommand(view, 1);
  EXPECT_TRUE(tools.vertexTool.Picked().empty());
  tools.vertexTool.PopupCommand(view, 2);
  EXPECT_EQ(tools.Current(), &tools.brushSelector);
}

TEST_F(ReshapeTest, CornersAreForgottenWithTheSelection) {
  for (Tool* tool :
       {static_cast<Tool*>(&tools.vertexTool), static_cast<Tool*>(&tools.entitySelector)}) {
    map.selection.Set({&cube});
    tools.vertexTool.PickAll(map);
    tools.Use(*tool);
    map.selection.Set({&cube});
    EXPECT_EQ(tools.vertexTool.Picked().size(), 8u);
    map.selection.Clear();
    EXPECT_TRUE(tools.vertexTool.Picked().empty()) << tool->Name();
  }
}

TEST(CornerSetTest, WhatLiesNearIsThereAlsoAcrossTheSidesOfItsCells) {
  CornerSet set;
  for (int i = 0; i < 64; ++i) {
    const float at = 0.5f + static_cast<float>(i);
    EXPECT_TRUE(set.Add({at - 0.03f, at, at + 0.03f}));
    EXPECT_FALSE(set.Add({at + 0.03f, at + 0.02f, at}));
    EXPECT_TRUE(set.Contains({at, at - 0.02f, at - 0.01f}));
    EXPECT_FALSE(set.Contains({at, at - 0.2f, at}));
  }
}

TEST_F(ReshapeTest, AClickBesideTheHandlesPicksAnotherBrush) {
  entity& other = small.AddCuboid({-200, 0, 0}, {-100, 64, 64});
  for (Tool* tool : {static_cast<Tool*>(&tools.brushTool), static_cast<Tool*>(&tools.vertexTool)}) {
    tools.Use(*tool);
    map.selection.Set({&cube});
    Click(-150, 20);
    EXPECT_EQ(Selected(), (std::vector<entity*>{&other})) << tool->Name();
  }
}

}  // namespace
}  // namespace ferrowand
