// Whatever is done to a real map, as many undos give its text back to the letter, and each redo
// what was undone. All brushes stay solid on the way.
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <random>
#include <set>

#include "document/document_fixture.h"
#include "document/edit_step.h"
#include "document/picking.h"
#include "geometry/box_tree.h"
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
#include "views/tools/brush_reshape.h"

namespace ferrowand {
namespace {

// Commands with everything about them at random, on some objects of the map.
class RandomUser {
 public:
  RandomUser(Map& map, const std::string& groupFile, unsigned seed)
      : map_(map), groupFile_(groupFile), random_(seed) {}

  void DoSomething() {
    PickSomething();
    const Command& command = COMMANDS[Below(std::size(COMMANDS))];
    const std::size_t steps = map_.undo.StepCount();
    command.run(*this);
    if (map_.undo.StepCount() > steps) effective_.insert(command.name);
    ++commands_;
  }
  // Every command must have changed something, or it has not been tested.
  void ExpectAllUsed() const {
    for (const Command& command : COMMANDS) {
      EXPECT_EQ(effective_.contains(command.name), command.isStep) << command.name;
    }
  }

 private:
  struct Command {
    const char* name;
    void (*run)(RandomUser&);
    bool isStep = true;
  };

  std::size_t Below(std::size_t count) { return random_() % count; }
  int Between(int low, int high) {
    return low + static_cast<int>(Below(static_cast<std::size_t>(high - low + 1)));
  }
  float Step() { return static_cast<float>(Between(-8, 8) * 8); }
  Vec3 Offset() { return {Step(), Step(), Step()}; }
  DVec3 Middle() {
    const Bounds bounds = SelectionBounds(map_);
    return bounds.IsEmpty() ? DVec3() : DVec3(bounds.mins);
  }
  TransformOptions Options() {
    return {Below(2) == 0, Below(4) ? ALL_AXES : static_cast<unsigned>(Below(8))};
  }
  const EntityClass& Class(const char* name) { return map_.classSet->FindClass(name); }
  entity& Layer() {
    std::vector<entity*> layers;
    for (const EntityPtr& child : map_.getEntityList()) {
      if (child->getClass()->Kind() == EntityKind::Layer) layers.push_back(child.get());
    }
    return *layers[Below(layers.size())];
  }

  void PickSomething() {
    if (Below(8) == 0) return;
    const auto level = Below(4) ? PickLevel::Objects : PickLevel::Brushes;
    const std::vector<entity*> objects = PickableObjects(map_, level);
    map_.selection.Clear();
    for (std::size_t count = Below(6); count > 0 && !objects.empty(); --count) {
      Select(map_, objects[Below(objects.size())], true);
    }
  }
  // One object moved into another's place, so that there is something to cut.
  void PickTwoThatOverlap() {
    if (map_.selection.size() < 2) return;
    entity* const moved = map_.selection[0];
    entity* const still = map_.selection[1];
    map_.selection.Clear();
    Select(map_, moved, false);
    const Vec3 by = still->GetBounds().mins - moved->GetBounds().mins;
    MoveSelection(map_, by + Vec3(Step(), Step(), Step()), {});
    Select(map_, still, true);
  }
  void TouchUp() {
    for (entity* root : SelectedRoots(map_)) {
      if (root->brush.getNumFaces() == 0) continue;
      std::vector<Vec3> corners = CornersOf(root->brush);
      std::erase_if(corners, [&](const Vec3&) { return Below(2) == 0; });
      auto moved = MoveCorners(root->brush, corners, Offset(), map_.Data().reporter);
      if (!moved) continue;
      EditStep step(map_);
      step.ChangeKeys(*root);
      root->brush = std::move(*moved);
      return;
    }
  }
  Primitive AnyPrimitive() {
    const Vec3 at(Offset() * 8.0f);
    return {
        static_cast<PrimitiveKind>(Below(6)), {at, at + Offset()}, Between(0, 2), Between(3, 15)};
  }

  static const std::vector<Command> COMMANDS;

