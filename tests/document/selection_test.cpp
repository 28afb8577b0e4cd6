#include "document/picking.h"

#include "operations/edit_fixture.h"

namespace ferrowand {
namespace {

class SelectionTest : public EditTest {
 protected:
  void SetUp() override {
    Open(Box("a", 0, 0, 0) + "{\"XMPentityname\" \"group\"" + Box("in", 128, 0, 0) +
             Box("in2", 256, 0, 0) + "}" + Point("p", "\"origin\" \"32 32 256\""),
         Box("far", 512, 0, 0));
  }
  Names Selected() const {
    Names names;
    for (const entity* e : map->selection) names.push_back(e->GetKey("XMPentityname"));
    return names;
  }
};

TEST_F(SelectionTest, AGroupIsPickedAsOneUnlessItIsOpen) {
  EXPECT_EQ(&ObjectAt(Get("in")), &Get("group"));
  EXPECT_EQ(&ObjectAt(Get("a")), &Get("a"));
  Select(*map, PickableObjects(*map, PickLevel::Objects), false);
  EXPECT_EQ(Selected(), (Names{"a", "group", "p"}));
  Select(*map, PickableObjects(*map, PickLevel::Brushes), false);
  EXPECT_EQ(Selected(), (Names{"a", "in", "in2"}));
  Get("group").state = 0;
  EXPECT_EQ(&ObjectAt(Get("in")), &Get("in"));
  Select(*map, PickableObjects(*map, PickLevel::Objects), false);
  EXPECT_EQ(Selected(), (Names{"a", "in", "in2", "p"}));
}

TEST_F(SelectionTest, NothingIsSelectedTwice) {
  Select(*map, &Get("p"), false);
  Select(*map, &Get("a"), true);
  Select(*map, &Get("p"), true);
  map->selection.Add(std::vector{&Get("a"), &Get("group"), &Get("group")});
  EXPECT_EQ(Selected(), (Names{"p", "a", "group"}));
  Select(*map, nullptr, true);
  EXPECT_EQ(Selected().size(), 3u);
  Select(*map, nullptr, false);
  EXPECT_TRUE(map->selection.empty());
}

TEST_F(SelectionTest, ABoxTakesWhatItTouchesOrWhatItHolds) {
  constexpr float WIDE = Bounds::EMPTY;
  const auto box = [](float x0, float x1) { return Bounds{{x0, -8, -WIDE}, {x1, 64, WIDE}}; };
  const auto take = [&](const Bounds& bounds, BoxRule rule) {
    SelectInBox(*map, bounds, rule, PickLevel::Objects, false);
    return Selected();
  };
  EXPECT_EQ(take(box(64, 127), BoxRule::Partial), (Names{"a"}));
  EXPECT_EQ(take(box(65, 127), BoxRule::Partial), Names{});
  EXPECT_EQ(take(box(0, 130), BoxRule::Partial), (Names{"a", "group", "p"}));
  EXPECT_EQ(take(box(0, 130), BoxRule::Full), (Names{"a", "p"}));
  EXPECT_EQ(take(box(-WIDE, WIDE), BoxRule::Full), (Names{"a", "group", "p"}));
}

TEST_F(SelectionTest, NeitherHiddenNorLockedObjectsNorWhatHoldsThemAreSelectedNorAnythingTwice) {
  Pick({"in", "group", "hidden", "p"});
  Select(*map, map.get(), true);
  for (const EntityPtr& layer : map->getEntityList()) {
    Select(*map, layer.get(), true);
    for (const EntityPtr& child : layer->getEntityList()) Select(*map, child.get(), true);
  }
  EXPECT_EQ(Selected(), (Names{"in", "group", "p", "a"}));
  const std::vector<entity*> expected{&Get("group"), &Get("p"), &Get("a")};
  EXPECT_EQ(SelectedRoots(*map), expected);
  EXPECT_FALSE(IsReachable(Get("far")));
  EXPECT_FALSE(IsReachable(*map));
  EXPECT_FALSE(IsReachable(Get("main")));
}

TEST_F(SelectionTest, TheMembersOfAGroupOrALayerTakeItsPlace) {
  Pick({"group"});
  SelectMembers(*map, Get("group"), true);
  EXPECT_EQ(Selected(), (Names{"in", "in2"}));
  SelectMembers(*map, Get("main"), false);
  EXPECT_EQ(Selected(), (Names{"a", "group", "p"}));
  SelectMembers(*map, Get("hidden"), false);
  EXPECT_TRUE(map->selection.empty());
}

}  // namespace
}  // namespace ferrowand
