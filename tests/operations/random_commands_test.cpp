// Whatever is done to a real map, as many undos give its text back to the letter, and each redo
// what was undone. All brushes stay solid on the way.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <random>

#include "document/document_fixture.h"
#include "document/edit_step.h"
#include "document/picking.h"
#include "operations/brush_check.h"
#include "operations/clipboard.h"
#include "operations/csg_commands.h"
#include "operations/groups.h"
#include "operations/hollow.h"
#include "operations/insert.h"
#include "operations/layers.h"
#include "operations/primitives.h"
#include "operations/templates.h"
#include "operations/transform_selection.h"
#include "operations/visibility.h"
#include "support/brush_checks.h"
#include "support/document_checks.h"
#include "views/tools/brush_reshape.h"

namespace ferrowand {
namespace {

// Commands with everything about them at random, on some objects of the map. What is drawn is drawn
// in one order whatever the compiler does with the arguments of a call, so that one seed gives the
// same map in every build.
class RandomUser {
 public:
  RandomUser(Map& map, const std::string& groupFile, unsigned seed)
      : map_(map), groupFile_(groupFile), random_(seed) {}

  // The name of what was done.
  const char* DoSomething() {
    PickSomething();
    Draw();
    const Command& command = COMMANDS[Below(std::size(COMMANDS))];
    const std::size_t steps = map_.undo.StepCount();
    command.run(*this);
    ++given_[command.name];
    done_[command.name] += map_.undo.StepCount() > steps;
    return command.name;
  }
  // What is refused most of the time has hardly been tested.
  void ExpectAllUsed() const {
    for (const Command& command : COMMANDS) {
      const int given = given_.at(command.name), done = done_.at(command.name);
      EXPECT_GE(given, 10) << command.name;
      EXPECT_GE(command.isStep ? 4 * done : given, given) << command.name << ": " << done;
    }
  }

 private:
  struct Command {
    const char* name;
    void (*run)(RandomUser&);
    bool isStep = true;
  };

  std::size_t Below(std::size_t count) { return random_() % count; }
  float Step() { return static_cast<float>(Below(17)) * 8 - 64; }
  Vec3 Offset() { return {Step(), Step(), Step()}; }
  template <typename T>
  const T& AnyOf(const std::vector<T>& all) {
    return all[Below(all.size())];
  }

  void Draw() {
    by_ = Offset();
    at_ = Offset() * 8.0f;
    coin_ = Below(2) == 0;
    few_ = static_cast<int>(Below(4));
    number_ = std::to_string(Below(1000));
    name_ = "T" + std::to_string(Below(3));
    how_.textureLock = Below(2) == 0;
    how_.axes = Below(4) ? ALL_AXES : static_cast<unsigned>(Below(8));
    layer_ = AnyOf(LayersOf(map_));
    const Bounds bounds = SelectionBounds(map_);
    middle_ = bounds.IsEmpty() ? DVec3() : DVec3(bounds.mins);
  }
  void PickSomething() {
    if (Below(8) == 0) return;
    const auto level = Below(4) ? PickLevel::Objects : PickLevel::Brushes;
    const std::vector<entity*> objects = PickableObjects(map_, level);
    map_.selection.Clear();
    for (std::size_t count = 1 + Below(5); count > 0 && !objects.empty(); --count) {
      Select(map_, AnyOf(objects), true);
    }
  }
  // One object moved into another's place, so that there is something to cut.
  void PickTwoThatOverlap() {
    if (map_.selection.size() < 2) return;
    entity* const moved = map_.selection[0];
    entity* const still = map_.selection[1];
    Select(map_, moved, false);
    MoveSelection(map_, still->GetBounds().mins - moved->GetBounds().mins + by_, {});
    Select(map_, still, true);
  }
  void PickGroups() {
    for (entity* e : PickableObjects(map_, PickLevel::Objects)) {
      if (IsGroup(*e) && Below(4) == 0) Select(map_, e, true);
    }
  }
  // What lies farthest on one side of a brush is moved: a corner, an edge or a face.
  void TouchUp() {
    for (entity* e : PickableObjects(map_, PickLevel::Brushes)) {
      if (e->brush.getNumFaces() == 0 || Below(4) != 0) continue;
      const Vec3 side = Offset();
      std::vector<Vec3> corners = CornersOf(e->brush);
      float farthest = Dot(corners[0], side);
      for (const Vec3& corner : corners) farthest = std::max(farthest, Dot(corner, side));
      std::erase_if(corners, [&](const Vec3& corner) { return Dot(corner, side) < farthest; });
      auto moved = MoveCorners(e->brush, corners, by_, map_.Data().reporter);
      if (!moved) continue;
      EditStep step(map_);
      step.ChangeKeys(*e);
      e->brush = std::move(*moved);
      return;
    }
  }

