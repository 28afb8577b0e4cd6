#include "operations/entity_tree.h"

#include <random>

#include "operations/edit_fixture.h"
#include "operations/groups.h"
#include "operations/layers.h"
#include "operations/regroup.h"
#include "operations/visibility.h"
#include "support/random_user.h"

namespace ferrowand {
namespace {

class EntityTreeTest : public EditTest, public MapObserver {
 protected:
  void SetUp() override {
    LoadShippedClasses();
    Open(Cuboid(0, 0, 0, 64, 64, 64) + Door("gate", 128) + Point("p", "\"origin\" \"0 0 128\"") +
             "{\"classname\" \"light\" \"target\" \"gate1\" \"origin\" \"8 8 8\"}" +
             Box("named", 512, 0, 0),
         Door("far", 1024));
    Follow();
  }
  ~EntityTreeTest() override {
    if (tree) map->RemoveObserver(*this);
  }
  static std::string Door(const std::string& name, int x) {
    return "{\"classname\" \"func_door\" \"XMPentityname\" \"" + name + "\" \"targetname\" \"" +
           name + "1\"" + Cuboid(x, 0, 0, x + 64, 64, 64) + Cuboid(x, 64, 0, x + 64, 99, 64) + "}";
  }
  void Follow() {
    tree = std::make_unique<EntityTree>(*map);
    map->AddObserver(*this);
  }
  void OnChange(const MapChange& change) override { last = tree->Follow(change); }
  // A line a row, set in by its depth; + what is folded, - what is open.
  std::string Rows() const {
    std::string text;
    for (const TreeRow& row : tree->Rows()) {
      text += std::string(row.depth, ' ');
      if (row.canOpen) text += row.isOpen ? '-' : '+';
      text += std::string(TreeLabel(*row.e)) + "\n";
    }
    return text;
  }
  void Show(const TreeFilter& filter) { tree->SetFilter(filter); }

  std::unique_ptr<EntityTree> tree;
  TreeUpdate last = TreeUpdate::None;
};

TEST_F(EntityTreeTest, RowsAreWhatTheFilterWantsAndWhatHoldsIt) {
  const std::string others = "-hidden\n far\n-locked\n far\n";
  struct Case {
    TreeFilter filter;
    std::string rows;
  };
  const Case cases[] = {
      {{}, "-main\n gate\n p\n light\n named\n" + others},
      {{.brushes = true},
       "-main\n brush\n +gate\n p\n light\n named\n-hidden\n +far\n-locked\n +far\n"},
      {{.text = "GATE1"}, "-main\n gate\n light\n"},
      {{.text = "gate door"}, "-main\n gate\n"},
      {{.text = "func_*", .hidden = false}, "-main\n gate\n-locked\n far\n"},
      {{.disabled = false}, "-main\n gate\n p\n light\n named\n-hidden\n far\n"},
      {{.hidden = false, .disabled = false, .onlyPoints = true}, "-main\n p\n light\n"},
      {{.onlyNamed = true, .brushes = true}, "-main\n gate\n p\n named\n" + others},
      {{.classname = "light"}, "-main\n light\n"},
      {{.classname = "func_door", .layer = &Get("hidden")}, "-hidden\n far\n"},
      {{.text = "main"}, "main\n"},
  };
  for (const Case& row : cases) {
    Show(row.filter);
    EXPECT_EQ(Rows(), row.rows) << row.filter.text << row.filter.classname;
  }
  Show({.classname = "func_door"});
  EXPECT_EQ(tree->NumFound(), 3u);
  tree->SetOpen(Get("main"), false);
  EXPECT_EQ(Rows(), "+main\n" + others);
  EXPECT_EQ(tree->NumFound(), 3u) << "folded away or not";
}

TEST_F(EntityTreeTest, NodesStayAsTheyWereTurnedAndAreOpenedForWhatIsToBeSeen) {
  const std::string before = Rows(), others = "-hidden\n far\n-locked\n far\n";
  Pick({"gate", "p"});
  EXPECT_EQ(last, TreeUpdate::None) << "the selection is in no row";
  GroupSelection(*map);
  EXPECT_EQ(last, TreeUpdate::Rows);
  EXPECT_EQ(Rows(), "-main\n light\n named\n +group1\n" + others);
  EXPECT_TRUE(tree->Reveal(Get("p")));
  const std::string open = "-main\n light\n named\n -group1\n  gate\n  p\n" + others;
  EXPECT_EQ(Rows(), open);
  EXPECT_FALSE(tree->Reveal(*Get("gate").getEntityList()[0])) << "a brush has no row";
  map->undo.Undo();
  EXPECT_EQ(Rows(), before);
  map->undo.Redo();
  EXPECT_EQ(Rows(), open);
  EXPECT_EQ(tree->Find("NA", 3), 2u);
  EXPECT_EQ(tree->Find("f", 0), 7u);
  EXPECT_EQ(tree->Find("x", 0), std::nullopt);
}

TEST_F(EntityTreeTest, TheWordsTellWhatAnObjectIs) {
  const auto state = [](const entity& e) { return CellText(e, ObjectColumn::State); };
  const auto details = [](const entity& e) { return CellText(e, ObjectColumn::Details); };
  SetLayerState(*map, Get("main"), true, true);
  EXPECT_EQ(state(Get("main")), "hidden, disabled, current");
  EXPECT_EQ(state(Get("gate")), "(hidden), (disabled)");
  EXPECT_EQ(details(Get("gate")), "2 objects");
  EXPECT_EQ(details(Get("p")), "0 0 128");
  EXPECT_EQ(CellText(*Get("main").getEntityList()[3], ObjectColumn::Links), "-> gate1");
  SetLayerState(*map, Get("main"), false, false);
  Pick({"gate"});
  SetAsLeading(*map);
  HideSelection(*map);
  EXPECT_EQ(ShownClass(Get("gate")), "func_door");
  EXPECT_EQ(state(Get("gate")), "hidden, leading");
}

// Whatever is done: each announcement leaves the rows that a new tree has. Rows are dragged about
// in between, which leaves a map that the game can read, and can be taken back to the letter.
TEST_F(EntityTreeTest, RowsFollowTheMap) {
  const TreeFilter filters[] = {{.brushes = true}, {}, {.text = "1"}, {.hidden = false}};
  for (unsigned seed = 1; seed <= 4; ++seed) {
    const TreeFilter& filter = filters[seed - 1];
    Show(filter);
    RandomUser user(*map, temp.Path("group.xmp"), seed);
    std::mt19937 random(seed);
    int moved = 0;
    for (int i = 0; i < 60; ++i) {
      const char* done = user.DoSomething();
      const auto& rows = tree->Rows();
      const auto any = [&] { return rows.empty() ? map.get() : rows[random() % rows.size()].e; };
      entity* const dragged[] = {any(), any(), any()};
      entity& holder = *any();
      const std::string before = Text();
      if (HoldsObjects(holder) && MoveInto(*map, dragged, holder) == EditResult::Done &&
          Text() != before) {
        ++moved;
        ASSERT_TRUE(IsPlayable(*map)) << done << " of " << seed;
        ExpectOneStep(before);
      }
      EntityTree other(*map);
      other.SetFilter(filter);
      ASSERT_EQ(tree->Rows(), other.Rows()) << done << " of " << seed;
    }
    EXPECT_GT(moved, 8);
  }
}

}  // namespace
}  // namespace ferrowand
