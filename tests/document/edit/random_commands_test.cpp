// Whatever is done to a real map, as many undos give its text back to the letter.
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>

#include "document/document_fixture.h"
#include "document/edit/arrange.h"
#include "document/edit/clipboard.h"
#include "document/edit/groups.h"
#include "document/edit/insert.h"
#include "document/edit/layers.h"
#include "document/edit/selection.h"
#include "document/edit/templates.h"
#include "document/edit/visibility.h"

namespace ferrowand {
namespace {

// Commands with everything about them at random, on some objects of the map.
class RandomUser {
 public:
  RandomUser(Map& map, unsigned seed) : map_(map), random_(seed) {}

  void DoSomething() {
    PickSomething();
    COMMANDS[Below(std::size(COMMANDS))](*this);
    ++commands;
  }
  std::size_t Below(std::size_t count) { return random_() % count; }

  int commands = 0;
  std::string clipboard;

 private:
  using Do = void (*)(RandomUser&);

  int Between(int low, int high) {
    return low + static_cast<int>(Below(static_cast<std::size_t>(high - low + 1)));
  }
  float Step() { return static_cast<float>(Between(-8, 8) * 8); }
  Vec3 Offset() { return {Step(), Step(), Step()}; }
  DVec3 Middle() {
    const Bounds bounds = SelectionBounds(map_);
    return bounds.IsEmpty() ? DVec3() : DVec3(bounds.mins);
  }
  ArrangeOptions Options() {
    return {Below(2) == 0, Below(4) ? ALL_AXES : static_cast<unsigned>(Below(8))};
  }
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
    SelectNone(map_);
    for (std::size_t count = Below(6); count > 0 && !objects.empty(); --count) {
      Select(map_, objects[Below(objects.size())], true);
    }
  }

  static const Do COMMANDS[21];

  Map& map_;
  std::mt19937 random_;
};

using R = RandomUser;
const R::Do R::COMMANDS[] = {
    [](R& r) { MoveSelection(r.map_, r.Offset(), r.Options()); },
    [](R& r) {
      const int u = r.Between(0, 2);
      RotateSelection(r.map_, u, (u + 1) % 3, r.Between(0, 3) ? 90 * r.Between(0, 3) : 33.5,
                      r.Middle(), r.Options());
    },
    [](R& r) { FlipSelection(r.map_, r.Between(0, 2), r.Options()); },
    [](R& r) {
      ScaleSelection(r.map_, {1.5, r.Below(2) ? 0.5 : 2, 1}, r.Middle(), r.Options());
    },
    [](R& r) { SkewSelection(r.map_, 0, 2, r.Below(2) == 0, r.Step(), r.Options()); },
    [](R& r) {
      TransformSelection(r.map_, TurnMatrix({45, 0, 30}), r.Middle(), r.Options());
    },
    [](R& r) { DuplicateSelection(r.map_, r.Offset(), r.Options()); },
    [](R& r) {
      DuplicateSelection(r.map_, {r.Between(0, 3), r.Offset(), {0, 0, 90}}, r.Options());
    },
    [](R& r) { GroupSelection(r.map_); },
    [](R& r) { GroupSelectionAs(r.map_, r.map_.classSet->FindClass("func_door")); },
    [](R& r) { UngroupSelection(r.map_); },
    [](R& r) { SetAsLeading(r.map_); },
    [](R& r) { r.Below(3) ? HideSelection(r.map_) : ShowHidden(r.map_); },
    [](R& r) { InsertEntity(r.map_, r.map_.classSet->FindClass("light"), r.Offset()); },
    [](R& r) { DeleteSelection(r.map_); },
    [](R& r) { CutSelection(r.map_, r.clipboard); },
    [](R& r) { PasteText(r.map_, r.clipboard); },
    [](R& r) { MakeTemplate(r.map_, "T" + std::to_string(r.commands), r.Offset()); },
    [](R& r) {
      InsertInstance(r.map_, {"T", 90, {1, 2, 1}}, r.Offset());
    },
    [](R& r) {
      const std::string key = "k" + std::to_string(r.Below(3));
      r.Below(2) ? SetKeyOfSelection(r.map_, key, std::to_string(r.commands))
                 : RemoveKeyOfSelection(r.map_, key);
    },
    [](R& r) {
      switch (r.Below(6)) {
        case 0:
          return static_cast<void>(InsertLayer(r.map_, "new"));
        case 1:
          return static_cast<void>(RemoveLayer(r.map_, r.Layer()));
        case 2:
          return SetLayerState(r.map_, r.Layer(), r.Below(4) == 0, r.Below(4) == 0);
        default:
          return static_cast<void>(MoveSelectionToLayer(r.map_, r.Layer()));
      }
    }};

class RandomCommandsTest : public DocumentTest {
 protected:
  void SetUp() override {
    data.searchPath.Add(FERROWAND_DATA);
    data.classes.LoadDefault("ents.qc");
  }

  void DoAndUndo(const std::string& path, int commands, unsigned seed) {
    SCOPED_TRACE(path + ", seed " + std::to_string(seed));
    const auto map = LoadMap(data, path, 5000);
    ASSERT_NE(map, nullptr);
    RandomUser user(*map, seed);
    std::vector<std::string> texts{ExtendedText(*map)};
    for (int i = 0; i < commands; ++i) {
      user.DoSomething();
      if (map->undo.StepCount() == texts.size()) texts.push_back(ExtendedText(*map));
    }
    EXPECT_GT(texts.size(), static_cast<std::size_t>(commands) / 2);
    while (texts.size() > 1) {
      ASSERT_EQ(map->undo.StepCount(), texts.size() - 1);
      ASSERT_TRUE(ExtendedText(*map) == texts.back()) << texts.size();
      map->undo.Undo();
      if (user.Below(8) == 0) {
        map->undo.Redo();
        ASSERT_TRUE(ExtendedText(*map) == texts.back()) << texts.size();
        map->undo.Undo();
      }
      texts.pop_back();
    }
    ASSERT_TRUE(ExtendedText(*map) == texts.back());
  }
};

TEST_F(RandomCommandsTest, AreTakenBackToTheLetter) {
  for (const unsigned seed : {1u, 2u, 3u}) {
    DoAndUndo(FERROWAND_DATA "/maps/sample.xmp", 800, seed);
  }
}

TEST_F(RandomCommandsTest, AreTakenBackInARealMap) {
  const char* corpus = std::getenv("FERROWAND_CORPUS");
  const auto path = std::filesystem::path(corpus ? corpus : "") / "e1m1.map";
  if (!std::filesystem::exists(path)) GTEST_SKIP() << "FERROWAND_CORPUS holds no e1m1.map";
  DoAndUndo(path.string(), 300, 4);
}

}  // namespace
}  // namespace ferrowand
