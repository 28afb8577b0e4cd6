// Whatever is done to a real map, as many undos give its text back to the letter, and each redo
// what was undone. All brushes stay solid on the way.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>

#include "document/document_fixture.h"
#include "operations/brush_check.h"
#include "support/brush_checks.h"
#include "support/document_checks.h"
#include "support/random_user.h"

namespace ferrowand {
namespace {

class RandomCommandsTest : public DocumentTest {
 protected:
  void SetUp() override { LoadShippedClasses(); }

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
    if (every < 100) user.ExpectAllUsed();
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
  for (const unsigned seed : {3u, 4u}) {
    DoAndUndo(FERROWAND_DATA "/maps/sample.xmp", 1000, 25, seed);
  }
}

TEST_F(RandomCommandsTest, AreTakenBackInARealMap) {
  const char* corpus = std::getenv("FERROWAND_CORPUS");
  const auto path = std::filesystem::path(corpus ? corpus : "") / "e1m1.map";
  if (!std::filesystem::exists(path)) GTEST_SKIP() << "FERROWAND_CORPUS holds no e1m1.map";
  DoAndUndo(path.string(), 2000, 100, 1);
}

}  // namespace
}  // namespace ferrowand
