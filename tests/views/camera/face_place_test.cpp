#include "views/camera/face_place.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace ferrowand {
namespace {

TEST(FacePlaceTest, WhatIsPutThereStandsOnTheFaceAndOnTheGridAcrossIt) {
  std::mt19937 random(7);
  const auto number = [&random](int least, int most) {
    return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
  };
  for (int i = 0; i < 2000; ++i) {
    const bool isAxial = i % 4 == 0;
    DVec3 normal(number(-9, 9), number(-9, 9), number(-9, 9));
    if (isAxial) normal = i % 8 == 0 ? DVec3(0, 0, 1) : DVec3(-1, 0, 0);
    if (Length(normal) == 0) continue;
    normal = Normalise(normal);
    const DVec3 point(number(-900, 900), number(-900, 900), number(-900, 900));
    const bool snaps = i % 3 != 0;
    const Bounds box{{float(-number(0, 40)), float(-number(0, 40)), float(-number(0, 40))},
                     {float(number(0, 40)), float(number(0, 40)), float(number(0, 40))}};
    const Vec3 way = FacePlace(point, normal, {.grid = 4, .snap = snaps}).WayFor(box);
    double nearest = 1e9;
    int whole = 0, onGrid = 0;
    for (int corner = 0; corner < 8; ++corner) {
      DVec3 p(way);
      for (int axis = 0; axis < 3; ++axis) {
        p[axis] += corner >> axis & 1 ? box.maxs[axis] : box.mins[axis];
      }
      nearest = std::min(nearest, Dot(p - point, normal));
    }
    for (int axis = 0; axis < 3; ++axis) {
      whole += way[axis] == std::round(way[axis]) ? 1 : 0;
      onGrid += std::fmod(way[axis], 16) == 0 ? 1 : 0;
    }
    ASSERT_GE(nearest, -0.02) << i;
    ASSERT_LE(nearest, isAxial ? 0 : 1.02) << i;
    ASSERT_EQ(whole, 3) << i;
    ASSERT_GE(onGrid, snaps ? 2 : 0) << i;
  }
}

TEST(FacePlaceTest, ABoxIsDrawnOnTheFaceAndGrowsAwayFromIt) {
  CameraPicture above{.size = {200, 200}};
  above.pose.eye = {0, 0, 300};
  above.pose.Face(0, 90);
  const SpaceRules rules{.grid = 5, .snap = true};
  const FacePlace floor({10, -10, 8}, {0, 0, 1}, rules);
  // Sixty degrees over 200 pixels: 292 units below the eye a pixel is 1.69 of them. Up is ahead.
  const Bounds box = floor.BoxTo({160, 160}, above, 64);
  EXPECT_EQ(box.mins, Vec3(-96, -96, 8));
  EXPECT_EQ(box.maxs, Vec3(0, 0, 72));
  const FacePlace ceiling({10, -10, 400}, {0, 0, -1}, rules);
  above.pose.Face(0, -89);
  EXPECT_EQ(ceiling.BoxTo({100, 100}, above, 64).mins.z, 336);
  EXPECT_EQ(ceiling.BoxTo({100, 100}, above, 64).maxs.z, 400);
  // Beyond the horizon it ends somewhere within the world.
  above.pose.Face(0, 0);
  const Bounds far = floor.BoxTo({100, 10}, above, 64);
  EXPECT_LT(far.maxs.x, 5000);
  EXPECT_GE(far.maxs.x, far.mins.x);
}

}  // namespace
}  // namespace ferrowand
