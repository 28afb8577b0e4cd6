// What the game cannot read is not made: blocks within blocks, a second world.
#include "operations/blocks.h"

#include "document/classes/class_set.h"
#include "document/edit_step.h"
#include "operations/class_change.h"
#include "operations/clipboard.h"
#include "operations/edit_fixture.h"
#include "operations/entity_keys.h"
#include "operations/groups.h"
#include "operations/insert.h"
#include "operations/layers.h"
#include "operations/templates.h"
#include "operations/transform_selection.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

class BlocksTest : public EditTest {
 protected:
  void SetUp() override {
    LoadShippedClasses();
    EditTest::SetUp();
  }
  const EntityClass& Class(const char* name) { return map->classSet->FindClass(name); }
  void MakeDoor(std::initializer_list<const char*> names) {
    Pick(names);
    ASSERT_EQ(GroupSelectionAs(*map, Class("func_door")), EditResult::Done);
    map->selection.front()->SetKey("XMPentityname", "door");
  }
};

TEST_F(BlocksTest, WhatIsABlockOfItsOwnComesToStandBesideADoor) {
  const Cases<const char*, void (*)(Map&)> cases{
      {"inserted", [](Map& m) { InsertEntity(m, m.classSet->FindClass("light"), {}); }},
      {"copied", [](Map& m) { InsertCopy(m, *m.selection.front(), {}); }},
      {"pasted", [](Map& m) { PasteText(m, SelectionText(m)); }},
      {"duplicated", [](Map& m) { DuplicateSelection(m, Vec3(8, 8, 8), {}); }},
      {"grouped", [](Map& m) { GroupSelectionAs(m, m.classSet->FindClass("func_wall")); }},
  };
  for (const auto& [how, give] : cases) {
    SetUp();
    MakeDoor({"a", "b"});
    SetAsLeading(*map);
    Pick({"p", "b"});
    const std::string before = Text();
    give(*map);
    EXPECT_TRUE(IsPlayable(*map)) << how;
    for (const EntityPtr& child : Get("door").getEntityList())
      EXPECT_FALSE(HoldsBlock(*child)) << how;
    ExpectOneStep(before);
  }
}

TEST_F(BlocksTest, ADoorIsMadeOfTheBrushesAmongWhatIsSelected) {
  Pick({"a", "p"});
  GroupSelection(*map);
  map->selection.front()->SetKey("XMPentityname", "pair");
  Pick({"pair", "b"});
  MakeDoor({"pair", "b"});
  EXPECT_EQ(Children("main"), (Names{"door", "p"}));
  EXPECT_EQ(Children("door"), (Names{"b", "pair"}));
  EXPECT_TRUE(IsPlayable(*map));
  Pick({"p"});
  GroupSelection(*map);
  const std::string before = Text();
  EXPECT_EQ(GroupSelectionAs(*map, Class("func_door")), EditResult::NoBrushes);
  EXPECT_EQ(SetClassOfSelection(*map, Class("func_door")), EditResult::NoBrushes);
  EXPECT_EQ(Text(), before);
}

TEST_F(BlocksTest, WhatAFileNestedStaysWhenOnlyItsKeysChange) {
  Open("{\"classname\" \"func_door\" \"XMPentityname\" \"door\"" +
       Point("p", "\"origin\" \"0 0 128\"") + "}");
  Pick({"door"});
  EXPECT_EQ(SetKeyOf(*map, SelectedRoots(*map), "speed", "9"), EditResult::Done);
  EXPECT_EQ(Children("door"), Names{"p"});
  EXPECT_TRUE(IsPlayable(*map)) << "it is written behind its door";
}

