#include "views/tools/primitive_tool.h"

#include "views/tools/tool_fixture.h"

namespace ferrowand {
namespace {

class PrimitiveToolTest : public ToolTest {
 protected:
  Bounds Made() { return map.selection.empty() ? Bounds() : map.selection[0]->GetBounds(); }
};

TEST_F(PrimitiveToolTest, TheBoxIsDrawnOnTheGridAndAsDeepAsTheLastSelection) {
  const std::string before = Text();
  tools.CreatePrimitive(PrimitiveKind::Cuboid);
  Drag(-50, 70, 100, -20);
  EXPECT_EQ(Made(), (Bounds{{-64, 0, 0}, {128, 64, 64}}));
  EXPECT_EQ(tools.Current(), &tools.brushSelector);
  EXPECT_EQ(map.selection.at(0)->brush.face(0).Name(), "wall");
  map.undo.Undo();
  EXPECT_EQ(Text(), before);

  entity& deep = small.AddCuboid({256, 0, -16}, {320, 64, 48});
  map.selection = {&deep};
  tools.CreatePrimitive(PrimitiveKind::Wedge);
  Drag(0, 0, 128, 128);
  EXPECT_EQ(Made(), (Bounds{{0, 0, -16}, {128, 128, 48}}));
  EXPECT_EQ(map.selection.at(0)->brush.getNumFaces(), 5);
}

TEST_F(PrimitiveToolTest, RoundOnesAskForTheirSides) {
  host.sides = 6;
  tools.CreatePrimitive(PrimitiveKind::Column);
  Drag(0, 0, 128, 128);
  ASSERT_EQ(map.selection.size(), 1u);
  EXPECT_EQ(map.selection[0]->brush.getNumFaces(), 8);
  host.sides.reset();
  tools.CreatePrimitive(PrimitiveKind::Sphere);
  EXPECT_EQ(tools.Current(), &tools.brushSelector);
}

TEST_F(PrimitiveToolTest, ABoxWithoutExtentAndTheRightButtonMakeNothing) {
  const std::string before = Text();
  tools.CreatePrimitive(PrimitiveKind::Cuboid);
  Drag(0, 0, 128, 4);
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(tools.Current(), &tools.primitiveTool);
  Press(0, 0, BUTTON_RIGHT);
  EXPECT_EQ(tools.Current(), &tools.brushSelector);
}

TEST_F(PrimitiveToolTest, AHiddenLayerIsAskedAboutFirst) {
  map.currentLayer->SetKey("XMPstate", "1");
  const std::string before = Text();
  tools.CreatePrimitive(PrimitiveKind::Cuboid);
  Drag(0, 0, 128, 128);
  ASSERT_EQ(small.sink.messages.size(), 1u);
  EXPECT_EQ(small.sink.messages[0].buttons, Buttons::YesNo);
  EXPECT_EQ(Text(), before);
}

}  // namespace
}  // namespace ferrowand
