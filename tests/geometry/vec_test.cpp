#include "geometry/vec.h"

#include <gtest/gtest.h>

namespace ferrowand {
namespace {

TEST(Vec, RoundingGoesHalfAwayFromZeroAndNeverOverflows) {
  constexpr std::int32_t MOST = 2147483647, LEAST = -MOST - 1;
  constexpr double NONE = std::numeric_limits<double>::quiet_NaN(), ENDLESS = HUGE_VAL;
  const std::pair<double, std::int32_t> cases[] = {
      {15.5, 16},  {-15.5, -16},  {15.49, 15},        {-0.4, 0}, {-0.5, -1},
      {4e9, MOST}, {-4e9, LEAST}, {MOST + 0.4, MOST}, {NONE, 0}, {ENDLESS, MOST}};
  for (const auto& [value, rounded] : cases) EXPECT_EQ(RoundToInt(value), rounded) << value;
}

TEST(Vec, RightAnglesAreExactInEveryTurn) {
  for (const int turn : {0, 360, -360, 3600, -720}) {
    EXPECT_EQ(CosDegrees(turn), 1);
    EXPECT_EQ(CosDegrees(turn + 90), 0);
    EXPECT_EQ(CosDegrees(turn + 180), -1);
    EXPECT_EQ(CosDegrees(turn + 270), 0);
    EXPECT_EQ(SinDegrees(turn), 0);
    EXPECT_EQ(SinDegrees(turn + 90), 1);
    EXPECT_EQ(SinDegrees(turn + 180), 0);
    EXPECT_EQ(SinDegrees(turn + 270), -1);
  }
}

TEST(Vec, SineAndCosineAgreeWithTheLibraryAtEveryDegree) {
  for (int degrees = -400; degrees <= 400; ++degrees) {
    const double radians = degrees * (std::acos(-1.0) / 180);
    EXPECT_NEAR(SinDegrees(degrees), std::sin(radians), 4e-15) << degrees;
    EXPECT_NEAR(CosDegrees(degrees), std::cos(radians), 4e-15) << degrees;
  }
  EXPECT_EQ(SinDegrees(2147483647), SinDegrees(2147483647 % 360));
  EXPECT_EQ(CosDegrees(-2147483647 - 1), CosDegrees((-2147483647 - 1) % 360));
}

TEST(Vec, AnEmptyBoxAddsNothingToAnother) {
  Bounds box;
  EXPECT_TRUE(box.IsEmpty());
  EXPECT_EQ(box.mins, Vec3(99999, 99999, 99999));
  EXPECT_EQ(box.maxs, Vec3(-99999, -99999, -99999));
  box.Add(Vec3(1, 2, 3));
  const Bounds before = box;
  box.Add(Bounds());
  EXPECT_EQ(box, before);
}

}  // namespace
}  // namespace ferrowand
