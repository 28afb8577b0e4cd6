#include "views/hit_test.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

#include "support/cases.h"
#include "support/random_user.h"
#include "support/small_map.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

// One unit a pixel, up is up.
ViewTransform Plain(int u = 0, int v = 1) {
  return {.orienu = static_cast<std::uint8_t>(u),
          .orienv = static_cast<std::uint8_t>(v),
          .scaleu = 1,
          .scalev = -1};
}

TEST(PolygonTest, PointsInsideAndOnAnEdgeAreHitsAndNoOthers) {
  using Polygon = std::array<Pixel, 4>;
  const Polygon diamond{Pixel{0, -10}, {10, 0}, {0, 10}, {-10, 0}};
  const Polygon line{Pixel{0, 5}, {8, 5}, {8, 5}, {0, 5}};  // seen edge-on
  const Cases<const Polygon&, Pixel, bool> cases{
      {diamond, {0, 0}, true},    {diamond, {-9, 0}, true},  {diamond, {5, 5}, true},
      {diamond, {10, 0}, true},   {diamond, {0, -10}, true}, {diamond, {6, 5}, false},
      {diamond, {-20, 0}, false}, {diamond, {11, 0}, false}, {diamond, {0, -11}, false},
      {diamond, {-5, 10}, false}, {line, {4, 5}, true},      {line, {4, 6}, false},
      {line, {9, 5}, false},      {line, {-3, 5}, false}};
  for (const auto& [polygon, at, inside] : cases) {
    EXPECT_EQ(IsInside(at, polygon), inside) << at.x << " " << at.y;
  }
}

class HitTestTest : public testing::Test {
 protected:
  entity* HitAt(Pixel at, PickLevel level = PickLevel::Objects) {
    const ViewTransform transform = Plain();
    return HitTest(small.map, {.transform = transform, .at = at, .level = level}).object;
  }

  SmallMap small;
};

TEST(PolygonTest, ARectangleMeetsAnEdgeWithoutACornerOfIt) {
  const std::vector<Pixel> triangle{{0, 0}, {100, 0}, {0, 100}};
  for (const auto& [closed, meets] : Cases<PixelRect, bool>{{{40, 40, 60, 60}, true},
                                                            {{60, 60, 90, 90}, false},
                                                            {{10, 10, 30, 30}, false},
                                                            {{40, -10, 60, 0}, true},
                                                            {{40, -10, 60, -1}, false},
                                                            {{-5, -5, 200, 200}, true}}) {
    EXPECT_EQ(MeetsOutline(closed, triangle), meets) << closed.left << " " << closed.bottom;
  }
}

TEST_F(HitTestTest, TheFaceTurnedToTheEyeIsHitInEveryOrientation) {
  const entity& cube = small.AddCuboid({0, 0, 0}, {64, 64, 64});
  const int axes[][2] = {{0, 1}, {0, 2}, {1, 2}};
  // Towards the eye: up, against Y, along X.
  const DVec3 towards[] = {{0, 0, 1}, {0, -1, 0}, {1, 0, 0}};
  for (int i = 0; i < 3; ++i) {
    const ViewTransform transform = Plain(axes[i][0], axes[i][1]);
    const int face = FaceAt(cube.brush, transform, {30, -30});
    ASSERT_NE(face, NO_FACE);
    EXPECT_EQ(cube.brush.face(face).plane.normal, towards[i]);
    EXPECT_EQ(FaceAt(cube.brush, transform, {65, -30}), NO_FACE);
  }
}

TEST_F(HitTestTest, AFaceSeenEdgeOnIsStillHit) {
  entity& cube = small.AddCuboid({0, 0, 0}, {64, 64, 64});
  // A slant of less than the tolerance, away from the eye: only its edge is seen.
  for (int i = 0; i < cube.brush.getNumFaces(); ++i) {
    Face& face = cube.brush.face(i);
    face.plane.normal.z = face.plane.normal.x == 1 ? -0.00005 : -1;
  }
  EXPECT_NE(FaceAt(cube.brush, Plain(), {64, -30}), NO_FACE);
  EXPECT_EQ(FaceAt(cube.brush, Plain(), {30, -30}), NO_FACE);
  for (int i = 0; i < cube.brush.getNumFaces(); ++i) cube.brush.face(i).plane.normal.z -= 0.0001;
  EXPECT_EQ(FaceAt(cube.brush, Plain(), {64, -30}), NO_FACE);
}

TEST_F(HitTestTest, TheFirstInMapOrderIsHitPointEntitiesInTheirClassBoxes) {
  entity& first = small.AddCuboid({0, 0, 0}, {64, 64, 64});
  entity& second = small.AddCuboid({32, 0, 64}, {96, 64, 128});
  entity& light = small.Add({{"classname", "light"}, {"origin", "100 100 0"}});
  EXPECT_EQ(HitAt({40, -10}), &first);
  EXPECT_EQ(HitAt({70, -10}), &second);
  EXPECT_EQ(HitAt({97, -10}), nullptr);
  EXPECT_EQ(HitAt({108, -92}), &light);
  EXPECT_EQ(HitAt({109, -92}), nullptr);
  EXPECT_EQ(HitAt({108, -92}, PickLevel::Brushes), nullptr);
}

