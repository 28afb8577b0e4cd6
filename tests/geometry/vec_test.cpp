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

TEST(Vec, SineAndCosineAgreeWithTheLibraryAndAreExactAtRightAngles) {
  for (int degrees = -400; degrees <= 400; ++degrees) {
    const double radians = degrees * (std::acos(-1.0) / 180);
    const double slack = degrees % 90 == 0 ? 0 : 4e-15;  // right angles are exact
    const auto wanted = [&](double value) { return slack == 0 ? std::round(value) : value; };
    EXPECT_NEAR(SinDegrees(degrees), wanted(std::sin(radians)), slack) << degrees;
    EXPECT_NEAR(CosDegrees(degrees), wanted(std::cos(radians)), slack) << degrees;
  }
  EXPECT_EQ(SinDegrees(2147483647), SinDegrees(2147483647 % 360));
  EXPECT_EQ(CosDegrees(-2147483647 - 1), CosDegrees((-2147483647 - 1) % 360));
}

}  // namespace
}  // namespace ferrowand
