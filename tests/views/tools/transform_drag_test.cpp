#include "views/tools/transform_drag.h"

#include <gtest/gtest.h>

#include "support/cases.h"
#include "support/recorder.h"

namespace ferrowand {
namespace {

const ViewBox BOX{{0, 0}, {64, 128}};

TEST(MoveDragTest, TheCornerGoesOntoTheGridEvenFromOffIt) {
  const Cases<ViewBox, ViewInts, bool, std::array<bool, 2>, ViewPoint, const char*> cases{
      {BOX, {70, -40}, true, {true, true}, {64, -64}, "Translating: (64, -64)"},
      {BOX, {31, 32}, true, {true, true}, {0, 64}, "Translating: (0, 64)"},
      {{{10, -10}, {20, 20}}, {1, 0}, true, {true, true}, {-10, 10}, "Translating: (-10, 10)"},
      {BOX, {70, -40}, false, {true, true}, {70, -40}, "Translating: (70, -40)"},
      {{{10, 0}, {20, 20}}, {70, 70}, true, {false, true}, {0, 64}, "Translating: (0, 64)"},
      {{{0.5, 0}, {20, 20}}, {64, 0}, true, {true, true}, {63.5, 0}, "Translating: (64, 0)"},
  };
  for (const auto& [box, cursor, snap, edits, by, status] : cases) {
    const MoveStep step = DragMove(box, {0, 0}, cursor, {0, 0}, {.edits = edits, .snap = snap});
    EXPECT_EQ(step.by, by) << status;
    EXPECT_EQ(step.status, status);
  }
  EXPECT_EQ(DragMove(BOX, {8, 8}, {72, 8}, {3, -5}, {.snap = true}).by, (ViewPoint{67, -5}));
}

TEST(ScaleDragTest, TheDraggedEdgeKeepsOneGridStepFromTheAnchor) {
  MessageRecorder sink;
  Reporter reporter(sink);
  const ViewBox square{{0, 0}, {64, 64}};
  const DragRules grid{.snap = true}, free, across{.edits = {true, false}};
  const Cases<ViewInts, ViewInts, ViewInts, DragRules, ViewPoint, const char*> cases{
      {{0, 0}, {-1, -1}, {130, 60}, grid, {128, 64}, "Scaling: (-128.0x-64.0), (2.00x1.00)"},
      {{0, 0}, {-1, 0}, {10, 999}, grid, {64, 64}, "Scaling: (-64.0x-64.0), (1.00x1.00)"},
      {{0, 0}, {-1, 0}, {-500, 0}, grid, {64, 64}, "Scaling: (-64.0x-64.0), (1.00x1.00)"},
      {{64, 0}, {1, 0}, {100, 0}, grid, {0, 64}, "Scaling: (64.0x-64.0), (1.00x1.00)"},
      {{64, 0}, {1, 0}, {-32, 0}, free, {-32, 64}, "Scaling: (96.0x-64.0), (1.50x1.00)"},
      {{0, 64}, {0, 1}, {0, -65}, grid, {64, -64}, "Scaling: (-64.0x128.0), (1.00x2.00)"},
      {{0, 0}, {-1, 0}, {90, 0}, free, {90, 64}, "Scaling: (-90.0x-64.0), (1.41x1.00)"},
      // An axis that is not edited keeps its edges.
      {{0, 0}, {-1, -1}, {640, 640}, across, {640, 64}, "Scaling: (-640.0x-64.0), (10.00x1.00)"},
  };
  for (const auto& [anchor, direction, cursor, rules, dragged, status] : cases) {
    const ScaleStep step = DragScale(square, anchor, direction, cursor, rules, reporter);
    EXPECT_EQ(step.dragged, dragged) << status;
    EXPECT_EQ(step.status, status);
  }
  EXPECT_TRUE(sink.messages.empty());
}

TEST(ScaleDragTest, AnAnchorOffTheBoxIsAFailedAssertion) {
  const Cases<ViewBox, ViewInts, const char*> cases{
      {BOX, {5, 0}, "p->snap.x==((SI)maxs[p->orienu])"},
      {BOX, {0, 5}, "p->snap.y==((SI)maxs[p->orienv])"},
      // An anchor holds whole units.
      {{{0, 0}, {64.75, 64}}, {64, 64}, nullptr}};
  for (const auto& [box, anchor, expression] : cases) {
    MessageRecorder sink;
    Reporter reporter(sink);
    DragScale(box, anchor, {0, 0}, {0, 0}, {}, reporter);
    ASSERT_EQ(sink.messages.size(), expression ? 1u : 0u);
    if (!expression) continue;
    EXPECT_NE(sink.OnlyText().find(expression), std::string::npos) << sink.OnlyText();
    EXPECT_NE(sink.OnlyText().find("qvtool"), std::string::npos);
  }
}

TEST(RotateDragTest, TheAngleIsMeasuredClockwiseFromTheRight) {
  const Cases<ViewInts, int> cases{{{10, 0}, 0},      {{10, -10}, 45}, {{0, -10}, 90},
                                   {{-10, -10}, 135}, {{-10, 0}, 180}, {{-10, 10}, 225},
                                   {{0, 10}, 270},    {{10, 10}, -45}, {{0, 0}, 270}};
  for (const auto& [point, angle] : cases) {
    EXPECT_EQ(AngleOf({100, 100}, {100 + point[0], 100 + point[1]}), angle) << angle;
  }
}

TEST(RotateDragTest, AFullTurnStaysAFullTurnAndTheCornersFollowTheCursor) {
  const Cases<int, ViewInts, bool, int> cases{
      {-90, {0, 10}, false, 360},  // 270 - -90
      {0, {10, 0}, false, 0},     {270, {10, 10}, false, 45}, {180, {0, -10}, false, 270},
      {-8, {10, 0}, true, 15},    {-22, {10, 0}, true, 15},   {-7, {10, 0}, true, 0},
      {-23, {10, 0}, true, 30},   {1, {10, 0}, true, 360},    {8, {10, 0}, true, 345},
  };
  for (const auto& [start, cursor, snap, angle] : cases) {
    const RotateStep step = DragRotate(BOX, {0, 0}, start, cursor, {.angleSnap = snap});
    EXPECT_EQ(step.angle, angle) << start;
    EXPECT_EQ(step.status, Format("Rotating: %i\u00B0", angle));
  }
  EXPECT_EQ(DragRotate(BOX, {0, 0}, -4, {10, 0}, {.angleSnap = true, .rotationStep = 0}).angle, 4);
  // From the right down to below: a quarter, clockwise.
  EXPECT_EQ(DragRotate(BOX, {0, 0}, 0, {0, -10}, {}).corners,
            (ViewQuad{{{0, 0}, {0, -64}, {128, -64}, {128, 0}}}));
}

TEST(SkewDragTest, TheGrabbedEdgeGoesOntoTheGridAndTheOtherStays) {
  const ViewBox box{{10, 0}, {74, 128}};
  const Cases<SkewGrab, ViewInts, DragRules, int, ViewQuad> cases{
      {{0, true}, {60, 999}, {.snap = true}, 54, {{{10, 0}, {74, 0}, {128, 128}, {64, 128}}}},
      {{0, false}, {60, 0}, {.snap = false}, 60, {{{70, 0}, {134, 0}, {74, 128}, {10, 128}}}},
      {{1, true}, {0, -70}, {.snap = true}, -64, {{{10, 0}, {74, -64}, {74, 64}, {10, 128}}}},
      {{1, false}, {0, 20}, {.snap = false}, 20, {{{10, 20}, {74, 0}, {74, 128}, {10, 148}}}},
      {{1, true}, {0, 20}, {.edits = {true, false}}, 0, {{{10, 0}, {74, 0}, {74, 128}, {10, 128}}}},
  };
  for (const auto& [grab, cursor, rules, amount, corners] : cases) {
    const SkewStep step = DragSkew(box, grab, {0, 0}, cursor, rules);
    EXPECT_EQ(step.amount, amount);
    EXPECT_EQ(step.corners, corners) << amount;
    EXPECT_EQ(step.status, Format("Skewing: %i", amount));
  }
}

}  // namespace
}  // namespace ferrowand
