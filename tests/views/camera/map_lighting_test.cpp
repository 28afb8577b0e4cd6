#include "views/camera/map_lighting.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/cases.h"
#include "support/small_map.h"
#include "views/camera/camera_shapes.h"

namespace ferrowand {
namespace {

// A floor of 128 x 128 units, whose top is at 0.
class MapLightingTest : public testing::Test {
 protected:
  MapLightingTest() {
    floor = &small.AddCuboid({-64, -64, -16}, {64, 64, 0});
    for (int i = 0; i < floor->brush.getNumFaces(); ++i) {
      floor->brush.face(i).texture = small.data.wads.Default().BadTexture();
    }
  }

  // At the place of the floor's top that is nearest to the point.
  int LightAt(double x, double y, std::uint32_t flags) {
    Shape shape = ShapeOf(*floor, {});
    MapLighting(small.map, flags).Light(shape);
    for (std::size_t i = 0; i < shape.polygons.size(); ++i) {
      const ShapePoint* points = &shape.points[shape.polygons[i].begin];
      if (points[0].at.z != 0 || points[1].at.z != 0 || points[2].at.z != 0) continue;
      const LightImage& light = shape.light[i];
      if (light.width == 1) return light.luxels.front();
      const double place[] = {x, y, 0};
      const long u = std::lround((place[light.axisU] - light.beginU) / light.step);
      const long v = std::lround((place[light.axisV] - light.beginV) / light.step);
      return light.luxels[static_cast<std::size_t>(v * light.width + u)];
    }
    return -1;
  }

  SmallMap small;
  entity* floor = nullptr;
};

TEST_F(MapLightingTest, LightFallsOffWithTheDistanceAndTheAngle) {
  small.Add(
      {{"classname", "light"}, {"XMPferroflags", "2"}, {"origin", "0 0 101"}, {"light", "250"}});
  const double away = std::hypot(48.0, 100.0);
  for (const auto& [flags, x, expected] : Cases<std::uint32_t, double, double>{
           {0, 0, 75},
           {0, 48, (250 - away) / 2},
           {LIGHT_BY_ANGLE, 0, 75},
           {LIGHT_BY_ANGLE, 48, (250 - away) / 2 * (0.5 + 0.5 * 100 / away)}}) {
    EXPECT_EQ(LightAt(x, 0, flags), static_cast<int>(expected)) << flags << ' ' << x;
  }
}

TEST_F(MapLightingTest, WhatIsBehindBeyondOrOutOfTheConeIsDark) {
  entity& light = small.Add(
      {{"classname", "light"}, {"XMPferroflags", "2"}, {"origin", "0 0 101"}, {"light", "99"}});
  EXPECT_EQ(LightAt(0, 0, LIGHT_BY_ANGLE), 0);
  light.SetKey("light", "250");
  light.SetKey("origin", "0 0 -100");
  EXPECT_EQ(LightAt(0, 0, LIGHT_BY_ANGLE), 0);
  light.SetKey("origin", "0 0 101");
  light.SetKey("target", "spot");
  small.Add({{"classname", "info_null"}, {"targetname", "spot"}, {"origin", "0 0 0"}});
  EXPECT_EQ(LightAt(32, 0, 0), static_cast<int>((250 - std::hypot(32.0, 100.0)) / 2));
  EXPECT_EQ(LightAt(48, 0, 0), 0) << "20 degrees to each side";
}

TEST_F(MapLightingTest, SolidBrushesThrowShadowsAndDoorsDoNot) {
  small.Add(
      {{"classname", "light"}, {"XMPferroflags", "2"}, {"origin", "0 0 101"}, {"light", "250"}});
  entity& door = small.Add({{"classname", "func_door"}});
  small.AddCuboid({-60, -60, 40}, {-10, 60, 50}, &door);
  entity& beam = small.AddCuboid({10, -60, 40}, {60, 60, 50});
  EXPECT_EQ(LightAt(48, 0, LIGHT_SHADOWS), 0);
  EXPECT_GT(LightAt(-48, 0, LIGHT_SHADOWS), 60);
  EXPECT_GT(LightAt(0, 0, LIGHT_SHADOWS | LIGHT_FOUR_TIMES), 60);
  EXPECT_GT(LightAt(48, 0, 0), 60);
  beam.brush.face(0).SetName("*water0");
  EXPECT_GT(LightAt(48, 0, LIGHT_SHADOWS), 60);
}

}  // namespace
}  // namespace ferrowand
