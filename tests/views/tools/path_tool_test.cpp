#include "views/tools/path_tool.h"

#include "document/classes/special_classes.h"
#include "views/tools/tool_fixture.h"

namespace ferrowand {
namespace {

class PathToolTest : public ToolTest {
 protected:
  PathToolTest() { tools.Use(tools.pathTool); }

  void Finish(std::optional<std::string> name) {
    host.pathName = std::move(name);
    Press(0, 0, BUTTON_RIGHT);
    Release(0, 0, BUTTON_RIGHT);
  }
  // "p0 p0>p1 (1 2 3)" and so on, of all path corners in the order of the map.
  std::string Corners() const {
    std::string text;
    ForEachEntity(map, [&](const entity& e) {
      const char* classname = e.GetKey("classname");
      if (!classname || std::string(classname) != "path_corner") return;
      text += Format("%s %s>%s (%g %g %g)\n", e.GetKey("XMPentityname"), e.GetKey("targetname"),
                     e.GetKey("target"), e.Origin().x, e.Origin().y, e.Origin().z);
    });
    return text;
  }
};

TEST_F(PathToolTest, ALoopIsLaidInOneStepAsDeepAsAnotherViewLooks) {
  const std::string before = Text();
  FakeViewHost sideWindow;
  MapView side{map, sideWindow, list, options, tools.Current()};
  side.SetOrientation(Orientation::Side);
  side.CentreOn({0, 0, 96});
  Click(-64, 32);
  EXPECT_EQ(Status(), "Place corner: (-64, 32, 96)");
  side.OnMouseDown(side.transform.ToScreen({0, 128, 40}), BUTTON_LEFT, false, false);
  Click(0, 0);
  EXPECT_EQ(Text(), before) << "nothing until it is named";
  Finish("p");
  EXPECT_EQ(Corners(), "p0 p0>p1 (-64 32 96)\np1 p1>p2 (0 128 40)\np2 p2>p0 (0 0 96)\n");
  EXPECT_EQ(Selected().size(), 3u);
  map.undo.Undo();
  EXPECT_EQ(Text(), before);
  Click(8, 8);
  Finish("p");
  EXPECT_EQ(Corners(), "p0 p0>p0 (8 8 96)\n") << "one corner leads to itself";
}

TEST_F(PathToolTest, CornersAreGivenUpWithoutANameByEscapeAndByAnotherTool) {
  const std::string before = Text();
  const std::function<void()> ways[] = {[&] { Finish(std::nullopt); }, [&] { Finish(""); },
                                        [&] { view.OnCharacter('\x1b', false); },
                                        [&] { tools.Use(tools.pathTool); }};
  for (const auto& giveUp : ways) {
    Click(0, 0);
    MoveTo(64, 64, 0);
    EXPECT_TRUE(tools.pathTool.HasPreview());
    giveUp();
    EXPECT_FALSE(tools.pathTool.HasPreview());
    Finish("p");
    EXPECT_EQ(Text(), before);
  }
}

}  // namespace
}  // namespace ferrowand
