// Templates come along with the instances that are copied: what a map showed is what the other one
// shows, whatever templates that has of its own.
#include "operations/template_travel.h"

#include <random>
#include <set>
#include <sstream>

#include "operations/clipboard.h"
#include "operations/edit_fixture.h"
#include "operations/template_editing.h"
#include "operations/templates.h"
#include "operations/transform_selection.h"

namespace ferrowand {
namespace {

// What the game gets: brushes of the world and blocks, in any order, without comments.
std::multiset<std::string> GameBlocks(const std::string& quakeMap) {
  std::multiset<std::string> blocks;
  std::istringstream in(quakeMap);
  std::string line, block, world;
  int depth = 0, tops = 0;
  while (std::getline(in, line)) {
    line.erase(0, line.find_first_not_of('\t'));
    if (line.starts_with("//")) continue;
    if (line == "{" && ++depth == 1) ++tops;
    const bool inWorld = tops == 1;
    if (!inWorld || depth == 2) block += line + '\n';
    if (line != "}") continue;
    --depth;
    if (depth == (inWorld ? 1 : 0) && !block.empty()) blocks.insert(std::exchange(block, {}));
  }
  return blocks;
}

class TemplateTravelTest : public EditTest {
 protected:
  void SetUp() override {
    LoadShippedClasses();
    Open("");
  }
  int Below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  std::string Name() { return std::array{"crate", "tower", "lamp", "gate5"}[Below(4)]; }
  std::string Place() {
    std::string text;
    for (int axis = 0; axis < 3; ++axis) text += std::to_string(8 * Below(200) - 800) + " ";
    return text;
  }
  std::string Instance(const std::string& of) {
    static constexpr const char* SCALES[] = {"", "\"XMPscalex\" \"2\" \"XMPscaley\" \"1\" ",
                                             "\"XMPscalex\" \"-1\" \"XMPscaley\" \"1\" "};
    const int scale = Below(3);
    return "{\"classname\" \"templateInstance\" \"XMPclass\" \"" + of + "\" \"origin\" \"" +
           Place() + "\" \"angle\" \"" + std::to_string(Below(24) * 15) + "\" " + SCALES[scale] +
           (scale > 0 ? "\"XMPscalez\" \"1\"" : "") + "}";
  }
  std::string Objects() {
    std::string text;
    for (int count = 1 + Below(3); count > 0; --count) {
      const int at = 16 * Below(9), size = 16 + 8 * Below(9);
      const std::string box = Cuboid(at, -at, 0, at + size, size, 2 * size);
      switch (Below(5)) {
        case 0:
          text += "{\"classname\" \"func_door\" \"angle\" \"30\"" + box + "}";
          break;
        case 1:
          text +=
              "{\"classname\" \"light\" \"origin\" \"" + Place() + "\" \"mangle\" \"40 -20 0\"}";
          break;
        case 2:
          text += Instance(Name());
          break;
        default:
          text += box;
      }
    }
    return text;
  }
  // Of some templates, in any of which others stand and which may be opened, and of instances.
  std::unique_ptr<Map> RandomMap() {
    std::string text;
    for (const char* name : {"crate", "tower", "lamp", "gate5"}) {
      if (Below(4) == 0) continue;
      text += "{\"classname\" \"templateClass\" \"XMPentityname\" \"" + std::string(name) + "\"" +
              (Below(3) == 0 ? "\"XMPopened\" \"64 -8 16\"" : "") + Objects() + "}";
    }
    for (int count = 1 + Below(4); count > 0; --count) text += Instance(Name()) + Objects();
    auto made = ReadText("{\"classname\" \"worldspawn\"" + Layer("main", 0, text) + "}");
    // What shows nothing in its own map would find something in the other one.
    ForEachEntity(*made, [](const entity& e) {
      if (!IsInstance(e) || FindTemplateClass(e)) return;
      const_cast<entity&>(e).SetKey("XMPclass", "none");
    });
    return made;
  }
  // But for what opened templates hold.
  static void SelectAll(Map& of) {
    std::vector<entity*> objects = PickableObjects(of, PickLevel::Objects);
    std::erase_if(objects, [&](const entity* e) { return e->Parent() != of.currentLayer(); });
    of.selection.Set(objects);
  }

  std::minstd_rand random_{7};
};

TEST_F(TemplateTravelTest, WhatIsPastedShowsWhatWasCopiedAndNoTemplateIsDoubled) {
  int renamed = 0, kept = 0;
  for (int round = 0; round < 150; ++round) {
    SCOPED_TRACE(round);
    const auto source = RandomMap();
    map = round % 3 == 0 ? ReadText("{}") : RandomMap();
    SelectAll(*source);
    std::multiset<std::string> expected = GameBlocks(QuakeText(*map));
    expected.merge(GameBlocks(QuakeText(*source)));
    const std::string text = SelectionText(*source);
    const std::size_t before = TemplateNames(*map).size();
    const std::string old = Text();
    ASSERT_EQ(PasteText(*map, text), EditResult::Done);
    ASSERT_TRUE(GameBlocks(QuakeText(*map)) == expected);
    ExpectOneStep(old);
    const std::vector<std::string> names = TemplateNames(*map);
    ASSERT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
    const std::string now = QuakeText(*map);
    ASSERT_EQ(PasteText(*map, text), EditResult::Done);
    EXPECT_EQ(TemplateNames(*map), names) << "they were there already";
    map->undo.Undo();
    EXPECT_TRUE(QuakeText(*map) == now);
    renamed += names.size() > before && before > 0;
    kept += names.size() == before && before > 0;
  }
  EXPECT_GT(renamed, 20);
  EXPECT_GT(kept, 0);
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(TemplateTravelTest, TemplatesGoIntoTheLayerAndGroupsOfNothingElseGo) {
  const std::string t =
      "{\"classname\" \"templateClass\" \"XMPentityname\" \"T\"" + Cuboid(0, 0, 0, 8, 8, 8) + "}";
  const std::string i =
      "{\"classname\" \"templateInstance\" \"XMPclass\" \"T\" \"origin\" \"0 0 0\"}";
  EXPECT_EQ(PasteText(*map, "{{\"XMPentityname\" \"group\" {" + t + "}" + i + "}{" + t + "}}"),
            EditResult::Done);
  EXPECT_EQ(Children("main"), (Names{"T", "group"}));
  EXPECT_EQ(Get("group").getEntityList().size(), 1u);
  EXPECT_EQ(PasteText(*map, "{" + t + "}"), EditResult::NotAMap) << "it is there";
  Pick({"group"});
  EXPECT_EQ(DuplicateSelection(*map, {8, 8, 8}, {}), EditResult::Done);
  EXPECT_EQ(SaveGroup(*map, temp.Path("g")), EditResult::Done);
  Open("");
  EXPECT_EQ(InsertGroup(*map, temp.Path("g.xmp")), EditResult::Done);
  EXPECT_EQ(Children("main"), (Names{"T", "g"}));
  EXPECT_EQ(SelectionBounds(*map), (Bounds{{8, 8, 8}, {16, 16, 16}}));
}

}  // namespace
}  // namespace ferrowand