  Map& map_;
  std::string groupFile_;
  std::mt19937 random_;
  std::set<std::string> effective_;
  int commands_ = 0;
  std::string clipboard_;
};

using R = RandomUser;
const std::vector<R::Command> R::COMMANDS = {
    {"move", [](R& r) { MoveSelection(r.map_, r.Offset(), r.Options()); }},
    {"turn",
     [](R& r) {
       const int u = r.Between(0, 2);
       RotateSelection(r.map_, u, (u + 1) % 3, r.Between(0, 3) ? 90 * r.Between(0, 3) : 33.5,
                       r.Middle(), r.Options());
     }},
    {"flip", [](R& r) { FlipSelection(r.map_, r.Between(0, 2), r.Options()); }},
    {"scale",
     [](R& r) {
       ScaleSelection(r.map_, {1.5, r.Below(2) ? 0.5 : 2, 1}, r.Middle(), r.Options());
     }},
    {"skew", [](R& r) { SkewSelection(r.map_, 0, 2, r.Below(2) == 0, r.Step(), r.Options()); }},
    {"matrix",
     [](R& r) {
       TransformSelection(r.map_, TurnMatrix({45, 0, 30}), r.Middle(), r.Options());
     }},
    {"duplicate", [](R& r) { DuplicateSelection(r.map_, r.Offset(), r.Options()); }},
    {"multi duplicate",
     [](R& r) {
       DuplicateSelection(r.map_, {r.Between(0, 3), r.Offset(), {0, 0, 90}}, r.Options());
     }},
    {"touch up", [](R& r) { r.TouchUp(); }},
    {"hollow", [](R& r) { HollowSelection(r.map_, r.Below(2) ? 8 : -4); }},
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
    {"primitive", [](R& r) { AddPrimitive(r.map_, r.AnyPrimitive(), "wall"); }},
    {"group", [](R& r) { GroupSelection(r.map_); }},
    {"group as", [](R& r) { GroupSelectionAs(r.map_, r.Class("func_door")); }},
    {"ungroup", [](R& r) { UngroupSelection(r.map_); }},
    {"lead", [](R& r) { SetAsLeading(r.map_); }, false},
    {"hide", [](R& r) { HideSelection(r.map_); }},
    {"show", [](R& r) { ShowHidden(r.map_); }},
    {"insert", [](R& r) { InsertEntity(r.map_, r.Class("light"), r.Offset()); }},
    {"insert copy",
     [](R& r) {
       if (!r.map_.selection.empty()) InsertCopy(r.map_, *r.map_.selection.front(), r.Offset());
     }},
    {"embed",
     [](R& r) {
       InsertEmbed(r.map_, "e.xmp", {{-8, -16, -24}, {8, 16, 24}}, r.Offset());
     }},
    {"template", [](R& r) { MakeTemplate(r.map_, "T" + std::to_string(r.Below(3)), r.Offset()); }},
    {"instance",
     [](R& r) {
       InsertInstance(r.map_, {"T" + std::to_string(r.Below(3)), 90, {1, 2, 1}}, r.Offset());
     }},
    {"clear", [](R& r) { DeleteSelection(r.map_); }},
    {"cut", [](R& r) { CutSelection(r.map_, r.clipboard_); }},
    {"paste", [](R& r) { PasteText(r.map_, r.clipboard_); }},
    {"save group", [](R& r) { SaveGroup(r.map_, r.groupFile_); }, false},
    {"insert group", [](R& r) { InsertGroup(r.map_, r.groupFile_); }},
    {"set key",
     [](R& r) {
       SetKeyOfSelection(r.map_, "k" + std::to_string(r.Below(3)), std::to_string(r.commands_));
     }},
    {"remove key", [](R& r) { RemoveKeyOfSelection(r.map_, "k1"); }},
    {"set class", [](R& r) { SetClassOfSelection(r.map_, r.Class("func_wall")); }},
    {"insert layer", [](R& r) { InsertLayer(r.map_, "new"); }},
    {"remove layer", [](R& r) { RemoveLayer(r.map_, r.Layer()); }},
    {"rename layer", [](R& r) { RenameLayer(r.map_, r.Layer(), std::to_string(r.commands_)); }},
    {"layer state",
     [](R& r) { SetLayerState(r.map_, r.Layer(), r.Below(4) == 0, r.Below(4) == 0); }},
    {"to layer", [](R& r) { MoveSelectionToLayer(r.map_, r.Layer()); }}};

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

  // The map is looked at after every so many steps.
  void DoAndUndo(const std::string& path, int commands, std::size_t every, unsigned seed) {
    SCOPED_TRACE(path + ", seed " + std::to_string(seed));
    const auto map = LoadMap(data, path, 10000);
    ASSERT_NE(map, nullptr);
    RemoveUnsound(*map);
    const std::string before = ExtendedText(*map);
    const auto text = [&] { return std::hash<std::string>()(ExtendedText(*map)); };
    std::map<std::size_t, std::size_t> texts;  // after so many steps
    RandomUser user(*map, temp.Path("group.xmp"), seed);
    for (int i = 0; i < commands && !HasFailure(); ++i) {
      user.DoSomething();
      const std::size_t steps = map->undo.StepCount();
      if (steps % every == 0 && texts.try_emplace(steps, text()).second) ExpectSound(*map, i);
    }
    user.ExpectAllUsed();
    EXPECT_GT(map->undo.StepCount(), static_cast<std::size_t>(commands) / 2);
    while (map->undo.CanUndo()) {
      const auto known = texts.find(map->undo.StepCount());
      const bool isKnown = known != texts.end();
      ASSERT_TRUE(!isKnown || text() == known->second) << known->first;
      map->undo.Undo();
      map->undo.Redo();
      ASSERT_TRUE(!isKnown || text() == known->second) << known->first;
      map->undo.Undo();
    }
    ASSERT_TRUE(ExtendedText(*map) == before);
  }
};

TEST_F(RandomCommandsTest, AreTakenBackToTheLetter) {
  for (const unsigned seed : {1u, 2u, 3u}) {
    DoAndUndo(FERROWAND_DATA "/maps/sample.xmp", 1000, 10, seed);
  }
}

TEST_F(RandomCommandsTest, AreTakenBackInARealMap) {
  const char* corpus = std::getenv("FERROWAND_CORPUS");
  const auto path = std::filesystem::path(corpus ? corpus : "") / "e1m1.map";
  if (!std::filesystem::exists(path)) GTEST_SKIP() << "FERROWAND_CORPUS holds no e1m1.map";
  DoAndUndo(path.string(), 3000, 100, 4);
}

}  // namespace
}  // namespace ferrowand
