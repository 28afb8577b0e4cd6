#include "operations/primitives.h"

#include <string>

#include "document/document_fixture.h"
#include "operations/face_check.h"
#include "support/brush_checks.h"

namespace ferrowand {
namespace {

constexpr PrimitiveKind KINDS[] = {PrimitiveKind::Cuboid, PrimitiveKind::Wedge,
                                   PrimitiveKind::Column, PrimitiveKind::Pyramid,
                                   PrimitiveKind::Sphere, PrimitiveKind::Hemisphere};

class PrimitivesTest : public DocumentTest {
 protected:
  void ExpectSound(const entity& object, const Bounds& box) {
    const Brush& brush = object.brush;
    EXPECT_TRUE(IsSolid(brush));
    EXPECT_TRUE(IsOnWholeUnits(brush));
    EXPECT_EQ(brush.Box(), box);
    for (const Face& face : brush.Faces()) {
      EXPECT_EQ(face.Name(), "stone");
      EXPECT_EQ(face.xscale, 1);
      EXPECT_EQ(FaceCheck(face, 0.01), CheckCode::None);
    }
  }

  Map map{data};
};

TEST_F(PrimitivesTest, EveryKindFillsItsBoxWithAnyNumberOfSides) {
  const Bounds boxes[] = {{{-64, -64, -64}, {64, 64, 64}},
                          {{0, 0, 0}, {256, 128, 512}},
                          {{3001, -17, 5}, {3338, 240, 317}},
                          {{-4096, -4096, -4096}, {4096, 4096, 4096}}};
  for (const PrimitiveKind kind : KINDS) {
    const SideRange range = SidesOf(kind);
    for (int sides = range.least; sides <= range.most; ++sides) {
      for (const Bounds& box : boxes) {
        const int axis = sides % 3;
        SCOPED_TRACE(testing::Message()
                     << static_cast<int>(kind) << ", " << sides << " sides, " << box.mins.x);
        const PrimitiveResult made = MakePrimitive({kind, box, axis, sides}, "stone", map);
        ASSERT_TRUE(made.object);
        ExpectSound(*made.object, box);
      }
    }
  }
}

TEST_F(PrimitivesTest, ShapesHaveTheFacesOfTheirKind) {
  const Bounds box{{0, 0, 0}, {256, 256, 256}};
  const struct {
    PrimitiveKind kind;
    int sides, faces;
    double volume;
  } cases[] = {
      {PrimitiveKind::Cuboid, 0, 6, 1.0},        {PrimitiveKind::Wedge, 0, 5, 0.5},
      {PrimitiveKind::Pyramid, 0, 5, 1.0 / 3},   {PrimitiveKind::Column, 4, 6, 1.0},
      {PrimitiveKind::Column, 8, 10, 0.83},      {PrimitiveKind::Column, 30, 32, 0.785},
      {PrimitiveKind::Sphere, 8, 32, 0.496},     {PrimitiveKind::Sphere, 6, 30, 0.465},
      {PrimitiveKind::Hemisphere, 8, 25, 0.446}, {PrimitiveKind::Hemisphere, 15, 31, 0.469},
  };
  for (const auto& c : cases) {
    const PrimitiveResult made = MakePrimitive({c.kind, box, 2, c.sides}, "stone", map);
    ASSERT_TRUE(made.object) << c.faces;
    EXPECT_EQ(made.object->brush.getNumFaces(), c.faces);
    EXPECT_NEAR(Volume(made.object->brush) / (256.0 * 256 * 256), c.volume, 0.02) << c.faces;
  }
}

TEST_F(PrimitivesTest, ApexAndSlopePointAlongTheAxis) {
  for (int axis = 0; axis < 3; ++axis) {
    for (const PrimitiveKind kind : {PrimitiveKind::Pyramid, PrimitiveKind::Hemisphere}) {
      const auto made = MakePrimitive({kind, {{0, 0, 0}, {64, 64, 64}}, axis, 8}, "stone", map);
      ASSERT_TRUE(made.object);
      DVec3 top(32, 32, 32);
      top[axis] = 63;
      EXPECT_TRUE(IsPointInsideBrush(made.object->brush, top));
      top = DVec3(4, 4, 4);
      top[axis] = 60;
      EXPECT_FALSE(IsPointInsideBrush(made.object->brush, top));
    }
  }
}

TEST_F(PrimitivesTest, BoxesOfAnySizeGiveASoundSolidOrAReason) {
  for (const PrimitiveKind kind : KINDS) {
    const SideRange range = SidesOf(kind);
    for (int size = 0; size <= 24; ++size) {
      for (int sides = range.least; sides <= range.most; sides += 3) {
        const Bounds box{{0, 0, 0},
                         {static_cast<float>(size), static_cast<float>(size / 2 + 1), 7}};
        const auto made = MakePrimitive({kind, box, 2, sides}, "stone", map);
        EXPECT_EQ(made.reason.empty(), made.object != nullptr);
        if (made.object) ExpectSound(*made.object, box);
        EXPECT_TRUE(size > 0 || !made.object);
      }
    }
  }
}

TEST_F(PrimitivesTest, WhatCannotBeMadeIsSaidAndNothingIsAdded) {
  const Bounds box{{0, 0, 0}, {64, 64, 64}};
  const struct {
    Primitive primitive;
    const char* text;
  } cases[] = {
      {{PrimitiveKind::Column, box, 2, 2}, "The number of sides must be from 3 to 30."},
      {{PrimitiveKind::Column, box, 2, 31}, "The number of sides must be from 3 to 30."},
      {{PrimitiveKind::Sphere, box, 2, 16}, "The number of sides must be from 3 to 15."},
      {{PrimitiveKind::Column, {{0, 0, 0}, {4, 4, 4}}, 2, 30},
       "The box is too small for this number of sides."},
      {{PrimitiveKind::Cuboid, {{0, 0, 0}, {64, 64, 0.4f}}, 2, 0}, "The box is too small."},
      {{PrimitiveKind::Cuboid, {{0, 0, 0}, {64, 64, 9000}}, 2, 0},
       "This would put an object outside the world."},
  };
  const std::string before = ExtendedText(map);
  for (const auto& c : cases) {
    recorder.messages.clear();
    EXPECT_EQ(AddPrimitive(map, c.primitive, "stone"), nullptr);
    EXPECT_EQ(recorder.OnlyText(), c.text);
  }
  EXPECT_EQ(ExtendedText(map), before);
  EXPECT_FALSE(map.undo.CanUndo());
}

}  // namespace
}  // namespace ferrowand
