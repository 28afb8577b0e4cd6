#include "operations/template_editing.h"

#include <algorithm>

#include "document/transform.h"
#include "operations/clipboard.h"
#include "operations/edit_fixture.h"
#include "operations/groups.h"
#include "operations/insert.h"
#include "operations/templates.h"
#include "operations/transform_selection.h"
#include "support/cases.h"
#include "support/change_recorder.h"

namespace ferrowand {
namespace {

constexpr Bounds BRUSH{{0, 0, 0}, {16, 32, 64}};

class TemplateEditingTest : public EditTest {
 protected:
  void SetUp() override {
    LoadShippedClasses();
    data.shown.templates = true;
    Open(Instance("i", "100 200 0", "") + Instance("j", "-300 0 8", "\"angle\" \"90\""),
         Template("T", Named("part", Cuboid(0, 0, 0, 16, 32, 64)) +
                           "{\"classname\" \"light\" \"XMPentityname\" \"lamp\" \"origin\" "
                           "\"8 8 80\"}"));
  }
  static std::string Template(const std::string& name, const std::string& inside) {
    return "{\"classname\" \"templateClass\" \"XMPentityname\" \"" + name + "\"" + inside + "}";
  }
  static std::string Instance(const std::string& name, const std::string& origin,
                              const std::string& keys) {
    return "{\"classname\" \"templateInstance\" \"XMPclass\" \"T\" \"XMPentityname\" \"" + name +
           "\" \"origin\" \"" + origin + "\" " + keys + "}";
  }
  // The first of the two, which lie in layers out of sight.
  entity& T() { return Get("T"); }
  std::string Game() const { return QuakeText(*map); }
};

TEST_F(TemplateEditingTest, OpenedItStandsInPlaceOfTheInstanceAndNothingElseIsOther) {
  const std::string before = Text(), game = Game();
  Pick({"i"});
  ASSERT_EQ(OpenTemplate(*map, Get("i")), EditResult::Done);
  EXPECT_EQ(Game(), game);
  EXPECT_EQ(Children("main"), (Names{"i", "j", "T"})) << "it was in a hidden layer";
  EXPECT_EQ(Get("part").brush.Box(), (Bounds{{100, 200, 0}, {116, 232, 64}}));
  EXPECT_EQ(Get("lamp").Origin(), Vec3(108, 208, 80));
  EXPECT_EQ(map->selection, (std::vector<entity*>{&Get("part"), &Get("lamp")}));
  EXPECT_FALSE(IsReachable(Get("i")));
  EXPECT_TRUE(IsReachable(Get("j")));
  EXPECT_EQ(map->leadingGroup(), &T());
  ExpectOneStep(before);
  EXPECT_EQ(map->leadingGroup(), &T());
  EXPECT_EQ(QuakeText(*ReadText(Text())), game) << "saved while it is open";
  // At another instance.
  ASSERT_EQ(OpenTemplate(*map, Get("j")), EditResult::Done);
  EXPECT_EQ(Get("part").brush.Box(), (Bounds{{-300, 0, 8}, {-284, 32, 72}}));
  EXPECT_TRUE(IsReachable(Get("i")));
  EXPECT_EQ(Game(), game);
  ASSERT_EQ(CloseTemplate(*map, T()), EditResult::Done);
  EXPECT_EQ(Get("part").brush.Box(), BRUSH);
  EXPECT_EQ(map->selection, std::vector<entity*>{&Get("j")});
  EXPECT_EQ(map->leadingGroup(), nullptr);
  map->undo.Undo();
  EXPECT_EQ(map->leadingGroup(), &T());
  map->undo.Redo();
  EXPECT_EQ(map->leadingGroup(), nullptr);
  EXPECT_EQ(T().GetKey(OPENED_KEY), nullptr);
  EXPECT_EQ(Game(), game);
  while (map->undo.CanUndo()) map->undo.Undo();
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(map->leadingGroup(), nullptr);
}

TEST_F(TemplateEditingTest, WhatIsDoneToItIsSeenInAllInstances) {
  Pick({"i"});
  OpenTemplate(*map, Get("i"));
  Pick({"part"});
  MoveSelection(*map, {0, 0, 8}, {});
  EXPECT_EQ(Get("j").GetBounds().mins.z, 16);
  InsertEntity(*map, map->classSet->FindClass("light"), {108, 208, 100});
  EXPECT_EQ(map->selection.front()->Parent(), &T());
  EXPECT_EQ(TemplateInUse(*map), &T());
  // Within itself it would show nothing.
  InsertInstance(*map, {"T", 0, {1, 1, 1}}, {500, 0, 0});
  EXPECT_EQ(map->selection.front()->Parent(), &Get("main"));
  Select(*map, &Get("part"), true);
  std::vector<entity*> both{&Get("part"), map->selection.front()};
  map->selection.Set(both);
  EXPECT_EQ(MakeTemplate(*map, "U", {}), EditResult::Done);
  EXPECT_EQ(map->selection.front()->Parent(), &Get("main"));
  EXPECT_TRUE(IsPlayable(*map));
  map->undo.Undo();
  // Emptied it stays, to be filled again or closed.
  SelectMembers(*map, T(), false);
  EXPECT_EQ(DeleteSelection(*map), EditResult::Done);
  EXPECT_TRUE(T().getEntityList().empty());
  EXPECT_EQ(TemplateInUse(*map), &T());
  map->undo.Undo();
  Pick({"part"});
  GroupSelection(*map);
  EXPECT_EQ(SetAsLeading(*map), EditResult::Done);
  EXPECT_EQ(map->leadingGroup()->Parent(), &T());
  const ChangeRecorder told(*map);
  EXPECT_EQ(CloseTemplate(*map, T()), EditResult::Done);
  EXPECT_EQ(map->leadingGroup(), nullptr) << "nor does a group within it lead on";
  EXPECT_TRUE(std::ranges::any_of(told.changes, &MapChange::target));
  map->undo.Undo();
  SelectMembers(*map, T(), false);
  DeleteSelection(*map);
  EXPECT_EQ(CloseTemplate(*map, T()), EditResult::Done);
  EXPECT_EQ(TemplateInUse(*map), &T()) << "by its instance, which is selected";
  EXPECT_TRUE(IsConsistent(*map));
}

TEST_F(TemplateEditingTest, FacesOfItsOwnAreAMemberOnceItIsOpened) {
  Open(Instance("i", "8 0 0", "") + Named("T", Cuboid(0, 0, 0, 16, 32, 64)));
  Get("T").SetKey("classname", "templateClass");
  const std::string game = Game(), before = Text();
  EXPECT_EQ(OpenTemplate(*map, Get("i")), EditResult::Done);
  EXPECT_EQ(map->selection.size(), 1u);
  EXPECT_EQ(SelectionBounds(*map), (Bounds{{8, 0, 0}, {24, 32, 64}}));
  EXPECT_EQ(Game(), game);
  ExpectOneStep(before);
}

TEST_F(TemplateEditingTest, OutsideTheWorldItOpensWhereItLies) {
  Get("i").SetOrigin(Vec3(32760, 0, 0));
  EXPECT_EQ(OpenTemplate(*map, Get("i")), EditResult::Done);
  EXPECT_EQ(Get("part").brush.Box(), BRUSH);
  EXPECT_TRUE(IsReachable(Get("part")));
  Get("i").SetKey("XMPclass", "none");
  EXPECT_EQ(OpenTemplate(*map, Get("i")), EditResult::NoTemplate);
}

TEST_F(TemplateEditingTest, ARenamedTemplateTakesItsInstancesAlong) {
  Pick({"j"});
  HideEntity(Get("j"));
  const std::string before = Text(), game = Game();
  for (const auto& [name, result] : Cases<const char*, EditResult>{
           {"", EditResult::NoName}, {"  ", EditResult::NoName}, {"T", EditResult::Done}}) {
    EXPECT_EQ(RenameTemplate(*map, T(), name), result);
    EXPECT_EQ(Text(), before);
  }
  EXPECT_EQ(RenameTemplate(*map, T(), "say \"new\""), EditResult::Done);
  EXPECT_STREQ(Get("i").GetKey("XMPclass"), "say 'new'");
  EXPECT_STREQ(Get("j").GetKey("XMPclass"), "say 'new'");
  std::string renamed = Game();
  renamed.replace(renamed.find("say 'new'"), 9, "T");
  EXPECT_EQ(renamed.size(), game.size());
  ExpectOneStep(before);
  Pick({"i"});
  MakeTemplate(*map, "U", {});
  EXPECT_EQ(RenameTemplate(*map, Get("U"), "say 'new'"), EditResult::NameTaken);
}

TEST_F(TemplateEditingTest, ADeletedTemplateTakesItsInstancesAlongIfTheUserAgrees) {
  const std::string before = Text();
  EXPECT_EQ(DeleteTemplate(*map, T()), EditResult::Declined);
  EXPECT_EQ(recorder.OnlyText(), "The template T has 2 instances. Delete them too?");
  EXPECT_EQ(Text(), before);
  recorder.answers = {Answer::Yes};
  EXPECT_EQ(DeleteTemplate(*map, T()), EditResult::Done);
  EXPECT_TRUE(Get("main").getEntityList().empty());
  EXPECT_EQ(TemplateNames(*map), Names{"T"}) << "the second one, which nothing showed";
  ExpectOneStep(before);
}

TEST_F(TemplateEditingTest, ATemplateInAGroupStaysWhenTheGroupGoes) {
  Open(Instance("i", "0 0 0", "") + "{\"XMPentityname\" \"g\"" + Box("a", 0, 0, 0) +
       Template("T", Named("part", Cuboid(0, 0, 0, 16, 32, 64))) + "}");
  Pick({"g"});
  for (const bool locked : {true, false}) {
    EXPECT_EQ(MoveSelection(*map, {64, 0, 0}, {locked}), EditResult::Done);
    EXPECT_EQ(RotateSelection(*map, 0, 1, 90, {}, {locked}), EditResult::Done);
  }
  EXPECT_EQ(Get("part").brush.Box(), BRUSH);
  Pick({"g"});
  DuplicateSelection(*map, {8, 8, 8}, {});
  EXPECT_EQ(TemplateNames(*map), Names{"T"}) << "no second one that nothing shows";
  OpenTemplate(*map, Get("i"));
  EXPECT_TRUE(IsReachable(Get("part")));
  EXPECT_EQ(&ObjectAt(Get("part")), &Get("part"));
}

// Against what turning the objects themselves makes of them.
TEST_F(TemplateEditingTest, WhatAnInstanceHoldsTurnsWithIt) {
  const std::string objects =
      Block("brush", 0, 0, 0, 64, 32, 96) +
      Point("thing", "\"origin\" \"8 16 24\" \"angle\" \"50\" \"angles\" \"10 20 30\"") +
      "{\"classname\" \"func_door\" \"XMPentityname\" \"door\" \"angle\" \"270\"" +
      Box("leaf", 64, 0, 0) + "}" +
      "{\"classname\" \"light\" \"XMPentityname\" \"lamp\" \"angle\" \"40\" \"origin\" \"0 0 99\" "
      "\"mangle\" \"20 -30 0\"}" +
      "{\"classname\" \"embed\" \"XMPentityname\" \"e\" \"origin\" \"8 0 8\" \"XMPmaxx\" \"99\"}";
  for (int angle = 0; angle < 360; angle += angle % 90 == 75 ? 15 : 25) {
    for (const float mirror : {1.0f, -1.0f}) {
      Open(objects);
      Pick({"brush", "thing", "door", "lamp", "e"});
      ASSERT_EQ(MakeTemplate(*map, "T", {16, 8, 0}), EditResult::Done);
      InsertInstance(*map, {"T", angle, {mirror, 1, 1}}, {16, 8, 0});
      const EntityPtr shown = ExpandInstance(*map->selection.front())->Copy();
      Open(objects);
      Pick({"brush", "thing", "door", "lamp", "e"});
      ScaleSelection(*map, {mirror, 1, 1}, {16, 8, 0}, {false});
      ASSERT_EQ(RotateSelection(*map, 0, 1, angle, {16, 8, 0}, {false}), EditResult::Done);
      for (const char* name : {"brush", "leaf", "thing", "door", "lamp", "e"}) {
        SCOPED_TRACE(Format("%s by %d, mirrored %g", name, angle, double{mirror}));
        const entity &is = *FindNamed(*shown, name), &expected = Get(name);
        for (const char* key : {"angle", "angles", "mangle", "XMPminx", "XMPmaxx", "XMPmaxy"}) {
          EXPECT_STREQ(is.GetKey(key), expected.GetKey(key)) << key;
        }
        const Bounds a = is.GetBounds(), b = expected.GetBounds();
        EXPECT_LT(Length(DVec3(a.mins - b.mins)) + Length(DVec3(a.maxs - b.maxs)), 0.05);
      }
    }
  }
}

}  // namespace
}  // namespace ferrowand
