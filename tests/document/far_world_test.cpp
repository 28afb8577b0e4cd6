// What lies far from the origin: within the world it is what it would be nearby, beyond it is kept.
#include <algorithm>
#include <random>

#include "document/document_fixture.h"
#include "support/brush_checks.h"

namespace ferrowand {
namespace {

class FarWorldTest : public DocumentTest {
 protected:
  std::string World(const std::string& brush) {
    return "{\"classname\" \"worldspawn\"\n" + brush + "}";
  }
  static const Brush& BrushOf(const Map& map) {
    return map.getEntityList()[0]->getEntityList()[0]->brush;
  }
  static std::string Moved(const Brush& brush, const Vec3& by) {
    std::string text = "{\n";
    for (const Face& face : brush.Faces()) {
      for (const Vec3& p : face.planepts) {
        text += Format("( %.0f %.0f %.0f ) ", p.x + by.x, p.y + by.y, p.z + by.z);
      }
      text += "wall 0 0 0 1 1\n";
    }
    return text + "}\n";
  }
};

TEST_F(FarWorldTest, SolidsAreWhatTheyAreNearTheOrigin) {
  std::mt19937 random(2);
  const Vec3 places[] = {{9000, 0, 0},          {12000, -12000, 6000}, {-16000, 16000, 16000},
                         {0, 24000, -24000},    {32500, 32500, 32500}, {-32500, 0, 30000},
                         {32500, -32500, 4000}, {-8100, -8100, -8100}};
  for (const Vec3& place : places) {
    const Brush near = RandomHull(random, {}, 256, reporter);
    const auto map = ReadText(World(Moved(near, place)));
    const Brush& far = BrushOf(*map);
    ASSERT_EQ(far.getNumFaces(), near.getNumFaces()) << place.x;
    EXPECT_TRUE(IsSolid(far));
    EXPECT_NEAR(Volume(far), Volume(near), 1e-4 * Volume(near));
    EXPECT_EQ(ExtendedText(*ReadText(ExtendedText(*map))), ExtendedText(*map));
    EXPECT_EQ(recorder.messages.size(), 0u);
  }
}

TEST_F(FarWorldTest, WhatLeavesTheWorldIsToldOnceAndKeptAsItWas) {
  std::mt19937 random(4);
  const Brush near = RandomHull(random, {}, 256, reporter);
  for (const float place : {32700.0f, 100000.0f, 4000000.0f}) {
    recorder.messages.clear();
    const std::string brush = Moved(near, {place, 0, place});
    const auto map = ReadText(World(brush + brush));
    EXPECT_EQ(recorder.OnlyText().substr(0, 61),
              "At least one brush in this map lies further than 32767 units ");
    EXPECT_EQ(BrushOf(*map).getNumFaces(), 0);
    const std::string text = QuakeText(*map);
    const std::string points = brush.substr(2, brush.find("wall") - 2);
    const std::size_t first = text.find(points);
    ASSERT_NE(first, std::string::npos);
    EXPECT_NE(text.find(points, first + 1), std::string::npos);
    EXPECT_EQ(std::ranges::count(text, '('), 6 * near.getNumFaces());
    EXPECT_EQ(QuakeText(*ReadText(text)), text);
    EXPECT_NE(ExtendedText(*map).find("\t\t" + points), std::string::npos) << "as all others";
    Brush copy = BrushOf(*map).Copy();
    EXPECT_TRUE(copy.HasText());
    copy.Clear();
    EXPECT_FALSE(copy.HasText());
  }
}

// What a plane without bounds is cut to stays what it was.
TEST_F(FarWorldTest, WhatIsNotClosedEndsWhereItAlwaysDid) {
  const auto map = ReadText(World("{ ( 0 0 64 ) ( 0 64 64 ) ( 64 64 64 ) wall 0 0 0 1 1\n}"));
  EXPECT_EQ(BrushOf(*map).Box(), (Bounds{{-8192, -8192, 64}, {8192, 8192, 64}}));
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(FarWorldTest, TheLastUnitIsPartOfTheWorld) {
  const auto map = ReadText(World(Cuboid(32000, -64, -32767, 32767, 64, 0)));
  EXPECT_EQ(BrushOf(*map).Box(), (Bounds{{32000, -64, -32767}, {32767, 64, 0}}));
  EXPECT_TRUE(BrushOf(*map).FarFaces().empty());
  EXPECT_TRUE(recorder.messages.empty());
}

}  // namespace
}  // namespace ferrowand
