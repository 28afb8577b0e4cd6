#include "operations/hollow.h"

#include <algorithm>
#include <random>
#include <string>

#include "geometry/tolerance.h"
#include "operations/edit_fixture.h"
#include "operations/groups.h"
#include "operations/visibility.h"
#include "support/brush_checks.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

class HollowTest : public EditTest {
 protected:
  // A cube of that side at each place on the X axis, all selected.
  entity& OpenCubes(std::initializer_list<int> places) {
    std::string cubes;
    for (const int x : places) cubes += Box("cube", x, 0, 0);
    Open(cubes);
    for (const EntityPtr& cube : Get("main").getEntityList()) Select(*map, cube.get(), true);
    return *map->selection.front();
  }
};

TEST_F(HollowTest, AWallWidthIsAWholeNumberButZero) {
  for (const char* text : {"", " ", "0", "-0", "4.5", "8x", "x", "99999999999", "- 4", "0x10"}) {
    EXPECT_FALSE(ParseWallWidth(text)) << text;
  }
  EXPECT_EQ(ParseWallWidth("16"), 16);
  EXPECT_EQ(ParseWallWidth(" -8 "), -8);
}

TEST_F(HollowTest, WallsStandInsideTheBrushOrAroundIt) {
  const Cases<int, Bounds, double> cases{
      {8, {{0, 0, 0}, {64, 64, 64}}, 64 * 64 * 64 - 48 * 48 * 48},
      {-8, {{-8, -8, -8}, {72, 72, 72}}, 80 * 80 * 80 - 64 * 64 * 64},
      {31, {{0, 0, 0}, {64, 64, 64}}, 64 * 64 * 64 - 2 * 2 * 2},
  };
  for (const auto& [width, box, expected] : cases) {
    entity& target = OpenCubes({0});
    const std::string before = Text();
    EXPECT_TRUE(HollowSelection(*map, width));
    ASSERT_EQ(target.getEntityList().size(), 6u);
    double volume = 0;
    for (const EntityPtr& wall : target.getEntityList()) {
      EXPECT_TRUE(IsSolid(wall->brush));
      EXPECT_TRUE(IsOnWholeUnits(wall->brush));
      volume += Volume(wall->brush);
    }
    EXPECT_DOUBLE_EQ(volume, expected);
    EXPECT_EQ(target.brush.getNumFaces(), 0);
    EXPECT_EQ(target.GetBounds(), box);
    ExpectOneStep(before);
  }
}

TEST_F(HollowTest, WhatIsHiddenInAGroupStays) {
  OpenCubes({0, 100, 200});
  GroupSelection(*map);
  entity& group = *map->selection.front();
  entity& hidden = *group.getEntityList()[1];
  map->selection.Set({&hidden});
  HideSelection(*map);
  map->selection.Set({&group});
  EXPECT_TRUE(HollowSelection(*map, 8));
  EXPECT_EQ(hidden.brush.getNumFaces(), 6);
  EXPECT_EQ(group.getEntityList()[0]->brush.getNumFaces(), 0);
}

TEST_F(HollowTest, WhatIsTooSmallForItsWallsStaysAndIsReportedOnce) {
  for (const int width : {32, 40, 2000000000, -33000, -2147483647 - 1}) {
    OpenCubes({0, 100});
    const std::string before = Text();
    recorder.messages.clear();
    EXPECT_FALSE(HollowSelection(*map, width)) << width;
    EXPECT_EQ(recorder.OnlyText().substr(0, 24), "2 of the brushes could n") << width;
    EXPECT_EQ(Text(), before) << width;
    EXPECT_FALSE(map->undo.CanUndo());
  }
  recorder.messages.clear();
  HollowSelection(*map, 0);
  EXPECT_NE(recorder.OnlyText().find("must be an integer, and not equal to 0"), std::string::npos);
}

TEST_F(HollowTest, RandomSolidsBecomeSoundWallsOrStay) {
  std::mt19937 random(6);
  int hollow = 0;
  for (int round = 0; round < 200; ++round) {
    const Brush brush = RandomBlock(random, {96, 192, 288}, 256, reporter);
    entity& target = OpenCubes({0});
    target.brush = brush.Copy();
    const int width = round % 2 ? 8 : -8;
    HollowSelection(*map, width);
    if (target.getEntityList().empty()) {
      EXPECT_EQ(target.brush.getNumFaces(), brush.getNumFaces());
      continue;
    }
    ++hollow;
    for (const EntityPtr& wall : target.getEntityList()) {
      EXPECT_TRUE(IsSolid(wall->brush));
      // Each ends in a cap, which looks like the face behind it.
      const Face& cap = wall->brush.Faces().back();
      const auto behind = std::ranges::find_if(brush.Faces(), [&](const Face& face) {
        return Dot(face.plane.normal, -cap.plane.normal) > SAME_NORMAL;
      });
      ASSERT_NE(behind, brush.Faces().end());
      EXPECT_EQ(cap.Name(), behind->Name());
    }
    EXPECT_EQ(target.GetBounds() == brush.Box(), width > 0);
  }
  EXPECT_GT(hollow, 180);
}

}  // namespace
}  // namespace ferrowand
