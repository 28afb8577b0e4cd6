#include "document/hollow.h"

#include <random>
#include <string>

#include "document/csg.h"
#include "document_fixture.h"
#include "support/brush_checks.h"

namespace ferrowand {
namespace {

class HollowTest : public DocumentTest {
 protected:
  // One brush, selected.
  entity& Put(Map& map, Brush brush) {
    EntityPtr made = std::make_unique<entity>(*map.classSet);
    made->brush = std::move(brush);
    entity& added = *map.AddChild(std::move(made));
    map.selection = {&added};
    return added;
  }
  Brush Block(int x0, int y0, int z0, int x1, int y1, int z1) {
    const auto map =
        ReadText("{\n\"classname\" \"worldspawn\"\n" + Cuboid(x0, y0, z0, x1, y1, z1) + "}\n");
    Brush brush(Colour{});
    ForEachEntity(*map, [&](const entity& e) {
      if (e.brush.getNumFaces() > 0) brush = e.brush.Copy();
    });
    return brush;
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
  const struct {
    int width;
    Bounds box;
    double volume;
  } cases[] = {
      {8, {{0, 0, 0}, {64, 64, 64}}, 64 * 64 * 64 - 48 * 48 * 48},
      {-8, {{-8, -8, -8}, {72, 72, 72}}, 80 * 80 * 80 - 64 * 64 * 64},
      {31, {{0, 0, 0}, {64, 64, 64}}, 64 * 64 * 64 - 2 * 2 * 2},
  };
  for (const auto& c : cases) {
    Map map(data);
    entity& target = Put(map, Block(0, 0, 0, 64, 64, 64));
    const std::string before = ExtendedText(map);
    HollowSelection(map, c.width);
    ASSERT_EQ(target.getEntityList().size(), 6u);
    double volume = 0;
    for (const EntityPtr& wall : target.getEntityList()) {
      EXPECT_TRUE(IsSolid(wall->brush));
      EXPECT_TRUE(IsOnWholeUnits(wall->brush));
      volume += Volume(wall->brush);
    }
    EXPECT_DOUBLE_EQ(volume, c.volume);
    EXPECT_EQ(target.brush.getNumFaces(), 0);
    EXPECT_EQ(target.GetBounds(), c.box);
    map.undo.Undo();
    EXPECT_EQ(ExtendedText(map), before);
  }
}

TEST_F(HollowTest, InnerFacesLookLikeTheOuterOnesBehindThem) {
  Map map(data);
  Brush block = Block(0, 0, 0, 64, 64, 64);
  for (int i = 0; i < 6; ++i) block.face(i).SetName("side" + std::to_string(i));
  const std::vector<DVec3> normals = [&] {
    std::vector<DVec3> found;
    for (const Face& face : block.Faces()) found.push_back(face.plane.normal);
    return found;
  }();
  entity& target = Put(map, std::move(block));
  HollowSelection(map, 8);
  for (std::size_t i = 0; i < 6; ++i) {
    // The wall that the i-th face cut off ends in a cap that looks the other way.
    const Face& cap = target.getEntityList()[i]->brush.Faces().back();
    EXPECT_EQ(cap.plane.normal, -normals[i]);
    EXPECT_EQ(cap.Name(), "side" + std::to_string(i));
  }
}

TEST_F(HollowTest, WhatIsTooSmallForItsWallsStaysAndIsReportedOnce) {
  for (const int width : {32, 40, 2000000000, -9000, -2147483647 - 1}) {
    Map map(data);
    Put(map, Block(0, 0, 0, 64, 64, 64));
    entity& other = Put(map, Block(100, 0, 0, 164, 64, 64));
    map.selection.insert(map.selection.begin(), other.Parent()->getEntityList()[0].get());
    const std::string before = ExtendedText(map);
    recorder.messages.clear();
    HollowSelection(map, width);
    EXPECT_EQ(recorder.OnlyText().substr(0, 24), "2 of the brushes could n") << width;
    EXPECT_EQ(ExtendedText(map), before) << width;
    EXPECT_FALSE(map.undo.CanUndo());
  }
  Map map(data);
  recorder.messages.clear();
  HollowSelection(map, 0);
  EXPECT_NE(recorder.OnlyText().find("must be an integer, and not equal to 0"), std::string::npos);
}

TEST_F(HollowTest, RandomSolidsBecomeSoundWallsOrStay) {
  std::mt19937 random(6);
  int hollow = 0;
  for (int round = 0; round < 200; ++round) {
    Map map(data);
    const Brush brush = RandomBrush(random, {100, 200, 300}, 256, reporter);
    entity& target = Put(map, brush.Copy());
    const int width = round % 2 ? 8 : -8;
    HollowSelection(map, width);
    if (target.getEntityList().empty()) {
      EXPECT_EQ(target.brush.getNumFaces(), brush.getNumFaces());
      continue;
    }
    ++hollow;
    for (const EntityPtr& wall : target.getEntityList()) EXPECT_TRUE(IsSolid(wall->brush));
    EXPECT_EQ(target.GetBounds() == brush.Box(), width > 0);
  }
  EXPECT_GT(hollow, 5);
}

}  // namespace
}  // namespace ferrowand
