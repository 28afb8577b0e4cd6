#include "operations/regroup.h"

#include "operations/edit_fixture.h"
#include "operations/entity_tree.h"
#include "operations/groups.h"
#include "operations/layers.h"
#include "operations/visibility.h"

namespace ferrowand {
namespace {

class RegroupTest : public EditTest {
 protected:
  void SetUp() override {
    LoadShippedClasses();
    EditTest::SetUp();
    Pick({"a"});
    GroupSelectionAs(*map, map->classSet->FindClass("func_door"));
    RenameObject(*map, *map->selection.front(), "door");
    Pick({"b", "p"});
    GroupSelection(*map);
    map->undo.Clear();
  }
  EditResult Move(std::initializer_list<const char*> names, const char* holder) {
    std::vector<entity*> objects;
    for (const char* name : names) objects.push_back(&Get(name));
    return MoveInto(*map, objects, Get(holder));
  }
};

TEST_F(RegroupTest, ObjectsGoWhereTheyMayStandAndNothingGoesIntoItself) {
  const std::string before = Text();
  EXPECT_EQ(Children("main"), (Names{"door", "group1"}));
  // A door may be a member of a group, but holds no light and no other entity.
  EXPECT_EQ(Move({"door", "group1", "b", "main"}, "group1"), EditResult::Done);
  EXPECT_EQ(Children("group1"), (Names{"b", "p", "door"}));
  ExpectOneStep(before);
  map->undo.Undo();
  EXPECT_EQ(Move({"p", "b"}, "door"), EditResult::Done);
  EXPECT_EQ(Children("door"), (Names{"a", "b"}));
  EXPECT_EQ(Children("main"), (Names{"door", "p"})) << "the group lost all that it held";
  ExpectOneStep(before);
  map->undo.Undo();
  EXPECT_EQ(Move({"b", "group1"}, "locked"), EditResult::Done);
  EXPECT_EQ(Children("group1"), (Names{"b", "p"})) << "its members go with it";
  ExpectOneStep(before);
  map->undo.Undo();
  EXPECT_EQ(Move({"hidden"}, "main"), EditResult::Done);
  EXPECT_EQ(Text(), before) << "layers stay";
}

TEST_F(RegroupTest, NamesComeChangeAndGo) {
  const std::string before = Text();
  EXPECT_EQ(RenameObject(*map, Get("p"), "a \"lamp\""), EditResult::Done);
  EXPECT_EQ(Children("group1"), (Names{"b", "a 'lamp'"}));
  ExpectOneStep(before);
  RenameObject(*map, Get("a 'lamp'"), "");
  EXPECT_EQ(Children("group1"), (Names{"b", ""}));
  RenameObject(*map, Get("main"), "");
  EXPECT_EQ(Get("main").getEntityList().size(), 2u);
}

TEST_F(RegroupTest, WhatIsShownCanBeReached) {
  Pick({"door"});
  HideSelection(*map);
  entity& door = Get("door");
  entity& far = Get("far");
  SetLayerState(*map, *door.Parent(), true, true);
  const std::string before = Text();
  entity* const objects[] = {&door, door.getEntityList()[0].get(), &far};
  EXPECT_EQ(ShowObjects(*map, objects), EditResult::Done);
  for (const entity* e : objects) EXPECT_TRUE(IsReachable(*e));
  EXPECT_EQ(ShownClass(door), "func_door");
  ExpectOneStep(before);
}

}  // namespace
}  // namespace ferrowand
