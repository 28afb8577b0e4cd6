#include "views/view_transform.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/cases.h"

namespace ferrowand {
namespace {

TEST(ViewTransform, ACoordinateLosesItsFractionBeforeTheOriginIsTaken) {
  ViewTransform view;
  view.originu = 1;
  view.scaleu = 1;
  // 2.9 counts as 2 and -2.9 as -2; subtracting first would give 2 and -4.
  EXPECT_EQ(view.ToScreenU(2.9f), 1);
  EXPECT_EQ(view.ToScreenU(-2.9f), -3);
}

TEST(ViewTransform, PixelsAreRoundedHalfAwayFromZero) {
  const ViewTransform view;  // 4 units a pixel, up is up
  const Cases<float, int, int> cases{{2, 1, -1}, {-2, -1, 1}, {1, 0, 0},
                                     {6, 2, -2}, {-5, -1, 1}, {400, 100, -100}};
  for (const auto& [world, across, down] : cases) {
    EXPECT_EQ(view.ToScreenU(world), across) << world;
    EXPECT_EQ(view.ToScreenV(world), down) << world;
  }
}

TEST(ViewTransform, CoordinatesWrapAtSixteenBits) {
  ViewTransform view;
  view.scaleu = 1;
  EXPECT_EQ(view.ToScreenU(32767), 32767);
  EXPECT_EQ(view.ToScreenU(32768), -32768);
  EXPECT_EQ(view.ToScreenU(65540.5f), 4);
  EXPECT_EQ(view.ToScreenU(1e20f), 0);
  EXPECT_EQ(view.ToScreenU(std::numeric_limits<float>::quiet_NaN()), 0);
}

TEST(ViewTransform, AWorldPointComesBackFromItsPixelWithinHalfAPixel) {
  ViewTransform view;
  for (const float scale : {1 / 64.0f, 0.5f, 1.0f, 8.0f}) {
    view.scaleu = scale;
    view.scalev = -scale;
    view.originu = -100;
    view.originv = 300;
    for (int world = -200; world <= 200; world += 7) {
      const float w = static_cast<float>(world);
      EXPECT_NEAR(view.ToWorldU(view.ToScreenU(w)), world, scale / 2);
      EXPECT_NEAR(view.ToWorldV(view.ToScreenV(w)), world, scale / 2);
    }
  }
}

}  // namespace
}  // namespace ferrowand
