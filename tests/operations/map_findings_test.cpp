// What the check finds beyond its own list, what it repairs, and that it follows the map.
#include "operations/map_findings.h"

#include "document/edit_step.h"
#include "operations/check_repair.h"
#include "operations/edit_fixture.h"
#include "operations/game_order.h"
#include "operations/running_check.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

class FindingsTest : public EditTest {
 protected:
  Names Lines() {
    std::vector<Finding> found;
    FindInTree(*map, found);
    FindInMap(*map, found);
    Names lines;
    for (const Finding& finding : found) lines.push_back(ReportLine(finding));
    return lines;
  }
  static std::string Textured(const std::string& box, const std::string& first) {
    std::string text = box;
    return text.replace(text.find("wall"), 4, first);
  }
  static std::string Start() {
    return "{\"classname\" \"info_player_start\" \"origin\" \"32 32 80\"}";
  }
  // In a room that wants nothing: two boxes above each other and a start between.
  void OpenWith(const std::string& objects) {
    Open(Block("floor", -64, -64, 0, 256, 256, 16) + Block("roof", -64, -64, 240, 256, 256, 256) +
         Start() + objects);
  }
};

TEST_F(FindingsTest, EachKindIsFoundAndOnlyWhereItIs) {
  OpenWith("");
  EXPECT_EQ(Lines(), Names());
  const std::string box = Block("b", 0, 0, 32, 64, 64, 64);
  for (const auto& [objects, line] : Cases<std::string, std::string>{
           {Point("p", "\"origin\" \"0 0 64\" \"" + std::string(32, 'k') + "\" \"1\""),
            "Key too long for the tools (" + std::string(32, 'k') + "), unknown named: p"},
           {Point("p", "\"origin\" \"0 0 64\" \"k\" \"" + std::string(1024, 'v') + "\""),
            "Value too long for the tools (k), unknown named: p"},
           {Textured(box, std::string(130, 't')), "Texture name too long for the tools (" +
                                                      std::string(130, 't') +
                                                      "), brush named: b, face 0"},
           {Textured(box, "sixteen_letters_"),
            "Texture name is cut off (sixteen_letters_), brush named: b, face 0"},
           {Textured(box, "*water1"),
            "Mixed contents in one brush (*water1 and wall), brush named: b, face 1"},
           {box + Block("c", 0, 0, 32, 64, 64, 64), "Duplicate brush (at 0 0 32), brush named: c"},
           {Block("b", 0, 0, 32, 5000, 64, 64),
            "Brush beyond 4096 units (at 0 0 32), brush named: b"},
           {Point("p", "\"origin\" \"0 0 64\" \"target\" \"t\""),
            "Target names nothing (t), unknown named: p"},
           {Point("p", "\"origin\" \"0 0 900\""),
            "Entity outside the world's brushes (at 0 0 900), unknown named: p"}}) {
    OpenWith(objects);
    EXPECT_EQ(Lines(), Names{line});
  }
  Open(Block("floor", -64, -64, 0, 256, 256, 16));
  EXPECT_EQ(Lines(), Names{"No player start, unknown named: worldspawn"});

  OpenWith(box);
  Brush& brush = Get("b").brush;
  brush.Translate({0.5f, 0.25f, 0});
  EXPECT_EQ(Lines(), Names{"Faces are moved by a save (4 by up to 0.50 units), brush named: b"});
}

TEST_F(FindingsTest, ARunningCheckIsWhatAWholeOneGivesAfterEveryChange) {
  OpenWith(Block("b", 0, 0, 32, 64, 64, 64) + Point("p", "\"origin\" \"0 0 900\""));
  RunningCheck check(*map, CHECK_TOLERANCE);
  const auto told = [&] {
    while (check.Step(1)) {
    }
    Names lines;
    for (const Finding& finding : check.Findings()) lines.push_back(ReportLine(finding));
    return lines;
  };
  class Listener : public MapObserver {
   public:
    explicit Listener(RunningCheck& c) : check(c) {}
    void OnChange(const MapChange& change) override { check.OnChange(change); }
    RunningCheck& check;
  } listener(check);
  map->AddObserver(listener);
  EXPECT_EQ(told(), Lines());
  Pick({"b"});
  {
    EditStep step(*map);
    step.Add(Get("b").Copy(), *map->currentLayer());
    step.ChangeKeys(Get("p"));
    Get("p").SetKey("origin", "0 0 64");
  }
  EXPECT_FALSE(check.IsDone());
  EXPECT_EQ(told(), Names{"Duplicate brush (at 0 0 32), brush named: b"});
  map->undo.Undo();
  EXPECT_EQ(told(), Lines());
  map->undo.Redo();
  EXPECT_EQ(told(), Lines());
  map->RemoveObserver(listener);
}

TEST_F(FindingsTest, RepairsAreOneStepAndLeaveWhatTheyCannotDo) {
  OpenWith(Block("b", 0, 0, 32, 64, 64, 64));
  // A seventh face that touches nothing.
  Face extra = CopyFace(Get("b").brush.face(0));
  extra.planepts = {Vec3{-8, 0, 0}, Vec3{-8, 64, 0}, Vec3{-8, 0, 64}};
  extra.TakePlane();
  extra.w = nullptr;
  Get("b").brush.AddFace(std::move(extra));
  std::string before = Text();
  EXPECT_EQ(DropFace(*map, Get("b"), 0), EditResult::BreaksBrush);
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(DropFace(*map, Get("b"), 6), EditResult::Done);
  EXPECT_EQ(Get("b").brush.getNumFaces(), 6);
  ExpectOneStep(before);

  before = Text();
  int replaced = 0;
  EXPECT_EQ(ReplaceTexture(*map, "wall", "nowhere", replaced), EditResult::NoTexture);
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(RemoveBrush(*map, Get("b")), EditResult::Done);
  ExpectOneStep(before);
}

TEST_F(FindingsTest, TheOrderOfTheGameIsThatOfItsText) {
  Open(Box("a", 0, 0, 0) + "{\"classname\" \"func_door\"" + Box("d", 0, 0, 200) + "}" +
           Point("p", "\"origin\" \"0 0 64\"") +
           "{\"classname\" \"templateClass\" \"XMPentityname\" \"t\"" + Box("t1", 0, 0, 0) +
           Box("t2", 64, 0, 0) + "}" +
           "{\"classname\" \"templateInstance\" \"XMPentityname\" \"i\" \"XMPclass\" \"t\" "
           "\"origin\" \"0 0 400\"}",
       Box("far", 512, 0, 0) + Point("unseen", "\"origin\" \"0 0 64\""));
  for (const unsigned option : {0u, WRITE_VISIBLE_ONLY}) {
    const std::vector<GameBlock> blocks = GameOrder(*map, option);
    // The text by depth: blocks open at depth 0, brushes at depth 1.
    std::vector<std::size_t> counted;
    int depth = 0;
    for (const char c : QuakeText(*map, option)) {
      if (c == '{' && depth++ == 0) counted.push_back(0);
      if (c == '{' && depth == 2) ++counted.back();
      if (c == '}') --depth;
    }
    ASSERT_EQ(blocks.size(), counted.size()) << option;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      EXPECT_EQ(blocks[i].brushes.size(), counted[i]) << option << " block " << i;
    }
  }
  const std::vector<GameBlock> blocks = GameOrder(*map, 0);
  EXPECT_EQ(blocks[0].object, map.get());
  EXPECT_EQ(blocks[0].brushes[0], &Get("a"));
  EXPECT_EQ(blocks[0].brushes[1], &Get("i")) << "stands for what it shows";
}

}  // namespace
}  // namespace ferrowand
