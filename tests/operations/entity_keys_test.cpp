#include "operations/entity_keys.h"

#include "document/classes/class_set.h"
#include "operations/edit_fixture.h"
#include "operations/spawn_flags.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

// Three lights, a door of one brush, and a brush.
class EntityKeysTest : public EditTest {
 protected:
  void SetUp() override {
    LoadShippedClasses();
    Open(Light("one", R"("light" "200" "Style" "2" "spawnflags" "257")") +
         Light("two", R"("light" "300" "XMPnote" "x")") + Light("three", R"("light" "200")") +
         "{\"classname\" \"func_door\" \"XMPentityname\" \"door\" \"wait\" \"-1\"" +
         Box("leaf", 0, 0, 0) + "}" + Box("a", 128, 0, 0));
    const_cast<EntityClass*>(Get("door").getClass())->keys.clear();
    map->classSet->FindClass("light").keys = {
        {"light", KeyType::Whole, "", "300", "", {}},
        {"style", KeyType::Choices, "", "0", "", {{"0", "steady"}}},
        {"targetname", KeyType::Name, "", "", "", {}}};
  }
  static std::string Light(const std::string& name, const std::string& keys) {
    return "{\"classname\" \"light\" \"XMPentityname\" \"" + name + "\" \"origin\" \"0 0 128\" " +
           keys + "}";
  }
  std::vector<entity*> Objects(std::initializer_list<const char*> names) {
    std::vector<entity*> objects;
    for (const char* name : names) objects.push_back(&Get(name));
    return objects;
  }
  // "name=value": - of no object, ~ of some, ! they differ.
  std::string Shown(std::initializer_list<const char*> names, bool withEditorKeys = false) {
    rows.Show(Objects(names), withEditorKeys);
    std::string text;
    for (const KeyRow& row : rows.Rows()) {
      text += text.empty() ? "" : " ";
      text += row.name + "=" + row.value;
      text += !row.isSet ? "-" : !row.isEverywhere ? "~" : "";
      text += row.differs ? "!" : "";
    }
    return text;
  }

  KeyRows rows;
};

TEST_F(EntityKeysTest, RowsAreTheUnionOfAllKeysAndKeepTheirPlaces) {
  EXPECT_EQ(Shown({"one"}), "origin=0 0 128 light=200 Style=2 spawnflags=257 targetname=-");
  const std::string before = Text();
  ASSERT_EQ(SetKeyOf(*map, Objects({"one"}), "light", "150"), EditResult::Done);
  ASSERT_EQ(SetKeyOf(*map, Objects({"one"}), "targetname", "lamp"), EditResult::Done);
  EXPECT_EQ(Shown({"one"}), "origin=0 0 128 light=150 Style=2 spawnflags=257 targetname=lamp");
  EXPECT_EQ(Get("one").KeyName(Get("one").numkeys() - 2), "light") << "the file has it last";
  ASSERT_EQ(RenameKeyOf(*map, Objects({"one"}), "light", "bright"), EditResult::Done);
  rows.Rename("light", "bright");
  EXPECT_EQ(Shown({"one"}),
            "origin=0 0 128 bright=150 Style=2 spawnflags=257 targetname=lamp light=300-");
  while (map->undo.CanUndo()) map->undo.Undo();
  EXPECT_EQ(Text(), before);

  EXPECT_EQ(Shown({"one", "two", "three"}),
            "origin=0 0 128 light=200! Style=2~ spawnflags=257~ targetname=-");
  EXPECT_EQ(Shown({"two"}, true).substr(0, 46), "origin=0 0 128 light=300 XMPnote=x XMPferrofla");
  EXPECT_EQ(Shown({"two", "door"}).find("style"), std::string::npos) << "no key of every class";
  EXPECT_EQ(Shown({"door"}), "wait=-1");
}

TEST_F(EntityKeysTest, AKeyIsGivenToAllInOneStepAndToNoneThatHasIt) {
  const std::string three = ExtendedText(Get("three")), before = Text();
  ASSERT_EQ(SetKeyOf(*map, Objects({"one", "two", "three"}), "light", "200"), EditResult::Done);
  EXPECT_EQ(ExtendedText(Get("three")), three);
  EXPECT_STREQ(Get("two").GetKey("light"), "200");
  ExpectOneStep(before);
  ASSERT_EQ(SetKeyOf(*map, Objects({"one"}), "style", "3"), EditResult::Done);
  EXPECT_STREQ(Get("one").GetKey("STYLE"), "3") << "the one in other letters would be found";
  ASSERT_EQ(RemoveKeyOf(*map, Objects({"one", "two"}), "style"), EditResult::Done);
  EXPECT_EQ(Get("one").GetKey("style"), nullptr);
}

