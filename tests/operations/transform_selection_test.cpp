#include "operations/transform_selection.h"

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include "operations/edit_fixture.h"
#include "operations/groups.h"
#include "operations/primitives.h"
#include "operations/templates.h"
#include "support/brush_checks.h"
#include "support/cases.h"

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

// What is done, the box of "a" afterwards and the origin of "p".
const Cases<const char*, Operation, Bounds, Vec3> TRANSFORMS{
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
  for (const auto& [name, operation, box, origin] : TRANSFORMS) {
    SCOPED_TRACE(name);
    SetUp();
    Pick({"a", "p"});
    const std::string before = Text();
    ASSERT_EQ(operation(*map, options), EditResult::Done);
    EXPECT_EQ(Get("a").brush.Box(), box);
    EXPECT_EQ(Get("p").Origin(), origin);
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
  const Cases<EditResult, Operation> cases{
      {EditResult::Flattens,
       [](Map& m, Options o) { return ScaleSelection(m, DVec3(1, 1, 0), ZERO, o); }},
      {EditResult::Flattens,
       [](Map& m, Options o) { return ScaleSelection(m, DVec3(1, NAN_32, 1), ZERO, o); }},
      {EditResult::Flattens,
       [](Map& m, Options o) { return MoveSelection(m, Vec3(INFINITY_32, 0, 0), o); }},
      {EditResult::BreaksBrush,
       [](Map& m, Options o) { return ScaleSelection(m, DVec3(1, 1, 0.005), ZERO, o); }},
      {EditResult::OutsideWorld,
       [](Map& m, Options o) { return MoveSelection(m, Vec3(0, 32760, 0), o); }},
      {EditResult::OutsideWorld,
       [](Map& m, Options o) { return ScaleSelection(m, DVec3(1e30, 1, 1), ZERO, o); }},
      {EditResult::OutsideWorld,
       [](Map& m, Options o) { return DuplicateSelection(m, Vec3(33000, 0, 0), o); }},
  };
  Pick({"a", "b", "p"});
  const std::string before = Text();
  for (const auto& [result, operation] : cases) {
    EXPECT_EQ(operation(*map, options), result);
    EXPECT_EQ(Text(), before);
    EXPECT_EQ(map->selection.size(), 3u);
    EXPECT_FALSE(map->undo.CanUndo());
    EXPECT_FALSE(map->modified());
  }
}

// A quarter about X and one about Z are a third about the diagonal.
TEST_F(TransformSelectionTest, EachCopyIsTurnedAgainstTheOneBefore) {
  Open(Block("a", 0, 0, 0, 16, 32, 64));
  Pick({"a"});
  ASSERT_EQ(DuplicateSelection(*map, MultiDuplicate{3, {}, {90, 0, 90}}, options),
            EditResult::Done);
  const auto& objects = Get("main").getEntityList();
  ASSERT_EQ(objects.size(), 4u);
  const auto size = [&](std::size_t i) {
    return objects[i]->GetBounds().maxs - objects[i]->GetBounds().mins;
  };
  EXPECT_EQ(size(1), Vec3(64, 16, 32));
  EXPECT_EQ(size(2), Vec3(32, 64, 16));
  EXPECT_EQ(objects[3]->GetBounds(), objects[0]->GetBounds());
}

// Objects count, not copies; those that are just allowed here end outside the world.
TEST_F(TransformSelectionTest, OneCommandMakesNoMoreObjectsThanTheLimit) {
  Open(Named("group", "{" + Box("member", 0, 0, 0) + "}"));
  Pick({"group"});
  for (const auto& [count, result] : Cases<int, EditResult>{
           {MAXCOPIES / 2, EditResult::OutsideWorld}, {MAXCOPIES / 2 + 1, EditResult::TooMany}}) {
    EXPECT_EQ(DuplicateSelection(*map, MultiDuplicate{count, {9000, 0, 0}, {}}, options), result);
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

TEST_F(TransformSelectionTest, ABrokenBrushMayStillBeMoved) {
  Open(Named("flat",
             "{\n( 0 0 0 ) ( 0 64 0 ) ( 0 0 64 ) wall 0 0 0 1 1\n"
             "( 1 0 0 ) ( 2 0 0 ) ( 3 0 0 ) wall 0 0 0 1 1\n}"));
  Pick({"flat"});
  EXPECT_EQ(MoveSelection(*map, {8, 0, 0}, options), EditResult::Done);
  EXPECT_EQ(RotateSelection(*map, 0, 1, 30, {}, options), EditResult::Done);
}

TEST_F(TransformSelectionTest, EntitiesTurnTheirFacesWithTheSelectionButNoLightItsCone) {
  // The class, the angle, the same turned by 90 degrees, and flipped on X.
  for (const auto& [classname, angle, turned, flipped] :
       Cases<std::string, std::string, const char*, const char*>{
           {"thing", "0", "90", "180"},
           {"thing", "300", "30", "240"},
           {"thing", "-1", "-1", "-1"},
           {"light_spot", "40", "40", "40"}}) {
    for (const bool turns : {true, false}) {
      // In a group too.
      Open("{\"XMPentityname\" \"g\" {\"XMPentityname\" \"p\" \"origin\" \"0 0 0\" \"angle\" \"" +
           angle + "\" \"classname\" \"" + classname + "\"}}");
      Pick({"g"});
      turns ? RotateSelection(*map, 0, 1, 90, {}, options) : FlipSelection(*map, 0, options);
      EXPECT_STREQ(Get("p").GetKey("angle"), turns ? turned : flipped) << classname;
    }
  }
  Open(Point("p", "\"origin\" \"0 0 0\" \"angle\" \"45\""));
  Pick({"p"});
  ScaleSelection(*map, {3, 1, 1}, {}, options);
  EXPECT_STREQ(Get("p").GetKey("angle"), "45");
}

// Pitch, yaw and roll are turns about Y, Z and X; of a light's mangle yaw comes first, and a pitch
// above 0 looks up.
TEST_F(TransformSelectionTest, ThreeAnglesTurnAsTheirAxesDo) {
  std::minstd_rand random(11);
  const auto any = [&](int step) { return static_cast<double>(random() % 360 / step * step); };
  for (int round = 0; round < 300; ++round) {
    const bool isLight = round % 2 == 0;
    const int step = round % 3 == 0 ? 90 : 1;
    const double pitch = any(step) - 180, yaw = any(step), roll = any(step);
    const std::string text =
        isLight ? Format("%g %g %g", yaw, -pitch, roll) : Format(" %g  %g\t%g ", pitch, yaw, roll);
    Open(Point("p", "\"origin\" \"0 0 0\" \"Mangle\" \"" + text + "\""));
    if (isLight) Get("p").SetKey("classname", "light");
    Pick({"p"});
    const Matrix turn = TurnMatrix(DVec3(any(step), any(step), any(step)));
    ASSERT_EQ(TransformSelection(*map, turn, {}, options), EditResult::Done);
    double a, b, c;
    ASSERT_EQ(std::sscanf(Get("p").GetKey("mangle"), "%lf %lf %lf", &a, &b, &c), 3);
    const Matrix is = TurnMatrix(isLight ? DVec3(c, -b, a) : DVec3(c, a, b));
    const Matrix expected = turn * TurnMatrix(DVec3(roll, pitch, yaw));
    for (unsigned i = 0; i < 9; ++i) {
      ASSERT_NEAR(is.At(i % 3, i / 3), expected.At(i % 3, i / 3), 0.001) << text;
    }
  }
  for (const char* text : {"0 90", "0 90 0 1", "a b c"}) {
    Open(Point("p", "\"origin\" \"0 0 0\" \"angles\" \"" + std::string(text) + "\""));
    Pick({"p"});
    RotateSelection(*map, 0, 1, 30, {}, options);
    EXPECT_STREQ(Get("p").GetKey("angles"), text);
  }
}

TEST_F(TransformSelectionTest, AMirroredInstanceKeepsItsAngle) {
  for (const auto& [angle, mirrored] :
       Cases<const char*, const char*>{{"0", "XMPscalex"}, {"90", "XMPscaley"}}) {
    Open(Point("i", std::string("\"classname\" \"templateInstance\" \"origin\" \"0 0 0\" ") +
                        "\"XMPscalex\" \"2\" \"XMPscaley\" \"2\" \"XMPscalez\" \"2\" " +
                        "\"angle\" \"" + angle + "\""));
    Pick({"i"});
    FlipSelection(*map, 0, options);
    EXPECT_STREQ(Get("i").GetKey("angle"), angle);
    EXPECT_STREQ(Get("i").GetKey(mirrored), "-2.000000") << angle;
  }
}

TEST_F(TransformSelectionTest, WhatLiesOutsideTheWorldMayBeBroughtBack) {
  Open(Point("p", "\"origin\" \"40000 0 0\""));
  Pick({"p"});
  EXPECT_EQ(MoveSelection(*map, {-1000, 0, 0}, options), EditResult::Done);
  EXPECT_EQ(MoveSelection(*map, {-39000, 0, 0}, options), EditResult::Done);
  EXPECT_EQ(MoveSelection(*map, {33000, 0, 0}, options), EditResult::OutsideWorld);
}

// It has no shape, but whole points.
TEST_F(TransformSelectionTest, WhatIsTooFarOutToBeShownGoesAlongOrNothingDoes) {
  Open(Named("group", "{" + Box("near", 0, 0, 0) + Box("far", 40000, 0, 0) + "}"));
  const std::string before = Text();
  Pick({"group"});
  EXPECT_EQ(MoveSelection(*map, {16, 0, 8}, options), EditResult::Done);
  ExpectOneStep(before);
  EXPECT_EQ(RotateSelection(*map, 0, 1, 90, {}, options), EditResult::Done);
  EXPECT_EQ(MoveSelection(*map, {0.5f, 0, 0}, options), EditResult::BreaksBrush);
  EXPECT_EQ(RotateSelection(*map, 0, 1, 30, {}, options), EditResult::BreaksBrush);
  Bounds bounds;
  for (const Face& face : std::as_const(Get("far").brush).FarFaces()) {
    for (const Vec3& p : face.planepts) bounds.Add(p);
  }
  EXPECT_EQ(bounds, (Bounds{{-64, 40016, 8}, {0, 40080, 72}}));
}

// Its round faces have three corners close together, by which rounded they would come back bent.
TEST_F(TransformSelectionTest, ATiltedCylinderComesBackStraight) {
  ASSERT_TRUE(AddPrimitive(*map, {PrimitiveKind::Column, {{-128, -128, 0}, {128, 128, 64}}, 2, 24},
                           "wall"));
  EXPECT_EQ(RotateSelection(*map, 0, 1, 90, {}, options), EditResult::Done);
  EXPECT_EQ(TransformSelection(*map, TurnMatrix({33, 21, 0}), {}, options), EditResult::Done);
  entity& cylinder = *map->selection[0];
  cylinder.SetKey("XMPentityname", "cylinder");
  const auto read = ReadText(Text());
  const Brush& back = FindNamed(*read, "cylinder")->brush;
  ASSERT_EQ(back.getNumFaces(), 26);
  for (int i = 0; i < back.getNumFaces(); ++i) {
    EXPECT_LE(CornerDistance(*back.face(i).w, *cylinder.brush.face(i).w), MOVED);
  }
}

TEST_F(TransformSelectionTest, ADuplicateStandsBesideItsOriginal) {
  Pick({"b"});
  const std::string before = Text();
  EXPECT_EQ(DuplicateSelection(*map, {16, 0, 0}, options), EditResult::Done);
  EXPECT_EQ(Children("main"), (Names{"a", "b", "p", "b"}));
  EXPECT_EQ(map->selection, std::vector{Get("main").getEntityList()[3].get()});
  EXPECT_EQ(SelectionBounds(*map), (Bounds{{144, 0, 0}, {208, 64, 64}}));
  ExpectOneStep(before);
}

TEST_F(TransformSelectionTest, ACopyOfTheGroupThatLeadsStandsBesideIt) {
  Pick({"a", "b"});
  GroupSelection(*map);
  entity& group = *map->selection.front();
  map->SetLeadingGroup(&group);
  EXPECT_EQ(DuplicateSelection(*map, {16, 0, 0}, options), EditResult::Done);
  EXPECT_EQ(map->selection.front()->Parent(), group.Parent());
  Pick({"p"});
  EXPECT_EQ(DuplicateSelection(*map, {16, 0, 0}, options), EditResult::Done);
  EXPECT_EQ(map->selection.front()->Parent(), &group);
}

TEST_F(TransformSelectionTest, CopiesOfCopiesMoveAndTurnOn) {
  Pick({"p"});
  EXPECT_EQ(DuplicateSelection(*map, MultiDuplicate{3, {100, 0, 0}, {0, 0, 90}}, options),
            EditResult::Done);
  ASSERT_EQ(map->selection.size(), 3u);
  for (int i = 0; i < 3; ++i) {
    const entity& copy = *map->selection[static_cast<std::size_t>(i)];
    EXPECT_EQ(copy.Origin(), Vec3(116 + 100.0f * i, 0, 0));
    EXPECT_EQ(copy.angle(), 90 * (i + 1));
  }
  EXPECT_EQ(map->undo.StepCount(), 1u);
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
        SCOPED_TRACE(Format("angle %s, step %d", angle, static_cast<int>(&step - steps)));
        const Bounds box = map->selection[static_cast<std::size_t>(i)]->GetBounds();
        EXPECT_LT(Length(DVec3(box.mins - expected[i].mins)), 0.01);
        EXPECT_LT(Length(DVec3(box.maxs - expected[i].maxs)), 0.01);
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
