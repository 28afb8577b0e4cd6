#include "operations/snap_corners.h"

#include <random>

#include "operations/brush_check.h"
#include "operations/edit_fixture.h"
#include "operations/primitives.h"
#include "operations/transform_selection.h"
#include "support/brush_checks.h"

namespace ferrowand {
namespace {

class Status : public MapObserver {
 public:
  explicit Status(Map& map) : map_(map) { map.AddObserver(*this); }
  ~Status() override { map_.RemoveObserver(*this); }
  Status(const Status&) = delete;
  Status& operator=(const Status&) = delete;
  void OnStatus(const std::string& said) override { text = said; }
  std::string text;

 private:
  Map& map_;
};

class SnapCornersTest : public EditTest {
 protected:
  static bool IsWhole(const Brush& brush, int grid = 1) {
    for (const Face& face : brush.Faces()) {
      for (const WindingPoint& p : std::as_const(*face.w).Points()) {
        for (const float part : {p.x, p.y, p.z}) {
          if (part / static_cast<float>(grid) != std::round(part / static_cast<float>(grid)))
            return false;
        }
      }
    }
    return true;
  }
};

TEST_F(SnapCornersTest, ATurnByRightAnglesLeavesWholeCornersOnWholeUnits) {
  std::minstd_rand random(3);
  for (int round = 0; round < 200; ++round) {
    int at[6];
    for (int i = 0; i < 3; ++i) {
      at[i] = static_cast<int>(random() % 64) - 32;
      at[3 + i] = at[i] + 1 + static_cast<int>(random() % 65);
    }
    Open(Block("a", at[0], at[1], at[2], at[3], at[4], at[5]));
    Pick({"a"});
    const Bounds before = Get("a").brush.Box();
    const Vec3 size = before.maxs - before.mins;
    const int u = static_cast<int>(random() % 3), v = (u + 1) % 3;
    for (int turn = 1; turn <= 4; ++turn) {
      const DVec3 middle =
          (DVec3(SelectionBounds(*map).mins) + DVec3(SelectionBounds(*map).maxs)) * 0.5;
      ASSERT_EQ(RotateSelection(*map, u, v, 90, middle, {}), EditResult::Done);
      ASSERT_TRUE(IsWhole(Get("a").brush));
      Vec3 turned = Get("a").brush.Box().maxs - Get("a").brush.Box().mins;
      if (turn % 2 == 1) std::swap(turned[u], turned[v]);
      ASSERT_EQ(turned, size);
    }
    EXPECT_EQ(Get("a").brush.Box(), before) << "four turns are none";
    for (const Matrix& matrix : {TurnMatrix(DVec3(90, 0, 90)), TurnMatrix(DVec3(90, 90, 0)),
                                 Matrix::Diagonal(-1, 1, 1), Matrix::Diagonal(-1, -1, -1)}) {
      const Bounds old = SelectionBounds(*map);
      TransformSelection(*map, matrix, (DVec3(old.mins) + DVec3(old.maxs)) * 0.5, {});
      ASSERT_TRUE(IsWhole(Get("a").brush));
    }
  }
}

TEST_F(SnapCornersTest, WhatIsBetweenUnitsAnywayTurnsWhereItIs) {
  Open(Point("p", "\"origin\" \"16.25 8 0\""));
  Pick({"p"});
  EXPECT_EQ(RotateSelection(*map, 0, 1, 90, {16.25, 8, 0}, {}), EditResult::Done);
  EXPECT_EQ(Get("p").Origin(), Vec3(16.25f, 8, 0));
  Open(Point("p", "\"origin\" \"0 0 0\"") + Point("q", "\"origin\" \"1 0 0\""));
  Pick({"p", "q"});
  EXPECT_EQ(RotateSelection(*map, 0, 1, 90, {0.5, 0, 0}, {}), EditResult::Done);
  for (const char* name : {"p", "q"}) {
    EXPECT_EQ(Get(name).Origin().x, std::round(Get(name).Origin().x));
    EXPECT_EQ(Get(name).Origin().y, std::round(Get(name).Origin().y));
  }
}

TEST_F(SnapCornersTest, WhatEndsBetweenUnitsIsToldAndSnapped) {
  const Status status(*map);
  Pick({"a", "b"});
  RotateSelection(*map, 0, 1, 90, {1, 1, 1}, {});
  EXPECT_EQ(status.text, "");
  RotateSelection(*map, 0, 1, 30, {1, 1, 1}, {});
  EXPECT_EQ(status.text,
            "2 brushes have corners between whole units: Operate/Snap to grid puts them there");
  Get("p").SetOrigin(Vec3(0.4f, 0, 0));
  Select(*map, &Get("p"), true);
  const std::string before = Text();
  EXPECT_EQ(SnapSelection(*map, 1), EditResult::Done);
  EXPECT_EQ(status.text, "Snapped to the grid: 2 brushes and 1 origin");
  EXPECT_TRUE(IsWhole(Get("a").brush) && IsWhole(Get("b").brush));
  EXPECT_EQ(Get("p").Origin(), Vec3(0, 0, 0));
  ExpectOneStep(before);
  const std::size_t steps = map->undo.StepCount();
  EXPECT_EQ(SnapSelection(*map, 1), EditResult::Done);
  EXPECT_EQ(status.text, "All of it is on the grid");
  EXPECT_EQ(map->undo.StepCount(), steps);
  EXPECT_EQ(SnapSelection(*map, 256), EditResult::Done);
  EXPECT_EQ(status.text,
            "Nothing was snapped; 2 brushes would not stay sound there and stayed as before");
  map->selection.Clear();
  EXPECT_EQ(SnapSelection(*map, 1), EditResult::NothingSelected);
}

// Any solid, turned any way: what is snapped is sound, whole and near what it was.
TEST_F(SnapCornersTest, WhatIsSnappedIsASolidOnTheGridNearWhereItWas) {
  std::minstd_rand random(5);
  int snapped = 0, left = 0;
  for (int round = 0; round < 150; ++round) {
    Open("");
    const auto kind = static_cast<PrimitiveKind>(random() % 4);
    const Vec3 size(static_cast<float>(16 + random() % 200),
                    static_cast<float>(16 + random() % 200),
                    static_cast<float>(16 + random() % 200));
    ASSERT_TRUE(AddPrimitive(*map, {kind, {{0, 0, 0}, size}, 2, 3 + static_cast<int>(random() % 6)},
                             "wall"));
    const DVec3 angles(round % 3 == 0 ? 0 : static_cast<double>(random() % 90), 0,
                       static_cast<double>(random() % 360));
    if (TransformSelection(*map, TurnMatrix(angles), {8, 8, 8}, {}) != EditResult::Done) continue;
    const Brush& brush = map->selection.front()->brush;
    const Bounds before = brush.Box();
    const int grid = 1 << random() % 3;
    const std::size_t steps = map->undo.StepCount();
    ASSERT_EQ(SnapSelection(*map, grid), EditResult::Done);
    if (map->undo.StepCount() == steps) {
      left += !IsWhole(brush, grid);
      continue;
    }
    ++snapped;
    ASSERT_TRUE(IsSolid(brush)) << round;
    ASSERT_TRUE(IsWhole(brush, grid)) << round;
    ASSERT_TRUE(SurvivesSaving(brush, reporter)) << round;
    for (int axis = 0; axis < 3; ++axis) {
      ASSERT_LE(std::abs(brush.Box().mins[axis] - before.mins[axis]),
                static_cast<float>(grid) / 2 + 0.02f);
      ASSERT_LE(std::abs(brush.Box().maxs[axis] - before.maxs[axis]),
                static_cast<float>(grid) / 2 + 0.02f);
    }
  }
  EXPECT_GT(snapped, 2 * left);
}

}  // namespace
}  // namespace ferrowand
