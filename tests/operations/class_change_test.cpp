#include "operations/class_change.h"

#include "document/classes/class_set.h"
#include "gamedata/wad_builder.h"
#include "operations/edit_fixture.h"
#include "operations/groups.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

class ClassChangeTest : public EditTest {
 protected:
  void SetUp() override {
    LoadShippedClasses();
    Open(Entity("func_door", "door", R"("speed" "9" "spawnflags" "5")", Box("d", 0, 0, 0)) +
         Entity("func_wall", "wall", R"("origin" "1 2 3")", Box("w", 128, 0, 0)) +
         "{\"classname\" \"light\" \"XMPentityname\" \"lamp\" \"origin\" \"0 0 96\"}" +
         Box("a", 256, 0, 0) + Box("b", 384, 0, 0));
  }
  static std::string Entity(const std::string& classname, const std::string& name,
                            const std::string& keys, const std::string& brushes) {
    return "{\"classname\" \"" + classname + "\" \"XMPentityname\" \"" + name + "\" " + keys +
           brushes + "}";
  }
  EditResult Change(std::initializer_list<const char*> names, const char* classname) {
    Pick(names);
    return ChangeClass(*map, map->selection.Objects(), classname);
  }
};

TEST_F(ClassChangeTest, ClassesOfBrushesAreForBrushesAndKeysStay) {
  const std::string before = Text();
  using enum EditResult;
  for (const auto& [name, classname, refusal] :
       Cases<const char*, const char*, EditResult>{{"lamp", "func_wall", NoBrushes},
                                                   {"door", "light", HoldsBrushes},
                                                   {"door", "worldspawn", SecondWorld},
                                                   {"door", "layer", EditorsOwn},
                                                   {"door", "", KeyStays},
                                                   {"door", "a\"b", HoldsQuote}}) {
    EXPECT_EQ(Change({name}, classname), refusal) << name << classname;
  }
  EXPECT_EQ(Text(), before);
  map->classSet->FindClass("light").isPointToo = true;
  EXPECT_EQ(Change({"door"}, "light"), Done) << "of both kinds";
  map->undo.Undo();
  EXPECT_EQ(Change({"door", "wall"}, "func_plat"), Done);
  EXPECT_STREQ(Get("door").GetKey("speed"), "9");
  EXPECT_EQ(Get("wall").getClass(), &map->classSet->FindClass("func_plat"));
  ExpectOneStep(before);
  EXPECT_EQ(Change({"lamp"}, "mod_lamp"), Done);
  EXPECT_EQ(Get("lamp").getClass()->Kind(), EntityKind::Unknown);
}

TEST_F(ClassChangeTest, BrushesGoToTheEntityThatIsSelectedToo) {
  Pick({"a", "b"});
  EXPECT_EQ(SelectedToTieTo(*map), nullptr);
  GroupSelection(*map);
  map->selection.front()->SetKey("XMPentityname", "pair");
  Pick({"pair", "door", "wall", "lamp"});
  ASSERT_EQ(SelectedToTieTo(*map), &Get("door"));
  const std::string before = Text();
  ASSERT_EQ(TieToEntity(*map, Get("door")), EditResult::Done);
  EXPECT_EQ(Children("door"), (Names{"d", "pair", "w"}));
  EXPECT_EQ(Children("main"), (Names{"door", "lamp"})) << "the emptied wall goes, origin or not";
  EXPECT_EQ(map->selection, std::vector{&Get("door")});
  EXPECT_TRUE(IsPlayable(*map));
  ExpectOneStep(before);
  Pick({"door", "lamp"});
  EXPECT_EQ(TieToEntity(*map, Get("door")), EditResult::NoBrushes);
}

TEST_F(ClassChangeTest, TriggersGetTheirTextureInTheSameStep) {
  const EntityClass& trigger = map->classSet->FindClass("trigger_once");
  EXPECT_EQ(UsualTextureIn(*map, trigger), nullptr) << "no WAD has it";
  const std::string wad = temp.Write("t.wad", WadBytes({{"TRIGGER", 8, 8, "x"}}));
  map->wads.Add(wad, data.wads.Get(wad));
  map->ResolveTextures(map->wads);
  EXPECT_EQ(UsualTextureIn(*map, map->classSet->FindClass("func_wall")), nullptr);
  Texture* const texture = UsualTextureIn(*map, trigger);
  ASSERT_NE(texture, nullptr);
  Pick({"a"});
  const std::string before = Text();
  ASSERT_EQ(GroupSelectionAs(*map, trigger, texture), EditResult::Done);
  EXPECT_EQ(Get("a").brush.face(5).texture, texture);
  ExpectOneStep(before);
  entity& made = *map->selection.front();
  Pick({"b", "wall"});
  Select(*map, &made, true);
  ASSERT_EQ(TieToEntity(*map, made, texture), EditResult::Done);
  EXPECT_EQ(Get("w").brush.face(0).Name(), "TRIGGER");
}

TEST_F(ClassChangeTest, BrushesOfEntitiesBecomeTheWorlds) {
  const std::string before = Text();
  Pick({"door", "wall", "a"});
  ASSERT_EQ(TieToWorld(*map), EditResult::Done);
  EXPECT_EQ(Children("main"), (Names{"lamp", "a", "b", "d", "w"}));
  EXPECT_EQ(map->selection, (std::vector{&Get("d"), &Get("w")}));
  ExpectOneStep(before);
  map->undo.Undo();
  Get("door").state = 0;  // opened: its brushes act alone
  Pick({"d"});
  ASSERT_EQ(TieToWorld(*map), EditResult::Done);
  EXPECT_EQ(Children("main"), (Names{"wall", "lamp", "a", "b", "d"}));
  Pick({"lamp", "a"});
  EXPECT_EQ(TieToWorld(*map), EditResult::NoBrushEntity);
}

TEST_F(ClassChangeTest, AnEntityThatIsOneBrushIsABrushAfterwards) {
  const std::string box = Cuboid(0, 0, 0, 64, 64, 64);
  Open("{\"classname\" \"func_wall\" \"XMPentityname\" \"w\" \"origin\" \"1 2 3\" \"angle\" \"9\"" +
       box.substr(1) + Entity("func_door", "door", "", Box("d", 128, 0, 0)));
  const std::string before = Text();
  Pick({"w"});
  ASSERT_EQ(TieToWorld(*map), EditResult::Done);
  EXPECT_EQ(map->selection.front()->getClass()->Kind(), EntityKind::Brush);
  ExpectOneStep(before);
  map->undo.Undo();
  Pick({"door", "w"});
  ASSERT_EQ(TieToEntity(*map, Get("door")), EditResult::Done);
  EXPECT_EQ(Get("door").getEntityList().size(), 2u);
  EXPECT_TRUE(IsPlayable(*map));
  ExpectOneStep(before);
}

}  // namespace
}  // namespace ferrowand