TEST_F(EntityKeysTest, WhatAFileCannotHoldIsRefused) {
  const std::string before = Text();
  using enum EditResult;
  for (const auto& [name, value, refusal] : Cases<std::string, std::string, EditResult>{
           {"", "1", NoKeyName},
           {"say", "\"hi\"", HoldsQuote},
           {"s\"y", "hi", HoldsQuote},
           {"say", "one\ntwo", HoldsLineEnd},
           {"say", std::string("a\0b", 3), HoldsLineEnd},
           {"path", "c:\\", EndsInBackslash},
           {"say", std::string(LONGEST_KEY_TEXT + 1, '.'), TextTooLong},
           {std::string(LONGEST_KEY_TEXT + 1, '.'), "1", TextTooLong},
           {"origin", "1 2", NotThreeNumbers},
           {"Origin", "1 2 x", NotThreeNumbers},
           {"classname", "func_door", NoBrushes}}) {
    EXPECT_EQ(SetKeyOf(*map, Objects({"one", "two"}), name, value), refusal) << name;
  }
  EXPECT_EQ(RemoveKeyOf(*map, Objects({"one"}), "origin"), KeyStays);
  EXPECT_EQ(RenameKeyOf(*map, Objects({"one"}), "light", "style"), KeyTaken);
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(SetKeyOf(*map, Objects({"one"}), "path", "a\\n" + std::string(1000, '.')), Done);
  for (int i = Get("two").numkeys(); i < MAXKEYS - 1; ++i) {
    Get("two").SetKey("k" + std::to_string(i), "1");
  }
  EXPECT_EQ(SetKeyOf(*map, Objects({"one", "two"}), "another", "1"), TooManyKeys);
  EXPECT_EQ(SetSpawnFlag(*map, Objects({"two"}), 1, true), TooManyKeys);
  EXPECT_EQ(SetKeyOf(*map, Objects({"two"}), "k99", "2"), Done);
  EXPECT_TRUE(recorder.Said().empty()) << "no assertion";
}

TEST_F(EntityKeysTest, ABrushOfAnEntityStandsForThat) {
  EXPECT_EQ(EntitiesOf(Objects({"leaf", "a", "door"})), Objects({"door", "a"}));
  EXPECT_EQ(TexturesOf(Objects({"door"})), Names{"wall"});
}

TEST_F(EntityKeysTest, TheWorldHasWhatEveryGameHasAndKeepsItsClass) {
  entity* const world = map.get();
  world->getClass()->keys.clear();
  rows.Show({&world, 1}, false);
  EXPECT_EQ(rows.Rows().back().name, "sounds");
  ASSERT_EQ(rows.Rows()[rows.Rows().size() - 2].definition->choices.size(), 3u);
  EXPECT_EQ(SetKeyOf(*map, {&world, 1}, "worldtype", "2"), EditResult::Done);
  EXPECT_EQ(SetKeyOf(*map, {&world, 1}, "classname", "light"), EditResult::SecondWorld);
}

TEST_F(EntityKeysTest, AScaleOfAnInstanceIsWrittenForAllAxes) {
  Open("{\"classname\" \"templateInstance\" \"XMPentityname\" \"i\" \"origin\" \"0 0 0\"}");
  ASSERT_EQ(SetKeyOf(*map, Objects({"i"}), "XMPscaley", "2"), EditResult::Done);
  EXPECT_STREQ(Get("i").GetKey("XMPscalex"), "1");
  EXPECT_STREQ(Get("i").GetKey("XMPscaley"), "2");
  EXPECT_STREQ(Get("i").GetKey("XMPscalez"), "1");
}

TEST_F(EntityKeysTest, SpawnflagsAreNamedAndChangedBitByBit) {
  map->classSet->FindClass("light").flags = {"START_OFF", "x", "", "?", "DIM"};
  const auto shown = [&](std::initializer_list<const char*> names) {
    std::string text;
    for (const SpawnFlag& flag : NamedSpawnFlags(Objects(names))) {
      text += std::to_string(flag.bit) + flag.name + "-+?"[static_cast<int>(flag.state)];
    }
    return text;
  };
  EXPECT_EQ(shown({"one", "two"}),
            "0START_OFF?4DIM-8Not in easy?9Not in normal-10Not in hard-11Not in deathmatch-");
  EXPECT_EQ(shown({"a"}), "");
  const std::string before = Text();
  ASSERT_EQ(SetSpawnFlag(*map, Objects({"one", "two"}), 4, true), EditResult::Done);
  EXPECT_EQ(SpawnFlagsOf(Get("one")), 273);
  EXPECT_EQ(SpawnFlagsOf(Get("two")), 16);
  ExpectOneStep(before);
  ASSERT_EQ(SetSpawnFlag(*map, Objects({"two"}), 4, false), EditResult::Done);
  EXPECT_EQ(Get("two").GetKey("spawnflags"), nullptr);
}

}  // namespace
}  // namespace ferrowand