  static const std::vector<Command> COMMANDS;

  Map& map_;
  std::string groupFile_;
  std::mt19937 random_;
  std::map<std::string, int> given_, done_;
  std::string clipboard_;

  // Drawn anew for every command.
  Vec3 by_, at_;
  DVec3 middle_;
  bool coin_ = false;
  int few_ = 0;  // below 4
  std::string number_, name_;
  TransformOptions how_;
  entity* layer_ = nullptr;
};

using R = RandomUser;
const std::vector<R::Command> R::COMMANDS = {
    {"move", [](R& r) { MoveSelection(r.map_, r.by_, r.how_); }},
    {"turn",
     [](R& r) {
       const int u = r.few_ % 3;
       RotateSelection(r.map_, u, (u + 1) % 3, r.coin_ ? 90 * (r.few_ + 1) : 33.5, r.middle_,
                       r.how_);
     }},
    {"flip", [](R& r) { FlipSelection(r.map_, r.few_ % 3, r.how_); }},
    {"scale",
     [](R& r) {
       ScaleSelection(r.map_, {1.5, r.coin_ ? 0.5 : 2, 1}, r.middle_, r.how_);
     }},
    {"skew", [](R& r) { SkewSelection(r.map_, 0, 2, r.coin_, r.by_.x, r.how_); }},
    {"matrix",
     [](R& r) {
       TransformSelection(r.map_, TurnMatrix({45, 0, 30}), r.middle_, r.how_);
     }},
    {"duplicate", [](R& r) { DuplicateSelection(r.map_, r.by_, r.how_); }},
    {"multi duplicate",
     [](R& r) {
       DuplicateSelection(r.map_, {r.few_, r.by_, {0, 0, 90}}, r.how_);
     }},
    {"touch up", [](R& r) { r.TouchUp(); }},
    {"hollow", [](R& r) { HollowSelection(r.map_, r.coin_ ? 8 : -4); }},
    {"subtract",
     [](R& r) {
       r.PickTwoThatOverlap();
       if (r.map_.selection.size() > 1) r.map_.selection.Remove(*r.map_.selection.Objects().back());
       SubtractSelection(r.map_);
     }},
    {"intersect",
     [](R& r) {
       r.PickTwoThatOverlap();
       IntersectSelection(r.map_);
     }},
    {"primitive",
     [](R& r) {
       const int sides = 3 + r.few_ * 4;
       AddPrimitive(r.map_, {static_cast<PrimitiveKind>(r.few_), {r.at_, r.at_ + r.by_}, 2, sides},
                    "wall");
     }},
    {"sphere",
     [](R& r) {
       const auto kind = r.coin_ ? PrimitiveKind::Sphere : PrimitiveKind::Hemisphere;
       AddPrimitive(r.map_, {kind, {r.at_, r.at_ + Vec3(64, 128, 256)}, r.few_ % 3, 5 + r.few_},
                    "wall");
     }},
    {"group", [](R& r) { GroupSelection(r.map_); }},
    {"group as", [](R& r) { GroupSelectionAs(r.map_, r.map_.classSet->FindClass("func_door")); }},
    {"ungroup",
     [](R& r) {
       r.PickGroups();
       UngroupSelection(r.map_);
     }},
    {"lead", [](R& r) { SetAsLeading(r.map_); }, false},
    {"hide", [](R& r) { HideSelection(r.map_); }},
    {"show", [](R& r) { ShowHidden(r.map_); }},
    {"insert",
     [](R& r) {
       const char* const classes[] = {"light", "worldspawn", "light", "func_door"};
       InsertEntity(r.map_, r.map_.classSet->FindClass(classes[r.few_]), r.by_);
     }},
    {"insert copy",
     [](R& r) {
       if (!r.map_.selection.empty()) InsertCopy(r.map_, *r.map_.selection.front(), r.by_);
     }},
    {"embed",
     [](R& r) {
       InsertEmbed(r.map_, "e.xmp", {{-8, -16, -24}, {8, 16, 24}}, r.by_);
     }},
    {"template", [](R& r) { MakeTemplate(r.map_, r.name_, r.by_); }},
    {"instance",
     [](R& r) {
       InsertInstance(r.map_, {r.name_, 90, {1, 2, 1}}, r.by_);
     }},
    {"clear", [](R& r) { DeleteSelection(r.map_); }},
    {"cut", [](R& r) { CutSelection(r.map_, r.clipboard_); }},
    {"paste", [](R& r) { PasteText(r.map_, r.clipboard_); }},
    {"save group", [](R& r) { SaveGroup(r.map_, r.groupFile_); }, false},
    {"insert group", [](R& r) { InsertGroup(r.map_, r.groupFile_); }},
    {"set key", [](R& r) { SetKeyOfSelection(r.map_, r.coin_ ? "k1" : "angle", r.number_); }},
    {"remove key", [](R& r) { RemoveKeyOfSelection(r.map_, "k1"); }},
    {"set class",
     [](R& r) {
       SetClassOfSelection(r.map_, r.map_.classSet->FindClass(r.coin_ ? "func_wall" : "light"));
     }},
    {"insert layer", [](R& r) { InsertLayer(r.map_, "new"); }},
    {"remove layer", [](R& r) { RemoveLayer(r.map_, *r.layer_); }},
    {"rename layer", [](R& r) { RenameLayer(r.map_, *r.layer_, r.number_); }},
    {"layer state", [](R& r) { SetLayerState(r.map_, *r.layer_, r.few_ == 1, r.few_ == 2); }},
    {"to layer", [](R& r) { MoveSelectionToLayer(r.map_, *r.layer_); }}};

class RandomCommandsTest : public DocumentTest {
 protected:
  void SetUp() override {
    data.searchPath.Add(FERROWAND_DATA);
    data.classes.LoadDefault("ents.qc");
  }

