#include "operations/primitives.h"

#include <string>

#include "document/document_fixture.h"
#include "operations/face_check.h"
#include "support/brush_checks.h"
#include "support/cases.h"

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
    }
  }

  Map map{data};
};

TEST_F(PrimitivesTest, EveryKindFillsItsBoxWithAnyNumberOfSidesOrSaysWhyNot) {
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
      for (const float size : {0.0f, 2.0f, 6.0f, 16.0f, 24.0f}) {
        const Bounds small{{0, 0, 0}, {size, size / 2 + 1, 7}};
        const PrimitiveResult made = MakePrimitive({kind, small, 2, sides}, "stone", map);
        EXPECT_EQ(made.reason.empty(), made.object != nullptr);
        if (made.object) ExpectSound(*made.object, small);
      }
    }
  }
}

TEST_F(PrimitivesTest, ShapesHaveTheFacesOfTheirKind) {
  const Bounds box{{0, 0, 0}, {256, 256, 256}};
  const Cases<PrimitiveKind, int, int, double> cases{
      {PrimitiveKind::Cuboid, 0, 6, 1.0},        {PrimitiveKind::Wedge, 0, 5, 0.5},
      {PrimitiveKind::Pyramid, 0, 5, 1.0 / 3},   {PrimitiveKind::Column, 4, 6, 1.0},
      {PrimitiveKind::Column, 8, 10, 0.83},      {PrimitiveKind::Column, 30, 32, 0.785},
      {PrimitiveKind::Sphere, 8, 32, 0.496},     {PrimitiveKind::Sphere, 6, 30, 0.465},
      {PrimitiveKind::Hemisphere, 8, 25, 0.446}, {PrimitiveKind::Hemisphere, 15, 31, 0.469},
  };
  for (const auto& [kind, sides, faces, volume] : cases) {
    const PrimitiveResult made = MakePrimitive({kind, box, 2, sides}, "stone", map);
    ASSERT_TRUE(made.object) << faces;
    EXPECT_EQ(made.object->brush.getNumFaces(), faces);
    EXPECT_NEAR(Volume(made.object->brush) / (256.0 * 256 * 256), volume, 0.02) << faces;
  }
}

TEST_F(PrimitivesTest, ApexAndSlopePointAlongTheAxis) {
  for (int axis = 0; axis < 3; ++axis) {
    const auto contains = [&](PrimitiveKind kind, double across, double other, double along) {
      const auto made = MakePrimitive({kind, {{0, 0, 0}, {64, 64, 64}}, axis, 8}, "stone", map);
      DVec3 p;
      p[(axis + 1) % 3] = across;
      p[(axis + 2) % 3] = other;
      p[axis] = along;
      return IsPointInsideBrush(made.object->brush, p);
    };
    for (const PrimitiveKind kind : {PrimitiveKind::Pyramid, PrimitiveKind::Hemisphere}) {
      EXPECT_TRUE(contains(kind, 32, 32, 63));
      EXPECT_FALSE(contains(kind, 4, 4, 60));
    }
    EXPECT_TRUE(contains(PrimitiveKind::Wedge, 63, 4, 60));
    EXPECT_FALSE(contains(PrimitiveKind::Wedge, 4, 60, 60));
  }
}

TEST_F(PrimitivesTest, WhatCannotBeMadeIsSaidAndNothingIsAdded) {
  const Bounds box{{0, 0, 0}, {64, 64, 64}};
  const std::pair<Primitive, const char*> cases[] = {
      {{PrimitiveKind::Column, box, 2, 2}, "The number of sides must be from 3 to 30."},
      {{PrimitiveKind::Column, box, 2, 31}, "The number of sides must be from 3 to 30."},
      {{PrimitiveKind::Sphere, box, 2, 16}, "The number of sides must be from 3 to 15."},
      {{PrimitiveKind::Column, {{0, 0, 0}, {4, 4, 4}}, 2, 30},
       "The box is too small for this number of sides."},
      {{PrimitiveKind::Cuboid, {{0, 0, 0}, {64, 64, 0.4f}}, 2, 0}, "The box is too small."},
      {{PrimitiveKind::Cuboid, {{0, 0, 0}, {64, 64, 33000}}, 2, 0},
       "This would put an object outside the world."},
  };
  const std::string before = ExtendedText(map);
  for (const auto& [primitive, text] : cases) {
    recorder.messages.clear();
    EXPECT_EQ(AddPrimitive(map, primitive, "stone"), nullptr);
    EXPECT_EQ(recorder.OnlyText(), text);
  }
  EXPECT_EQ(ExtendedText(map), before);
  EXPECT_FALSE(map.undo.CanUndo());
}

}  // namespace
}  // namespace ferrowand