TEST_F(BlocksTest, NoObjectIsMadeOfAClassThatHoldsObjects) {
  const std::string before = Text();
  for (const auto& [name, refusal] :
       Cases<const char*, EditResult>{{"worldspawn", EditResult::SecondWorld},
                                      {"layer", EditResult::EditorsOwn},
                                      {"hidden", EditResult::EditorsOwn},
                                      {"templateClass", EditResult::EditorsOwn},
                                      {"templateInstance", EditResult::EditorsOwn}}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(InsertEntity(*map, Class(name), {}), refusal);
    Pick({"p", "a"});
    EXPECT_EQ(GroupSelectionAs(*map, Class(name)), refusal);
    EXPECT_EQ(SetClassOfSelection(*map, Class(name)), refusal);
    EXPECT_EQ(SetKeyOf(*map, SelectedRoots(*map), "Classname", name), refusal);
  }
  EXPECT_EQ(SetKeyOf(*map, SelectedRoots(*map), "classname", "WorldSpawn"),
            EditResult::SecondWorld);
  EXPECT_EQ(MakeTemplate(*map, "", {}), EditResult::NoName);
  EXPECT_EQ(InsertInstance(*map, {"T", 0, {1, 1, 1e-7}}, {}), EditResult::Flattens);
  EXPECT_EQ(InsertEntity(*map, Class("brush"), {}), EditResult::EditorsOwn);
  EXPECT_EQ(Text(), before);
  ASSERT_EQ(MakeTemplate(*map, "T", {}), EditResult::Done);
  EXPECT_EQ(MakeTemplate(*map, "T", {}), EditResult::NameTaken);
}

TEST_F(BlocksTest, WhatOnlyHeldThePastedObjectsStaysBehind) {
  const std::string box = Cuboid(0, 0, 0, 8, 8, 8);
  for (const std::string& text :
       {"{\"classname\" \"worldspawn\"}{\"classname\" \"worldspawn\"" + box + "}",
        Layer("pasted", 1, box)}) {
    EXPECT_EQ(PasteText(*map, text), EditResult::Done);
    EXPECT_EQ(map->selection.size(), 1u);
    EXPECT_EQ(LayersOf(*map).size(), 3u);
    ForEachEntity(*map, [](const entity& e) {
      EXPECT_TRUE(e.getClass()->Kind() != EntityKind::Layer || !e.Parent()->Parent());
    });
    EXPECT_TRUE(IsPlayable(*map));
  }
}

TEST_F(BlocksTest, ATemplateShowsTheInstancesThatItHolds) {
  Pick({"a"});
  MakeTemplate(*map, "inner", {0, 0, 0});
  Select(*map, &Get("b"), true);
  const std::string before = QuakeText(*map);
  MakeTemplate(*map, "outer", {0, 0, 0});
  EXPECT_EQ(Get("outer").getEntityList().size(), 2u);
  EXPECT_TRUE(IsPlayable(*map));
  entity& outer = *map->selection.front();
  EXPECT_EQ(outer.GetBounds(), (Bounds{{0, 0, 0}, {192, 64, 64}}));
  // Also when what is inside changes, and when a template holds itself.
  Select(*map, Get("inner").getEntityList()[0].get(), false);
  entity& inside = *Get("inner").getEntityList()[0];
  {
    EditStep step(*map);
    step.Change(inside);
    inside.brush.Translate({-64, 0, 0});
  }
  EXPECT_EQ(outer.GetBounds(), (Bounds{{-64, 0, 0}, {192, 64, 64}}));
  {
    EditStep step(*map);
    step.Move(outer, Get("inner"));
  }
  EXPECT_TRUE(IsPlayable(*map));
}

TEST_F(BlocksTest, CopiesOfTheLeadingGroupAreAsManyAsWereAskedFor) {
  Pick({"a", "b"});
  GroupSelection(*map);
  SetAsLeading(*map);
  EXPECT_EQ(DuplicateSelection(*map, {18, {0, 0, 64}, {}}, {}), EditResult::Done);
  EXPECT_EQ(map->selection.size(), 18u);
  int brushes = 0;
  ForEachEntity(*map, [&](const entity& e) { brushes += e.brush.getNumFaces() > 0; });
  EXPECT_EQ(brushes, 2 * 19 + 2);
}

}  // namespace
}  // namespace ferrowand
