#include "operations/groups.h"

#include "document/classes/class_set.h"
#include "document/classes/native_classes.h"
#include "operations/clipboard.h"
#include "operations/edit_fixture.h"
#include "operations/insert.h"
#include "operations/layers.h"
#include "operations/primitives.h"
#include "operations/templates.h"
#include "operations/visibility.h"

namespace ferrowand {
namespace {

class GroupsTest : public EditTest {
 protected:
  void SetUp() override {
    LoadShippedClasses();
    EditTest::SetUp();
  }
};

TEST_F(GroupsTest, AGroupHoldsItsMembersAndIsNothingToTheGame) {
  Pick({"p", "a"});
  const std::string before = Text();
  EXPECT_EQ(GroupSelection(*map), EditResult::Done);
  const entity& group = Get("group1");
  EXPECT_STREQ(group.GetKey("groupFather"), "1");
  EXPECT_STREQ(group.GetKey("classname"), "brush");
  EXPECT_EQ(Children("main"), (Names{"b", "group1"}));
  EXPECT_EQ(Children("group1"), (Names{"a", "p"}));
  EXPECT_EQ(map->selection, std::vector<entity*>{&Get("group1")});
  EXPECT_EQ(QuakeText(*map).find("groupFather"), std::string::npos);
  ExpectOneStep(before);
  const std::string grouped = Text();
  Pick({"b", "group1"});
  EXPECT_EQ(GroupSelection(*map), EditResult::Done);
  EXPECT_EQ(Children("group2"), (Names{"b", "group1"}));
  EXPECT_EQ(UngroupSelection(*map), EditResult::Done);
  EXPECT_EQ(Text(), grouped);
  EXPECT_EQ(UngroupSelection(*map), EditResult::Done);
  EXPECT_EQ(Children("main"), (Names{"b", "a", "p"}));
  EXPECT_EQ(map->selection.size(), 3u);
  EXPECT_EQ(UngroupSelection(*map), EditResult::NotAGroup);
}

TEST_F(GroupsTest, ABrushEntityIsMadeOfBrushesOrOfAGroup) {
  const EntityClass& door = map->classSet->FindClass("func_door");
  Pick({"a", "b"});
  const std::string before = Text();
  EXPECT_EQ(GroupSelectionAs(*map, door), EditResult::Done);
  EXPECT_EQ(map->selection.front()->getClass(), &door);
  const std::string direct = QuakeText(*map);
  ExpectOneStep(before);
  map->undo.Undo();
  Pick({"a", "b"});
  GroupSelection(*map);
  EXPECT_EQ(GroupSelectionAs(*map, door), EditResult::Done);
  std::string named = QuakeText(*map);
  const std::string comment = "//group1\n";
  named.erase(named.find(comment), comment.size());
  EXPECT_EQ(named, direct);
  EXPECT_EQ(Get("group1").GetKey("groupFather"), nullptr);
  map->undo.Undo();
  const EntityClass& light = map->classSet->FindClass("light");
  EXPECT_EQ(GroupSelectionAs(*map, light), EditResult::Done);
  EXPECT_EQ(Get("group1").flags(), light.tildeValue);
  EXPECT_NE(light.tildeValue, 0);
  // A file may tell the group's keys in any order.
  Open("{\"groupFather\" \"1\" \"XMPentityname\" \"g\"" + Box("a", 0, 0, 0) + "}");
  Pick({"g"});
  EXPECT_EQ(GroupSelectionAs(*map, door), EditResult::Done);
  EXPECT_EQ(Get("g").GetKey("groupFather"), nullptr);
}

TEST_F(GroupsTest, WhatIsNewJoinsTheLeadingGroupUntilNoneLeads) {
  const EntityClass& light = map->classSet->FindClass("light");
  Pick({"a"});
  EXPECT_EQ(SetAsLeading(*map), EditResult::NotAGroup);
  GroupSelection(*map);
  EXPECT_EQ(SetAsLeading(*map), EditResult::Done);
  InsertEntity(*map, light, {8, 8, 8});
  EXPECT_EQ(map->selection.front()->flags(), light.tildeValue);
  EXPECT_EQ(Children("group1").size(), 2u);
  map->selection.Clear();
  EXPECT_EQ(SetAsLeading(*map), EditResult::Done);
  EXPECT_EQ(map->leadingGroup(), nullptr);
  InsertEntity(*map, light, {8, 8, 8});
  EXPECT_EQ(Children("group1").size(), 2u);
  Pick({"group1"});
  SetAsLeading(*map);
  SetAsLeading(*map);
  EXPECT_EQ(map->leadingGroup(), nullptr);
  SetAsLeading(*map);
  DeleteSelection(*map);
  EXPECT_EQ(map->leadingGroup(), nullptr);
}

TEST_F(GroupsTest, GroupsEndWhereAFileCouldNotBeReadBack) {
  Pick({"a"});
  int depth = 0;
  while (GroupSelection(*map) == EditResult::Done && depth < 2 * MAXDEPTH) ++depth;
  EXPECT_EQ(GroupSelection(*map), EditResult::TooDeep);
  SetAsLeading(*map);
  EXPECT_EQ(PasteText(*map, SelectionText(*map)), EditResult::TooDeep);
  const auto read = ReadText(Text());
  EXPECT_EQ(ExtendedText(*read), Text());
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(GroupsTest, AGroupThatLosesItsLastMemberGoes) {
  Pick({"a", "b"});
  GroupSelection(*map);
  GroupSelection(*map);
  const std::string before = Text();
  Pick({"a"});
  DeleteSelection(*map);
  EXPECT_EQ(Children("group1"), Names{"b"});
  Pick({"b"});
  MoveSelectionToLayer(*map, Get("main"));
  EXPECT_EQ(Children("main"), (Names{"p", "b"}));
  map->undo.Undo();
  map->undo.Undo();
  EXPECT_EQ(Text(), before);
}

TEST_F(GroupsTest, HiddenObjectsComeBackAsTheyWereOnce) {
  Pick({"a", "p"});
  HideSelection(*map);
  EXPECT_FALSE(Get("p").IsVisible());
  EXPECT_TRUE(map->selection.empty());
  for (int i = 0; i < 2; ++i) {
    ShowHidden(*map);
    EXPECT_STREQ(Get("p").GetKey("classname"), "thing");
    EXPECT_EQ(map->undo.StepCount(), 2u);
  }
}

TEST_F(GroupsTest, LayersComeGoAndTakeObjects) {
  const std::string before = Text();
  entity& layer = InsertLayer(*map, "say \"new\"");
  EXPECT_STREQ(layer.GetKey("XMPentityname"), "say 'new'");
  ExpectOneStep(before);
  MakeLayerCurrent(*map, Get("main"));
  Pick({"a"});
  MoveSelectionToLayer(*map, layer);
  EXPECT_EQ(map->selection.size(), 1u);
  SetLayerState(*map, layer, false, true);
  EXPECT_TRUE(map->selection.empty());
  EXPECT_FALSE(IsReachable(Get("a")));
  RenameLayer(*map, layer, "other");
  EXPECT_EQ(Children("other"), Names{"a"});
  const std::string named = Text();
  RenameLayer(*map, layer, "other");
  RenameLayer(*map, layer, "");
  DescribeLayer(*map, layer, "other", LayerColour(layer));
  EXPECT_EQ(Text(), named);
  EXPECT_EQ(RemoveLayer(*map, layer), EditResult::Done);
  EXPECT_EQ(Children("main"), (Names{"b", "p", "a"}));
  EXPECT_EQ(RemoveLayer(*map, Get("hidden")), EditResult::Done);
  EXPECT_EQ(RemoveLayer(*map, Get("locked")), EditResult::Done);
  EXPECT_EQ(RemoveLayer(*map, Get("main")), EditResult::LastLayer);
  EXPECT_STREQ(InsertLayer(*map, "").GetKey("XMPentityname"), "layer1");
  while (map->undo.CanUndo()) map->undo.Undo();
  EXPECT_EQ(Text(), before);
}

TEST_F(GroupsTest, UndoMakesTheLayerCurrentAgainThatWasUnlessTheUserHasChosenOne) {
  entity& hidden = Get("hidden");
  MakeLayerCurrent(*map, hidden);
  entity& added = InsertLayer(*map, "new");
  EXPECT_EQ(map->currentLayer(), &added);
  map->undo.Undo();
  EXPECT_EQ(map->currentLayer(), &hidden);
  map->undo.Redo();
  EXPECT_EQ(map->currentLayer(), &added);
  RemoveLayer(*map, added);
  EXPECT_EQ(map->currentLayer(), &Get("main"));
  map->undo.Undo();
  EXPECT_EQ(map->currentLayer(), &added);
  MakeLayerCurrent(*map, hidden);
  map->undo.Redo();
  map->undo.Undo();
  EXPECT_EQ(map->currentLayer(), &hidden);
}

TEST_F(GroupsTest, KeysOfALayerAreFoundInAnyCaseAndKeepWhatTheyDoNotMean) {
  map = ReadText(
      "{\"classname\" \"worldspawn\"{\"classname\" \"layer\" \"XMPentityname\" \"odd\" "
      "\"xmpSTATE\" \"7\" \"xmpcolourr\" \"0.25\"}}");
  entity& layer = Get("odd");
  SetLayerState(*map, layer, false, true);
  EXPECT_STREQ(layer.GetKey("xmpstate"), "6");
  for (int component = 0; component < 256; ++component) {
    const auto part = static_cast<std::uint8_t>(component);
    DescribeLayer(*map, layer, "odd", {part, 255, 0});
    EXPECT_EQ(LayerColour(layer), (Colour{part, 255, 0}));
  }
  EXPECT_EQ(LayersOf(*map), std::vector<entity*>{&layer});
}

TEST_F(GroupsTest, ATemplateStandsWhereItWasMade) {
  Pick({"a", "b"});
  const std::string before = Text();
  const Bounds bounds = SelectionBounds(*map);
  EXPECT_EQ(MakeTemplate(*map, "\"T\"", {96, 32, 0}), EditResult::Done);
  EXPECT_EQ(TemplateNames(*map), Names{"'T'"});
  EXPECT_EQ(SelectionBounds(*map), bounds);
  EXPECT_FALSE(Get("'T'").IsVisible());
  ExpectOneStep(before);
  InsertInstance(*map, {"\"T\"", 90, {2, 1, 1}}, {0, 0, 512});
  EXPECT_EQ(map->selection.front()->GetBounds(), (Bounds{{-32, -192, 512}, {32, 192, 576}}));
  InsertEmbed(*map, "a\"b.xmp", {{-8, -16, -24}, {8, 16, 24}}, {100, 0, 0});
  EXPECT_EQ(map->selection.front()->GetBounds(), (Bounds{{92, -16, -24}, {108, 16, 24}}));
  EXPECT_STREQ(map->selection.front()->GetKey("XMPfilename"), "a'b.xmp");
}

TEST_F(GroupsTest, WhatIsNewInAHiddenOrDisabledLayerIsAskedAbout) {
  using Add = EditResult (*)(Map&);
  for (const Add add : std::initializer_list<Add>{
           [](Map& m) {
             const Primitive cuboid{PrimitiveKind::Cuboid, {{8, 8, 8}, {0, 0, 0}}, 2, 0};
             return AddPrimitive(m, cuboid, "stone") ? EditResult::Done : EditResult::Declined;
           },
           [](Map& m) { return InsertEntity(m, m.classSet->FindClass("light"), Vec3()); },
           [](Map& m) { return InsertCopy(m, *m.currentLayer()->getEntityList()[2], Vec3()); },
           [](Map& m) {
             return InsertInstance(m, InstanceSettings{"T", 0, Vec3(1, 1, 1)}, Vec3());
           },
           [](Map& m) {
             return InsertEmbed(m, "a.xmp", {{-8, -8, -8}, {8, 8, 8}}, Vec3());
           },
           [](Map& m) { return PasteText(m, Cuboid(0, 0, 0, 8, 8, 8)); }}) {
    for (const char* state : {"1", "2"}) {
      SetUp();
      recorder.messages.clear();
      EXPECT_EQ(add(*map), EditResult::Done);
      EXPECT_TRUE(recorder.messages.empty());
      EXPECT_EQ(map->selection, std::vector{Get("main").getEntityList().back().get()});
      Get("main").SetKey("XMPstate", state);
      const std::string before = Text();
      EXPECT_EQ(add(*map), EditResult::Declined);
      EXPECT_EQ(recorder.OnlyText(), "The current layer is hidden or disabled. Add the object?");
      EXPECT_EQ(Text(), before);
      recorder.answers = {Answer::Yes};
      EXPECT_EQ(add(*map), EditResult::Done);
      EXPECT_EQ(map->undo.StepCount(), 2u);
    }
  }
  EXPECT_EQ(InsertInstance(*map, {"T", 0, {1, 0, 1}}, {}), EditResult::Flattens);
}

}  // namespace
}  // namespace ferrowand
