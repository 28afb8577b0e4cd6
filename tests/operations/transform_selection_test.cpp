#include "operations/transform_selection.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "operations/edit_fixture.h"
#include "operations/groups.h"
#include "operations/templates.h"
#include "support/brush_checks.h"

namespace ferrowand {
namespace {

constexpr DVec3 ZERO(0, 0, 0);
constexpr TransformOptions ONLY_Y{true, 2}, NOT_Y{true, 5};
constexpr float NAN_32 = std::numeric_limits<float>::quiet_NaN();
constexpr float INFINITY_32 = std::numeric_limits<float>::infinity();

class TransformSelectionTest : public EditTest {
 protected:
  void SetUp() override {
    Open(Box("a", 0, 0, 0) + Box("b", 128, 0, 0) +
             Point("p", "\"origin\" \"16 0 0\" \"angle\" \"0\""),
         Box("far", 512, 0, 0));
  }
  const TransformOptions options;
};

using Options = const TransformOptions&;
using Operation = EditResult (*)(Map& map, Options options);

struct TransformCase {
  const char* name;
  Operation operation;
  Bounds box;   // of "a" afterwards
  Vec3 origin;  // of "p"
};

const TransformCase TRANSFORMS[] = {
    {"move",
     [](Map& m, Options o) { return MoveSelection(m, Vec3(3, -5, 4000), o); },
     {{3, -5, 4000}, {67, 59, 4064}},
     {19, -5, 4000}},
    {"move on one axis",
     [](Map& m, Options) { return MoveSelection(m, Vec3(3, -5, 7), ONLY_Y); },
     {{0, -5, 0}, {64, 59, 64}},
     {16, -5, 0}},
    {"scale",
     [](Map& m, Options o) { return ScaleSelection(m, DVec3(0.5, 3, 1), ZERO, o); },
     {{0, 0, 0}, {32, 192, 64}},
     {8, 0, 0}},
    {"scale on two axes",
     [](Map& m, Options) { return ScaleSelection(m, DVec3(2, 2, 2), DVec3(64, 64, 64), NOT_Y); },
     {{-64, 0, -64}, {64, 64, 64}},
     {-32, 0, -64}},
    {"scale by a third of another size",
     [](Map& m, Options o) {
       return ScaleSelection(m, DVec3(65.0 / 64, 65.0 / 64, 1 / 3.2), ZERO, o);
     },
     {{0, 0, 0}, {65, 65, 20}},
     {16.25f, 0, 0}},
    {"turn",
     [](Map& m, Options o) { return RotateSelection(m, 0, 1, 90, ZERO, o); },
     {{-64, 0, 0}, {0, 64, 64}},
     {0, 16, 0}},
    {"turn the other way",
     [](Map& m, Options o) { return RotateSelection(m, 2, 0, -450, DVec3(64, 64, 64), o); },
     {{64, 0, 0}, {128, 64, 64}},
     {128, 0, 16}},
    {"flip",
     [](Map& m, Options o) { return FlipSelection(m, 0, o); },
     {{0, 0, 0}, {64, 64, 64}},
     {48, 0, 0}},
    {"skew the high edge",
     [](Map& m, Options o) { return SkewSelection(m, 0, 2, true, 72, o); },
     {{8, 0, 0}, {136, 64, 64}},
     {24, 0, 0}},
    {"skew the low edge",
     [](Map& m, Options o) { return SkewSelection(m, 0, 2, false, 72, o); },
     {{0, 0, 0}, {128, 64, 64}},
     {80, 0, 0}},
    {"nine numbers",
     [](Map& m, Options o) { return TransformSelection(m, TurnMatrix(DVec3(90, 0, 90)), ZERO, o); },
     {{0, 0, 0}, {64, 64, 64}},
     {0, 16, 0}},
};

TEST_F(TransformSelectionTest, ObjectsGoWhereThePreviewShowedThem) {
  for (const TransformCase& c : TRANSFORMS) {
    SCOPED_TRACE(c.name);
    SetUp();
    Pick({"a", "p"});
    const std::string before = Text();
    ASSERT_EQ(c.operation(*map, options), EditResult::Done);
    EXPECT_EQ(Get("a").brush.Box(), c.box);
    EXPECT_EQ(Get("p").Origin(), c.origin);
    EXPECT_TRUE(IsSolid(Get("a").brush));
    EXPECT_EQ(Get("b").brush.Box(), (Bounds{{128, 0, 0}, {192, 64, 64}}));
    EXPECT_EQ(map->selection.size(), 2u);
    ExpectOneStep(before);
  }
}

TEST_F(TransformSelectionTest, PlanePointsStayExactOverAThousandMoves) {
  Pick({"a"});
  const std::string before = ExtendedText(Get("a"));
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(MoveSelection(*map, i % 2 ? Vec3(-7, 3, -1) : Vec3(7, -3, 1), options),
              EditResult::Done);
  }
  for (int i = 0; i < 4; ++i) RotateSelection(*map, 1, 2, 90, {31, 1, 7}, options);
  for (int i = 0; i < 2; ++i) FlipSelection(*map, 1, options);
  EXPECT_EQ(ExtendedText(Get("a")).substr(0, 400), before.substr(0, 400));
  Bounds box{{0, 0, 0}, {64, 64, 64}};
  EXPECT_EQ(Get("a").brush.Box(), box);
}

TEST_F(TransformSelectionTest, WhatWouldNotSurviveIsRefusedAsAWhole) {
  struct Case {
    EditResult result;
    Operation operation;
  };
  const Case cases[] = {
      {EditResult::Flattens,
       [](Map& m, Options o) { return ScaleSelection(m, DVec3(1, 1, 0), ZERO, o); }},
      {EditResult::Flattens,
       [](Map& m, Options o) { return ScaleSelection(m, DVec3(1, NAN_32, 1), ZERO, o); }},
      {EditResult::Flattens,
       [](Map& m, Options o) { return MoveSelection(m, Vec3(INFINITY_32, 0, 0), o); }},
      {EditResult::BreaksBrush,
       [](Map& m, Options o) { return ScaleSelection(m, DVec3(1, 1, 0.005), ZERO, o); }},
      {EditResult::OutsideWorld,
       [](Map& m, Options o) { return MoveSelection(m, Vec3(0, 8190, 0), o); }},
      {EditResult::OutsideWorld,
       [](Map& m, Options o) { return ScaleSelection(m, DVec3(1e30, 1, 1), ZERO, o); }},
      {EditResult::OutsideWorld,
       [](Map& m, Options o) { return DuplicateSelection(m, Vec3(9000, 0, 0), o); }},
      {EditResult::TooMany,
       [](Map& m, Options o) {
         return DuplicateSelection(m, MultiDuplicate{MAXCOPIES, {}, {}}, o);
       }},
  };
  Pick({"a", "b", "p"});
  const std::string before = Text();
  for (const Case& c : cases) {
    EXPECT_EQ(c.operation(*map, options), c.result) << &c - cases;
    EXPECT_EQ(Text(), before);
    EXPECT_EQ(map->selection.size(), 3u);
    EXPECT_FALSE(map->undo.CanUndo());
    EXPECT_FALSE(map->modified());
  }
}

TEST_F(TransformSelectionTest, NeitherHiddenNorLockedObjectsMove) {
  const std::string before = Text();
  map->selection.Clear();
  for (const char* layer : {"hidden", "locked"}) {
    Select(*map, Get(layer).getEntityList().front().get(), true);
  }
  EXPECT_EQ(MoveSelection(*map, {8, 0, 0}, options), EditResult::NothingSelected);
  EXPECT_EQ(DuplicateSelection(*map, {8, 0, 0}, options), EditResult::NothingSelected);
  EXPECT_EQ(Text(), before);
}

// What was turned to odd angles and accepted is read back with every face.
TEST_F(TransformSelectionTest, WhatIsAcceptedSurvivesSaving) {
  int accepted = 0;
  for (int degrees = 1; degrees < 180; degrees += 7) {
    Pick({"a"});
    const DVec3 turn(degrees, degrees * 2.5, degrees / 3.0);
    accepted +=
        TransformSelection(*map, TurnMatrix(turn), {32, 32, 32}, options) == EditResult::Done;
    const auto read = ReadText(Text());
    EXPECT_EQ(FindNamed(*read, "a")->brush.getNumFaces(), 6) << degrees;
    EXPECT_TRUE(IsSolid(Get("a").brush));
  }
  EXPECT_GT(accepted, 20);
}

TEST_F(TransformSelectionTest, ABrokenBrushMayStillBeMoved) {
  Open(Named("flat",
             "{\n( 0 0 0 ) ( 0 64 0 ) ( 0 0 64 ) wall 0 0 0 1 1\n"
             "( 1 0 0 ) ( 2 0 0 ) ( 3 0 0 ) wall 0 0 0 1 1\n}"));
  Pick({"flat"});
  EXPECT_EQ(MoveSelection(*map, {8, 0, 0}, options), EditResult::Done);
  EXPECT_EQ(RotateSelection(*map, 0, 1, 30, {}, options), EditResult::Done);
}

TEST_F(TransformSelectionTest, EntitiesTurnTheirFacesWithTheSelection) {
  struct Case {
    const char* angle;
    const char* turned;   // by 90 degrees
    const char* flipped;  // on X
  };
  for (const Case& c : {Case{"0", "90", "180"}, {"300", "30", "240"}, {"-1", "-1", "-1"}}) {
    for (const bool turns : {true, false}) {
      Open(Point("p", std::string("\"origin\" \"0 0 0\" \"angle\" \"") + c.angle + "\""));
      Pick({"p"});
      turns ? RotateSelection(*map, 0, 1, 90, {}, options) : FlipSelection(*map, 0, options);
      EXPECT_STREQ(Get("p").GetKey("angle"), turns ? c.turned : c.flipped);
    }
  }
  Open(Point("p", "\"origin\" \"0 0 0\" \"angle\" \"45\""));
  Pick({"p"});
  ScaleSelection(*map, {3, 1, 1}, {}, options);
  EXPECT_STREQ(Get("p").GetKey("angle"), "45");
}

TEST_F(TransformSelectionTest, AFactorWithoutEndStillHitsWholeUnits) {
  Open(Box("a", -2000, 0, 0, 63));
  Pick({"a"});
  EXPECT_EQ(ScaleSelection(*map, {1.0 / 3, 1, 1}, {1000, 0, 0}, options), EditResult::Done);
  EXPECT_EQ(Get("a").brush.Box(), (Bounds{{0, 0, 0}, {21, 63, 63}}));
}

TEST_F(TransformSelectionTest, WhatLiesOutsideTheWorldMayBeBroughtBack) {
  Open(Point("p", "\"origin\" \"20000 0 0\""));
  Pick({"p"});
  EXPECT_EQ(MoveSelection(*map, {-1000, 0, 0}, options), EditResult::Done);
  EXPECT_EQ(MoveSelection(*map, {-19000, 0, 0}, options), EditResult::Done);
  EXPECT_EQ(MoveSelection(*map, {19000, 0, 0}, options), EditResult::OutsideWorld);
}

// Its round faces have three corners close together, by which rounded they would come back bent.
TEST_F(TransformSelectionTest, ATiltedCylinderComesBackStraight) {
  constexpr int SIDES = 24;
  const auto corner = [](int i, int z) {
    const double angle = i * (360.0 / SIDES) * std::numbers::pi / 180;
    return Format("( %d %d %d ) ", RoundToInt(128 * std::cos(angle)),
                  RoundToInt(128 * std::sin(angle)), z);
  };
  std::string cylinder = "{\n";
  for (int i = 0; i < SIDES; ++i) {
    cylinder += corner(i, 0) + corner(i, 64) + corner(i + 1, 64) + "wall 0 0 0 1 1\n";
  }
  cylinder += "( 0 0 0 ) ( 64 0 0 ) ( 0 64 0 ) wall 0 0 0 1 1\n";
  cylinder += "( 0 0 64 ) ( 0 64 64 ) ( 64 0 64 ) wall 0 0 0 1 1\n}";
  Open(Named("cylinder", cylinder));
  Pick({"cylinder"});
  ASSERT_EQ(Get("cylinder").brush.getNumFaces(), SIDES + 2);
  EXPECT_EQ(RotateSelection(*map, 0, 1, 90, {}, options), EditResult::Done);
  EXPECT_EQ(TransformSelection(*map, TurnMatrix({33, 21, 0}), {}, options), EditResult::Done);
  const auto read = ReadText(Text());
  const Brush& back = FindNamed(*read, "cylinder")->brush;
  ASSERT_EQ(back.getNumFaces(), SIDES + 2);
  for (int i = 0; i < back.getNumFaces(); ++i) {
    EXPECT_TRUE(HaveSameCorners(*back.face(i).w, *Get("cylinder").brush.face(i).w, 0.05));
  }
}

TEST_F(TransformSelectionTest, ADuplicateStandsBesideItsOriginal) {
  Pick({"b"});
  const std::string before = Text();
  EXPECT_EQ(DuplicateSelection(*map, {16, 0, 0}, options), EditResult::Done);
  EXPECT_EQ(Children("main"), (Names{"a", "b", "p", "b"}));
  ASSERT_EQ(map->selection.size(), 1u);
  EXPECT_EQ(map->selection[0], Get("main").getEntityList()[3].get());
  EXPECT_EQ(map->selection[0]->brush.Box(), (Bounds{{144, 0, 0}, {208, 64, 64}}));
  ExpectOneStep(before);
}

TEST_F(TransformSelectionTest, CopiesOfCopiesMoveAndTurnOn) {
  Pick({"a"});
  EXPECT_EQ(DuplicateSelection(*map, MultiDuplicate{3, {100, 0, 0}, {0, 0, 90}}, options),
            EditResult::Done);
  ASSERT_EQ(map->selection.size(), 3u);
  for (int i = 0; i < 3; ++i) {
    const float x = static_cast<float>(100 * (i + 1));
    EXPECT_EQ(map->selection[static_cast<std::size_t>(i)]->brush.Box(),
              (Bounds{{x, 0, 0}, {x + 64, 64, 64}}));
  }
  EXPECT_EQ(map->undo.StepCount(), 1u);
}

TEST_F(TransformSelectionTest, CopiesJoinTheLeadingGroup) {
  Pick({"a"});
  GroupSelection(*map);
  SetAsLeading(*map);
  Pick({"b"});
  DuplicateSelection(*map, {0, 0, 64}, options);
  EXPECT_EQ(Children("group1"), (Names{"a", "b"}));
}

// By their bounds, which are known from their keys alone.
TEST_F(TransformSelectionTest, InstancesAndEmbeddedMapsFollowWhatTheirKeysCanSay) {
  const Matrix steps[] = {Matrix::Diagonal(2, 2, 2),  Matrix::TurnZ(90),
                          Matrix::Diagonal(-1, 1, 1), Matrix::Diagonal(1, -1, 1),
                          Matrix::TurnZ(180),         Matrix::Diagonal(1, 1, -1),
                          Matrix::TurnZ(-90),         Matrix::Diagonal(0.5f, 3, 0.25f)};
  for (const char* angle : {"0", "90", "-90", "180", "630", "60"}) {
    Open("{\"classname\" \"templateClass\" \"XMPentityname\" \"T\"" + Cuboid(0, 0, 0, 16, 32, 64) +
         "}{\"classname\" \"templateInstance\" \"XMPentityname\" \"i\" \"XMPclass\" \"T\""
         "\"origin\" \"8 0 0\" \"angle\" \"" +
         angle +
         "\"}"
         "{\"classname\" \"embed\" \"XMPentityname\" \"e\" \"origin\" \"0 64 0\" \"XMPmaxx\" "
         "\"40\"}");
    Pick({"i", "e"});
    for (const Matrix& step : steps) {
      // An instance that stands askew would be sheared, which it cannot be.
      const bool isExact = std::string(angle) != "60" || &step != &steps[7];
      Bounds expected[2];
      for (int i = 0; i < 2; ++i) {
        const Bounds old = map->selection[static_cast<std::size_t>(i)]->GetBounds();
        expected[i].Add(Vec3(Transform(DVec3(old.mins), step, {1, 2, 3})));
        expected[i].Add(Vec3(Transform(DVec3(old.maxs), step, {1, 2, 3})));
      }
      ASSERT_EQ(TransformSelection(*map, step, {1, 2, 3}, options), EditResult::Done);
      for (int i = isExact ? 0 : 1; i < 2; ++i) {
        const Bounds box = map->selection[static_cast<std::size_t>(i)]->GetBounds();
        EXPECT_LT(Length(DVec3(box.mins - expected[i].mins)), 0.01)
            << angle << ' ' << &step - steps;
        EXPECT_LT(Length(DVec3(box.maxs - expected[i].maxs)), 0.01)
            << angle << ' ' << &step - steps;
      }
    }
    const InstanceShape shape = ShapeOf(Get("i"));
    const Bounds box = EmbedBox(Get("e"));
    RotateSelection(*map, 1, 2, 30, {}, options);
    SkewSelection(*map, 0, 2, true, 8, options);
    EXPECT_EQ(EmbedBox(Get("e")), box);
    EXPECT_EQ(ShapeOf(Get("i")).scale, shape.scale);
    EXPECT_EQ(ShapeOf(Get("i")).angle, shape.angle);
  }
}

}  // namespace
}  // namespace ferrowand
