#include "geometry/box_tree.h"

#include <gtest/gtest.h>

#include <random>

namespace ferrowand {
namespace {

TEST(BoxTreeTest, BoxesOverlapOnlyWithVolume) {
  const Bounds box{{0, 0, 0}, {8, 8, 8}};
  EXPECT_TRUE(BoxesOverlap(box, box));
  EXPECT_TRUE(BoxesOverlap(box, {{7, 7, 7}, {9, 9, 9}}));
  for (int axis = 0; axis < 3; ++axis) {
    Bounds after = box, before = box;
    after.mins[axis] = 8;
    after.maxs[axis] = 16;
    before.mins[axis] = -8;
    before.maxs[axis] = 0;
    EXPECT_FALSE(BoxesOverlap(box, after));
    EXPECT_FALSE(BoxesOverlap(box, before));
  }
  EXPECT_FALSE(BoxesOverlap(box, Bounds()));
}

TEST(BoxTreeTest, ATreeFindsWhatALookAtAllFinds) {
  std::mt19937 random(9);
  std::uniform_int_distribution<int> place(-200, 200), size(0, 60);
  const auto box = [&] {
    const Vec3 at(Vec3(static_cast<float>(place(random)), static_cast<float>(place(random)), 0));
    const Vec3 by(static_cast<float>(size(random)), static_cast<float>(size(random)), 9);
    return Bounds{at, at + by};
  };
  for (const std::size_t count : {0, 1, 9, 700}) {
    std::vector<Bounds> boxes;
    while (boxes.size() < count) boxes.push_back(boxes.size() % 50 == 7 ? Bounds() : box());
    const BoxTree tree(boxes);
    for (int query = 0; query < 50; ++query) {
      const Bounds wanted = box();
      std::vector<std::size_t> expected;
      for (std::size_t i = 0; i < count; ++i) {
        if (BoxesOverlap(boxes[i], wanted)) expected.push_back(i);
      }
      EXPECT_EQ(tree.Overlapping(wanted), expected);
    }
  }
}

}  // namespace
}  // namespace ferrowand
