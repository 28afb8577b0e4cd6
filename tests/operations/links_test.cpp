#include "operations/links.h"

#include "document/classes/class_set.h"
#include "operations/clipboard.h"
#include "operations/edit_fixture.h"
#include "operations/transform_selection.h"

namespace ferrowand {
namespace {

class LinksTest : public EditTest {
 protected:
  void SetUp() override {
    LoadShippedClasses();
    Open(Point("button", R"("target" "door" "killtarget" "Lamp")") +
         Point("door1", R"("targetname" "door")") + Point("door2", R"("targetname" "door")") +
         Point("lamp", R"("targetname" "lamp" "target" "none")") + Point("x", "") + Point("y", "") +
         Box("a", 0, 0, 0));
  }
  std::string Told(const std::vector<Link>& links) {
    std::string text;
    for (const Link& link : links) {
      text += std::string(link.from->GetKey("XMPentityname")) + ":" + link.key + ">" +
              (link.to ? link.to->GetKey("XMPentityname") : "?") +
              (link.isInOtherCase ? "~ " : " ");
    }
    return text;
  }
  std::string From(const char* name) {
    entity* const e = &Get(name);
    return Told(LinksFrom(*map, {&e, 1}));
  }
  std::string To(const char* name) {
    entity* const e = &Get(name);
    return Told(LinksTo(*map, {&e, 1}));
  }
  std::string KeyOf(const char* name, const char* key) {
    const char* value = Get(name).GetKey(key);
    return value ? value : "";
  }
};

TEST_F(LinksTest, AreFoundByNamesToTheLetterAndToldWhereOnlyTheCaseDiffers) {
  EXPECT_EQ(From("button"), "button:target>door1 button:target>door2 button:killtarget>lamp~ ");
  EXPECT_EQ(From("lamp"), "lamp:target>? ");
  EXPECT_EQ(To("door2"), "button:target>door2 ");
  EXPECT_EQ(To("lamp"), "button:killtarget>lamp~ ");
  EXPECT_EQ(To("x"), "");
  Get("x").getClass()->keys = {{"opens", KeyType::Link, "", "", "", {}}};
  Get("x").SetKey("opens", "lamp");
  EXPECT_EQ(From("x"), "x:opens>lamp ") << "the class says so";
  EXPECT_EQ(NamesIn(*map), (Names{"door", "lamp"}));

  Pick({"button"});
  EXPECT_EQ(LinkedWithSelection(*map, true), (std::vector{&Get("door1"), &Get("door2")}));
  Pick({"door1"});
  EXPECT_EQ(LinkedWithSelection(*map, false), std::vector{&Get("button")});
}

TEST_F(LinksTest, ConnectUsesTheNameThatIsThereOrAFreeOne) {
  const auto connect = [&](std::initializer_list<const char*> names) {
    Pick(names);
    const Names found = NamesToConnect(*map);
    EXPECT_LE(found.size(), 1u);
    return ConnectSelection(*map, found.empty() ? "" : found.front());
  };
  const std::string before = Text();
  EXPECT_EQ(connect({"x", "y"}), EditResult::Done);
  EXPECT_EQ(KeyOf("x", "target"), "thing1");
  EXPECT_EQ(KeyOf("y", "targetname"), "thing1");
  ExpectOneStep(before);
  EXPECT_EQ(connect({"lamp", "button"}), EditResult::Done);
  EXPECT_EQ(KeyOf("button", "targetname"), "none") << "the target that is there";
  EXPECT_EQ(connect({"y", "lamp"}), EditResult::Done);
  EXPECT_EQ(KeyOf("y", "target"), "lamp") << "the name that is there";
  Pick({"button", "lamp"});
  EXPECT_EQ(NamesToConnect(*map), (Names{"door", "lamp"}));
  EXPECT_EQ(connect({"x"}), EditResult::NotTwo);
  EXPECT_EQ(connect({"x", "a"}), EditResult::NoNameToLink);
}

TEST_F(LinksTest, BothEndsOfAPastedLinkAreNamedAnew) {
  Pick({"button", "door1", "lamp"});
  const std::string text = SelectionText(*map), before = Text();
  ASSERT_EQ(PasteText(*map, text), EditResult::Done);
  const entity &button = *map->selection[0], &door = *map->selection[1], &lamp = *map->selection[2];
  EXPECT_STREQ(button.GetKey("target"), "door1");
  EXPECT_STREQ(door.GetKey("targetname"), "door1");
  EXPECT_STREQ(lamp.GetKey("targetname"), "lamp") << "nothing pasted points to it";
  EXPECT_STREQ(lamp.GetKey("target"), "none") << "it leads out";
  ExpectOneStep(before);
  ASSERT_EQ(PasteText(*map, text), EditResult::Done);
  EXPECT_STREQ(map->selection[0]->GetKey("target"), "door2");

  std::string cut;
  Pick({"button", "door1", "door2"});
  map->undo.Undo();
  map->undo.Undo();
  Pick({"button", "door1", "door2"});
  CutSelection(*map, cut);
  ASSERT_EQ(PasteText(*map, cut), EditResult::Done);
  EXPECT_EQ(KeyOf("button", "target"), "door") << "the name was free";
}

TEST_F(LinksTest, DuplicatesHaveLinksOfTheirOwnWhereThatIsWanted) {
  Pick({"button", "door1"});
  ASSERT_EQ(DuplicateSelection(*map, Vec3(8, 0, 0), {}), EditResult::Done);
  EXPECT_STREQ(map->selection[0]->GetKey("target"), "door");
  map->undo.Undo();
  Pick({"button", "door1"});
  const std::string before = Text();
  ASSERT_EQ(DuplicateSelection(*map, {.count = 2, .offset = {8, 0, 0}, .namesLinksAnew = true}, {}),
            EditResult::Done);
  EXPECT_STREQ(map->selection[0]->GetKey("target"), "door1");
  EXPECT_STREQ(map->selection[1]->GetKey("targetname"), "door1");
  EXPECT_STREQ(map->selection[2]->GetKey("target"), "door2");
  ExpectOneStep(before);
}

}  // namespace
}  // namespace ferrowand
