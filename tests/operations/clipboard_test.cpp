#include "operations/clipboard.h"

#include "document/classes/class_set.h"
#include "gamedata/wad_builder.h"
#include "operations/edit_fixture.h"
#include "operations/entity_keys.h"
#include "operations/groups.h"
#include "operations/insert.h"
#include "operations/transform_selection.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

using ClipboardTest = EditTest;

TEST_F(ClipboardTest, ACopySurvivesItsMap) {
  const std::string objects = ExtendedText(Get("p")) + ExtendedText(Get("a"));
  Pick({"p", "a"});
  const std::string text = SelectionText(*map);
  EXPECT_NE(text.find(objects), std::string::npos);
  Open("");
  const std::string before = Text();
  EXPECT_EQ(PasteText(*map, text), EditResult::Done);
  EXPECT_EQ(Children("main"), (Names{"p", "a"}));
  EXPECT_NE(Text().find(objects), std::string::npos);
  EXPECT_EQ(map->selection, (std::vector<entity*>{&Get("p"), &Get("a")}));
  ExpectOneStep(before);
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(ClipboardTest, CuttingIsOneStepAndPastingGivesBackWhatWasCut) {
  Pick({"a"});
  const std::string before = Text();
  std::string text;
  EXPECT_EQ(CutSelection(*map, text), EditResult::Done);
  EXPECT_EQ(Children("main"), (Names{"b", "p"}));
  ExpectOneStep(before);
  EXPECT_EQ(PasteText(*map, text), EditResult::Done);
  EXPECT_EQ(Children("main"), (Names{"b", "p", "a"}));
  EXPECT_EQ(CutSelection(*map, text), EditResult::Done);
  EXPECT_EQ(CutSelection(*map, text), EditResult::NothingSelected);
  EXPECT_EQ(text, "");
}

TEST_F(ClipboardTest, SingleEntitiesAndBrushesOutOfATextFileArePasted) {
  const std::string cuboid = Cuboid(0, 0, 0, 8, 8, 8);
  for (const auto& [text, classname, children, faces] :
       Cases<std::string, const char*, std::size_t, int>{
           {cuboid, "brush", 0, 6},
           {"  // a light\n{ \"classname\" \"light\" \"origin\" \"1 2 3\" }", "light", 0, 0},
           {"{ \"classname\" \"func_door\" " + cuboid + cuboid + "}", "func_door", 2, 0},
           {"{ \"classname\" \"worldspawn\" }{ \"classname\" \"light\" }", "light", 0, 0},
           {"{ \"classname\" \"worldspawn\" " + Layer("x", 1, cuboid) + "}", "brush", 0, 6}}) {
    SCOPED_TRACE(text);
    SetUp();
    ASSERT_EQ(PasteText(*map, text), EditResult::Done);
    ASSERT_EQ(map->selection.size(), 1u);
    const entity& pasted = *map->selection.front();
    EXPECT_STREQ(pasted.GetKey("classname"), classname);
    EXPECT_EQ(pasted.getEntityList().size(), children);
    EXPECT_EQ(pasted.brush.getNumFaces(), faces);
    EXPECT_STRNE(pasted.GetKey("XMPentityname"), "worldspawn");
    EXPECT_EQ(pasted.Parent(), &Get("main"));
  }
}

TEST_F(ClipboardTest, OtherTextIsNotPasted) {
  const std::string before = Text();
  for (const char* text : {"", " \n", "hello {", "{}", "{ \"classname\" \"worldspawn\"", "//"}) {
    EXPECT_EQ(PasteText(*map, text), EditResult::NotAMap) << text;
    EXPECT_EQ(Text(), before);
    EXPECT_FALSE(map->undo.CanUndo());
  }
}

TEST_F(ClipboardTest, DamageIsReportedWithItsLineAndTheRestIsPasted) {
  EXPECT_EQ(PasteText(*map, "{\r\n\r\nx\r\n" + Cuboid(0, 0, 0, 8, 8, 8) + "}"), EditResult::Done);
  EXPECT_NE(recorder.OnlyText().find("(x) was found in worldspawn definition at line:3"),
            std::string::npos);
  EXPECT_EQ(map->selection.size(), 1u);
}

TEST_F(ClipboardTest, WhatIsPastedIsOfTheClassesOfItsNewMap) {
  const std::string qc = temp.Write("g.qc", "/*QUAKED light (0 1 0) (-8 -8 -8) (8 8 8)\r\n*/");
  ClassSet classes(data.classes);
  ASSERT_TRUE(classes.Load(qc));
  map->classSet = &classes;
  PasteText(*map, "{}{ \"classname\" \"light\" \"origin\" \"1 2 3\" }");
  EXPECT_EQ(map->selection.front()->getClass()->classname, "light");
  InsertEntity(*map, map->classSet->FindClass("light"), {8, 16, 24});
  EXPECT_EQ(map->selection.front()->getClass()->classname, "light");
  EXPECT_STREQ(map->selection.front()->GetKey("origin"), "8.000000 16.000000 24.000000");
}

TEST_F(ClipboardTest, WhatComesBackHasTheTexturesOfTheWadsThatTheMapHasByThen) {
  const auto use = [&](const char* name, const char* texture) {
    const std::string path = temp.Write(name, WadBytes({{texture, 8, 8, "x"}}));
    map->wads.Clear();
    map->wads.Add(path, data.wads.Get(path));
    map->ResolveTextures(map->wads);
  };
  use("one.wad", "wall");
  const EntityPtr prototype = Get("a").Copy();
  Pick({"a"});
  SetKeyOf(*map, map->selection.Objects(), "key", "1");
  DuplicateSelection(*map, {0, 0, 64}, {});
  std::string text;
  CutSelection(*map, text);
  use("two.wad", "WALL");
  PasteText(*map, text);
  EXPECT_TRUE(IsConsistent(*map));
  InsertCopy(*map, *prototype, {0, 0, 0});
  EXPECT_TRUE(IsConsistent(*map));
  EXPECT_EQ(InsertGroup(*map, temp.Write("group.xmp", text)), EditResult::Done);
  while (map->undo.CanUndo()) {
    map->undo.Undo();
    EXPECT_TRUE(IsConsistent(*map));
  }
}

TEST_F(ClipboardTest, AGroupGoesThroughAFile) {
  Pick({"b", "p"});
  const std::string objects = ExtendedText(Get("b")) + ExtendedText(Get("p"));
  EXPECT_EQ(SaveGroup(*map, temp.Path("gate")), EditResult::Done);
  const std::string before = Text();
  EXPECT_EQ(InsertGroup(*map, temp.Path("gate.xmp")), EditResult::Done);
  EXPECT_EQ(Children("gate"), (Names{"b", "p"}));
  EXPECT_NE(ExtendedText(Get("gate")).find(objects), std::string::npos);
  EXPECT_EQ(map->selection, std::vector<entity*>{&Get("gate")});
  ExpectOneStep(before);

  const std::string now = Text();
  EXPECT_EQ(InsertGroup(*map, temp.Path("none.xmp")), EditResult::CannotOpen);
  EXPECT_EQ(InsertGroup(*map, temp.Write("a.map", "IBSP............")), EditResult::Declined);
  EXPECT_NE(recorder.OnlyText().find("a compiled Quake 2"), std::string::npos);
  EXPECT_EQ(InsertGroup(*map, temp.Write("empty.map", "")), EditResult::NotAMap);
  EXPECT_EQ(Text(), now);
  map->selection.Clear();
  EXPECT_EQ(SaveGroup(*map, temp.Path("gate")), EditResult::NothingSelected);
  const auto opened = LoadMap(data, temp.Path("gate.xmp"));
  EXPECT_NE(FindNamed(*opened, "b"), nullptr);
}

TEST_F(ClipboardTest, ACopyOfAPrototypeStandsWhereItIsPut) {
  entity prototype(data.classes.Native());
  prototype.SetKey("classname", "embed");
  EXPECT_EQ(InsertCopy(*map, prototype, {1, 2, 3}), EditResult::Done);
  EXPECT_EQ(map->selection.front()->Origin(), Vec3(1, 2, 3));
}

}  // namespace
}  // namespace ferrowand