TEST_F(HitTestTest, AClickMeansTheNearestLineThenTheSmallerBoxThenTheFirst) {
  entity& room = small.AddCuboid({0, 0, 0}, {256, 256, 64});
  entity& crate = small.AddCuboid({64, 0, 0}, {96, 32, 32});
  entity& light = small.Add({{"classname", "light"}, {"origin", "80 16 0"}});
  const ViewTransform transform = Plain();
  for (const auto& [at, object] : Cases<Pixel, entity*>{{{67, -16}, &crate},
                                                        {{74, -16}, &light},
                                                        {{68, -26}, &room},
                                                        {{80, -1}, &crate},
                                                        {{2, -16}, &room},
                                                        {{80, -16}, &room},
                                                        {{300, -16}, nullptr}}) {
    EXPECT_EQ(ClickTest(small.map, {.transform = transform, .at = at}).object, object)
        << at.x << " " << at.y;
  }
}

TEST_F(HitTestTest, InALargeLayerTheSameIsHitAfterEveryChangeAsWithoutItsBoxes) {
  std::mt19937 random(5);
  const auto pick = [&](int most) { return static_cast<float>(random() % unsigned(most)); };
  for (int i = 0; i < 400; ++i) {
    const Vec3 at(pick(900), pick(900), pick(100));
    entity& cube = small.AddCuboid(at, at + Vec3(16 + pick(60), 16 + pick(60), 16));
    if (i % 50 == 0) cube.SetKey("origin", "700 700 0");
  }
  ChildBoxes boxes;
  const ViewTransform transform = Plain();
  const TempDir dir;
  RandomUser user(small.map, dir.Path("group.xmp"), 3);
  int hits = 0;
  for (int step = 0; step < 60; ++step) {
    for (int i = 0; i < 40; ++i) {
      const Pixel at{static_cast<int>(pick(950)), -static_cast<int>(pick(950))};
      const HitQuery slow{.transform = transform, .at = at};
      const HitQuery fast{.transform = transform, .at = at, .boxes = &boxes};
      const Hit hit = ClickTest(small.map, slow);
      ASSERT_EQ(ClickTest(small.map, fast).object, hit.object) << step;
      ASSERT_EQ(HitTest(small.map, fast).object, HitTest(small.map, slow).object) << step;
      hits += hit.object != nullptr;
    }
    small.sink.answers.assign(1, Answer::Yes);
    step % 5 == 4 ? small.map.undo.Undo() : (void)user.DoSomething();
  }
  EXPECT_GT(hits, 500);
}

TEST_F(HitTestTest, ABrushFarOutsideIsHitWhereTheViewShowsIt) {
  // 65536 units away wraps around to the same pixels.
  entity& far = small.AddCuboid({0, 0, 0}, {64, 64, 64});
  far.brush.Translate({65536, 0, 0});
  EXPECT_EQ(HitAt({30, -30}), &far);
}

TEST_F(HitTestTest, ABrushIsHitUpToItsEdgesAtEveryZoom) {
  entity& box = small.AddCuboid({0, 0, 0}, {16, 16, 16});
  for (const float scale : {0.125f, 0.25f, 1.0f, 4.0f}) {
    ViewTransform transform = Plain();
    transform.scaleu = scale;
    transform.scalev = -scale;
    const int last = static_cast<int>(16 / scale), middle = last / 2;
    for (const Pixel at : {Pixel{0, -middle}, {last, -middle}, {middle, 0}, {middle, -last}}) {
      const HitQuery query{.transform = transform, .at = at};
      EXPECT_EQ(HitTest(small.map, query).object, &box) << scale;
    }
    const HitQuery outside{.transform = transform, .at = {last + 1, 0}};
    EXPECT_EQ(HitTest(small.map, outside).object, nullptr);
  }
}

TEST_F(HitTestTest, AClickTakesTheGroupOrTheBrush) {
  entity& door = small.Add({{"classname", "func_door"}});
  entity& ofDoor = small.AddCuboid({0, 0, 0}, {64, 64, 64}, &door);
  entity& group = small.Add({{"classname", "brush"}, {"groupFather", "1"}});
  entity& ofGroup = small.AddCuboid({0, 0, 0}, {64, 64, 64}, &group);
  EXPECT_EQ(&PickedBy(ofDoor, PickLevel::Brushes), &ofDoor);
  EXPECT_EQ(&PickedBy(ofGroup, PickLevel::Brushes), &group);
  door.state = group.state = 0;
  EXPECT_EQ(&PickedBy(ofGroup, PickLevel::Brushes), &ofGroup);
}

}  // namespace
}  // namespace ferrowand