  bool IsSound(const Brush& brush) {
    return brush.getNumFaces() == 0 || (IsSolid(brush) && SurvivesSaving(brush, reporter));
  }
  void ExpectSound(const Map& map, int command) {
    ForEachEntity(map, [&](const entity& e) {
      EXPECT_TRUE(IsSound(e.brush)) << command << ": " << IsSolid(e.brush).message();
    });
  }
  // Some brushes of a real map have a face twice, and what is made of them has too.
  void RemoveUnsound(entity& e) {
    for (std::size_t i = e.getEntityList().size(); i-- > 0;) {
      entity& child = *e.getEntityList()[i];
      RemoveUnsound(child);
      if (!IsSound(child.brush)) e.TakeChild(i);
    }
  }

  void Tell(const Map& map) {
    const char* const file = std::getenv("FERROWAND_RANDOM_TEXT");
    if (file) std::ofstream(file, std::ios::binary | std::ios::app) << ExtendedText(map);
  }

  // The text is looked at after every so many steps, and the small map after every one.
  // FERROWAND_RANDOM_TEXT names a file to which the texts of the map in between are added: every
  // build writes the same.
  void DoAndUndo(const std::string& path, int commands, int every, unsigned seed) {
    SCOPED_TRACE(path + ", seed " + std::to_string(seed));
    const auto map = LoadMap(data, path, 10000);
    ASSERT_NE(map, nullptr);
    RemoveUnsound(*map);
    const std::string before = ExtendedText(*map);
    const auto text = [&] { return std::hash<std::string>()(ExtendedText(*map)); };
    std::map<std::size_t, std::size_t> texts;  // after so many steps
    RandomUser user(*map, temp.Path("group.xmp"), seed);
    for (int i = 0; i < commands && !HasFailure(); ++i) {
      const char* const done = user.DoSomething();
      const std::size_t steps = map->undo.StepCount();
      if (every < 100 || i % 25 == 0) {
        ASSERT_TRUE(IsConsistent(*map)) << i << ": " << done;
        ASSERT_TRUE(IsPlayable(*map)) << i << ": " << done;
      }
      if (static_cast<int>(steps) % every == 0 && texts.try_emplace(steps, text()).second)
        ExpectSound(*map, i);
      if (i % 100 == 99) Tell(*map);
    }
    const std::string after = ExtendedText(*map);
    while (map->undo.CanUndo()) {
      const auto known = texts.find(map->undo.StepCount());
      const bool isKnown = known != texts.end();
      ASSERT_TRUE(!isKnown || text() == known->second) << known->first;
      map->undo.Undo();
      ASSERT_TRUE(!isKnown || IsConsistent(*map)) << known->first;
      map->undo.Redo();
      ASSERT_TRUE(!isKnown || text() == known->second) << known->first;
      map->undo.Undo();
    }
    ASSERT_TRUE(ExtendedText(*map) == before);
    EXPECT_FALSE(map->modified());
    while (map->undo.CanRedo()) map->undo.Redo();
    EXPECT_TRUE(ExtendedText(*map) == after);
  }
};

TEST_F(RandomCommandsTest, HoldNoMoreThanTheBudgetOfUndo) {
  const auto map = LoadMap(data, FERROWAND_DATA "/maps/sample.xmp", 10000);
  RemoveUnsound(*map);
  constexpr std::uint64_t BUDGET = 100'000;
  map->undo.SetBudget(BUDGET);
  RandomUser user(*map, temp.Path("group.xmp"), 3);
  std::size_t most = 0;
  for (int i = 0; i < 500; ++i) {
    const char* const done = user.DoSomething();
    const std::size_t steps = map->undo.StepCount();
    ASSERT_TRUE(map->undo.Bytes() <= BUDGET || steps == 1) << i << ": " << done;
    most = std::max(most, steps);
  }
  EXPECT_LT(map->undo.StepCount(), most) << "it was never reached";
  while (map->undo.CanUndo()) map->undo.Undo();
  EXPECT_LE(map->undo.Bytes(), BUDGET) << "what can be redone";
  EXPECT_TRUE(IsConsistent(*map));
}

TEST_F(RandomCommandsTest, AreTakenBackToTheLetter) {
  for (const unsigned seed : {1u, 2u}) {
    DoAndUndo(FERROWAND_DATA "/maps/sample.xmp", 1000, 25, seed);
  }
}

TEST_F(RandomCommandsTest, AreTakenBackInARealMap) {
  const char* corpus = std::getenv("FERROWAND_CORPUS");
  const auto path = std::filesystem::path(corpus ? corpus : "") / "e1m1.map";
  if (!std::filesystem::exists(path)) GTEST_SKIP() << "FERROWAND_CORPUS holds no e1m1.map";
  DoAndUndo(path.string(), 2000, 100, 4);
}

}  // namespace
}  // namespace ferrowand
