#include "views/tools/primitive_tool.h"

#include "support/cases.h"
#include "views/tools/tool_fixture.h"

namespace ferrowand {
namespace {

using PrimitiveToolTest = ToolTest;

TEST_F(PrimitiveToolTest, TheBoxIsDrawnOnTheGridAndAsDeepAsTheLastSelection) {
  entity& deep = small.AddCuboid({256, 0, -16}, {320, 64, 48});
  const std::string before = Text();
  const Cases<PrimitiveKind, entity*, Pixel, Pixel, Bounds, int> cases{
      {PrimitiveKind::Cuboid, nullptr, {-50, 70}, {100, -20}, {{-64, 0, 0}, {128, 64, 64}}, 6},
      {PrimitiveKind::Wedge, &deep, {0, 0}, {128, 128}, {{0, 0, -16}, {128, 128, 48}}, 5},
      {PrimitiveKind::Column, nullptr, {0, 0}, {128, 128}, {{0, 0, -16}, {128, 128, 48}}, 6},
  };
  host.sides = 4;
  for (const auto& [kind, selected, from, to, made, faces] : cases) {
    map.selection.Clear();
    if (selected) map.selection.Set({selected});
    map.selection.Clear();
    tools.CreatePrimitive(kind);
    Drag(from.x, from.y, to.x, to.y);
    EXPECT_EQ(tools.Current(), &tools.brushSelector);
    ASSERT_EQ(map.selection.size(), 1u);
    EXPECT_EQ(map.selection[0]->GetBounds(), made);
    EXPECT_EQ(map.selection[0]->brush.getNumFaces(), faces);
    EXPECT_EQ(map.selection[0]->brush.face(0).Name(), "wall");
    map.undo.Undo();
    EXPECT_EQ(Text(), before);
  }
}

TEST_F(PrimitiveToolTest, ABoxWithoutExtentARefusedQuestionAndTheRightButtonMakeNothing) {
  host.sides.reset();
  tools.CreatePrimitive(PrimitiveKind::Sphere);
  EXPECT_EQ(tools.Current(), &tools.entitySelector);
  map.currentLayer()->SetKey("XMPstate", "1");
  const std::string before = Text();
  tools.CreatePrimitive(PrimitiveKind::Cuboid);
  Drag(0, 0, 128, 4);
  EXPECT_TRUE(small.sink.messages.empty());
  Drag(0, 0, 128, 128);
  ASSERT_EQ(small.sink.messages.size(), 1u) << "the layer is hidden";
  EXPECT_EQ(small.sink.messages[0].buttons, Buttons::YesNo);
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(tools.Current(), &tools.primitiveTool);
  Press(0, 0, BUTTON_RIGHT);
  EXPECT_EQ(tools.Current(), &tools.brushSelector);
}

}  // namespace
}  // namespace ferrowand
