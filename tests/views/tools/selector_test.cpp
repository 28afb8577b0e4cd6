#include "views/tools/selector.h"

#include <algorithm>

#include "support/cases.h"
#include "views/tools/tool_fixture.h"

namespace ferrowand {
namespace {

using Objects = std::vector<entity*>;

class SelectorTest : public ToolTest {
 protected:
  entity& AddLight(const char* origin) {
    return small.Add({{"classname", "light"}, {"origin", origin}});
  }
};

TEST_F(SelectorTest, AClickSelectsAndCtrlAddsAndNeitherChangesWhatIsSelected) {
  entity& left = small.AddCuboid({-256, 0, 0}, {-128, 64, 64});
  entity& right = small.AddCuboid({128, 0, 0}, {256, 64, 64});
  told.changes.clear();
  Click(-200, 32);
  EXPECT_EQ(Selected(), (Objects{&left}));
  Click(200, 32);
  EXPECT_EQ(Selected(), (Objects{&right}));
  host.keys.control = true;
  Click(-200, 32);
  EXPECT_EQ(Selected(), (Objects{&right, &left}));
  for (const bool control : {false, true}) {
    host.keys.control = control;
    Click(-200, 32);
    EXPECT_EQ(Selected(), (Objects{&right, &left}));
  }
  EXPECT_EQ(told.changes.size(), 3u);
}

TEST_F(SelectorTest, EmptySpaceStartsARectangleAndWithCtrlADragOfTheSelection) {
  entity& light = AddLight("0 0 0");
  map.selection.Set({&light});
  Press(200, 200);
  EXPECT_TRUE(map.selection.empty());
  EXPECT_EQ(tools.Current()->Name(), "Rectangle Selector");
  EXPECT_TRUE(host.captured);
  MoveTo(-200, -200);
  Release(-200, -200);
  EXPECT_EQ(tools.Current(), &tools.entitySelector);
  EXPECT_FALSE(host.captured);
  EXPECT_EQ(Selected(), (Objects{&light}));

  host.keys.control = true;
  Press(200, 200);
  EXPECT_EQ(tools.Current(), &tools.entitySelector);
  host.keys.control = false;
  MoveTo(264, 200);
  Release(264, 200);
  EXPECT_EQ(Selected(), (Objects{&light}));
  EXPECT_EQ(light.Origin(), Vec3(64, 0, 0));
}

TEST_F(SelectorTest, ADragMovesByTheGridAndIsOneStepToUndo) {
  entity& light = AddLight("5 7 9");
  entity& cube = small.AddCuboid({128, 0, 0}, {192, 64, 64});
  map.selection.Set({&light, &cube});
  const std::string before = Text();
  const Cases<bool, bool, Vec3, const char*> cases{
      {false, true, {77, -61, 9}, "Translating: (72, -68)"},
      {true, false, {69, -57, 9}, "Translating: (64, -64)"},
      {true, true, {64, -64, 9}, "Translating: (59, -71)"}};
  for (const auto& [snap, shift, origin, status] : cases) {
    map.SetOptionBits(snap ? MAP_GRID | MAP_SNAP : MAP_GRID);
    host.keys.shift = shift;
    told.changes.clear();
    Drag(8, 8, 80, -60);
    EXPECT_EQ(Status(), status);
    EXPECT_EQ(light.Origin(), origin);
    EXPECT_EQ(cube.GetBounds().mins, Vec3(128, 0, 0) + origin - Vec3(5, 7, 9));
    EXPECT_EQ(told.changes.size(), 1u);
    EXPECT_EQ(map.undo.NewestName(), "Move: 1 brush and 1 entity");
    EXPECT_TRUE(map.modified());
    map.undo.Undo();
    EXPECT_EQ(Text(), before);
  }
}

TEST_F(SelectorTest, HoveringTellsWhatItIs) {
  AddLight("0 0 0").SetKey("XMPentityname", "lamp");
  small.AddCuboid({128, 0, 0}, {192, 64, 64});
  MoveTo(0, 0, 0);
  EXPECT_EQ(Status(), "lamp, a unknown");
  EXPECT_EQ(host.cursor, ToolCursor::Entity);
  MoveTo(160, 32, 0);
  EXPECT_EQ(Status(), "Unnamed, a brush");
  MoveTo(-200, 0, 0);
  EXPECT_EQ(host.cursor, ToolCursor::Arrow);
}

TEST_F(SelectorTest, TheRightButtonPicksOpensThePopupAndEditsWhenTheMenuLeavesItsRelease) {
  entity& light = AddLight("0 0 0");
  entity& other = AddLight("128 0 0");
  const auto rightClick = [&](int u) {
    small.sink.messages.clear();
    Press(u, 0, BUTTON_RIGHT);
    Release(u, 0, BUTTON_RIGHT);
  };
  host.popupTakesRelease = true;
  rightClick(0);
  EXPECT_EQ(Selected(), (Objects{&light}));
  EXPECT_EQ(host.popups, (std::vector<Pixel>{At(0, 0)}));
  EXPECT_TRUE(host.edited.empty());
  host.popupTakesRelease = false;
  rightClick(0);
  EXPECT_EQ(host.edited, (Objects{&light}));

  map.selection.Set({&light, &other});
  rightClick(0);
  EXPECT_EQ(small.sink.OnlyText(), "Cannot edit multiple entities. Group then edit?");
  EXPECT_EQ(small.sink.messages[0].title, "Ferrowand asks");
  EXPECT_EQ(map.selection.size(), 2u);
  small.sink.answers = {Answer::Yes};
  rightClick(0);
  ASSERT_EQ(map.selection.size(), 1u);
  EXPECT_EQ(light.Parent(), map.selection[0]);
  rightClick(-200);
  EXPECT_EQ(small.sink.OnlyText(), "Cannot group with this tool");
  EXPECT_EQ(small.sink.messages[0].title, "Cannot continue");

  map.selection.Set({&light});
  tools.Use(tools.brushSelector);
  rightClick(-200);
  EXPECT_TRUE(map.selection.empty());
  EXPECT_EQ(host.popups.size(), 6u);
  EXPECT_TRUE(small.sink.messages.empty());
}

TEST_F(SelectorTest, ADoubleClickGoesDownThroughWhatLiesThere) {
  entity& top = small.AddCuboid({0, 0, 0}, {64, 64, 64});
  entity& middle = small.AddCuboid({0, 0, 0}, {128, 64, 32});
  entity& bottom = small.AddCuboid({0, 0, 0}, {128, 128, 16});
  Click(32, 32);
  const auto again = [&] { view.OnDoubleClick(At(32, 32), BUTTON_LEFT); };
  again();
  EXPECT_EQ(Selected(), (Objects{&middle}));
  again();
  EXPECT_EQ(Selected(), (Objects{&bottom}));
  again();
  EXPECT_EQ(Selected(), (Objects{&top}));
  options.smartSelection = 0;
  again();
  EXPECT_EQ(Selected(), (Objects{&top}));
}

TEST_F(SelectorTest, TheRectangleTakesWhatItTouchesOrOnlyWhatItHolds) {
  entity& inside = AddLight("0 0 0");
  entity& across = small.AddCuboid({100, 0, 0}, {300, 64, 64});
  AddLight("-300 0 0");
  Drag(-100, 100, 200, -100);
  EXPECT_EQ(Selected(), (Objects{&inside, &across}));
  tools.boxRule = BoxRule::Full;
  Drag(-100, 100, 200, -100);
  EXPECT_EQ(Selected(), (Objects{&inside}));
  Click(-200, 200);
  EXPECT_TRUE(map.selection.empty());

  // One corner stays in the world while the view is scrolled.
  Press(-100, 100);
  MoveTo(0, 0);
  view.ScrollBy(400, 0);
  MoveTo(200, -100);
  Release(200, -100);
  EXPECT_EQ(Selected(), (Objects{&inside}));
}

TEST_F(SelectorTest, SelectMultipleEntitiesAddsAndTakesAway) {
  entity& a = AddLight("0 0 0");
  entity& b = AddLight("128 0 0");
  entity& c = AddLight("256 0 0");
  tools.Use(tools.multiSelector);
  Click(0, 0);
  Click(128, 0);
  EXPECT_EQ(Selected(), (Objects{&a, &b}));
  Drag(240, 40, 300, -40);
  EXPECT_EQ(Selected(), (Objects{&a, &b, &c}));
  host.keys.control = true;
  Drag(100, 40, 300, -40);
  EXPECT_EQ(Selected(), (Objects{&a}));
  Click(0, 0);
  EXPECT_TRUE(map.selection.empty());
  Press(128, 0, BUTTON_RIGHT);
  EXPECT_EQ(host.popups.size(), 1u);
}

TEST_F(SelectorTest, ThePopupsClassBecomesTheSelectionsClass) {
  entity& cube = small.AddCuboid({0, 0, 0}, {64, 64, 64});
  map.selection.Set({&cube});
  const auto& classes = map.classSet->Classes();
  const auto embed = std::ranges::find_if(
      classes, [](const auto& entityClass) { return entityClass->classname == "embed"; });
  tools.entitySelector.PopupCommand(view, static_cast<unsigned>(embed - classes.begin()));
  ASSERT_EQ(map.selection.size(), 1u);
  EXPECT_EQ(map.selection[0]->getClass(), embed->get());
  EXPECT_EQ(cube.Parent(), map.selection[0]);
  const std::string before = Text();
  tools.entitySelector.PopupCommand(view, static_cast<unsigned>(classes.size()));
  EXPECT_EQ(Text(), before);
}

TEST_F(SelectorTest, TabGoesThroughTheToolsAndTellsTheirNamesInEveryView) {
  FakeViewHost otherWindow;
  const MapView other(map, otherWindow, list, options, tools.Current());
  for (const char* name :
       {"Brush Selector", "Brush Handle tool", "Select Multiple Entities", "Entity Selector"}) {
    tools.Next();
    EXPECT_EQ(tools.Current()->Name(), name);
    EXPECT_EQ(Status(), name);
    EXPECT_EQ(otherWindow.texts[ViewText::Message], name);
  }
  EXPECT_EQ(host.toolChanges, 4);
}

TEST_F(SelectorTest, WhatADragSaidGoesWhenNothingComesOfItAndTheSelectionIsNamed) {
  entity& light = AddLight("5 7 9");
  entity& cube = small.AddCuboid({128, 0, 0}, {192, 64, 64});
  map.selection.Set({&light, &cube});
  EXPECT_EQ(Status(), "1 brush and 1 entity");
  Press(8, 8);
  MoveTo(80, -60);
  MoveTo(8, 8);
  Release(8, 8);
  EXPECT_TRUE(Status().starts_with(tools.Current()->Name()));
  map.selection.Set({&cube});
  EXPECT_EQ(Status(), "Unnamed, a brush");
  map.selection.Clear();
  EXPECT_TRUE(Status().starts_with(tools.Current()->Name()));
}

}  // namespace
}  // namespace ferrowand
