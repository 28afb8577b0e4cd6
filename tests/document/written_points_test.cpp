#include "document/written_points.h"

#include "document/announcement.h"
#include "document/document_fixture.h"
#include "document/transform.h"

namespace ferrowand {
namespace {

// A block with one side cut off by a plane, which crosses no edge at a whole unit.
std::string CutBlock(const std::string& plane) {
  std::string text = Cuboid(0, 0, 0, 64, 64, 64);
  return text.insert(2, plane + " slope 0 0 0 1 1\n");
}

class WrittenPointsTest : public DocumentTest {
 protected:
  std::unique_ptr<Map> Open(const std::string& brush) {
    return ReadText("{\"classname\" \"worldspawn\"" + brush + "}");
  }
  static Brush& BrushOf(const Map& map) {
    Brush* found = nullptr;
    ForEachEntity(map, [&](const entity& e) {
      if (e.brush.getNumFaces() > 0) found = const_cast<Brush*>(&e.brush);
    });
    return *found;
  }
  static entity& Holder(Map& map) { return *map.getEntityList()[0]->getEntityList()[0]; }
};

TEST_F(WrittenPointsTest, APlaneOfWholePointsNeverMoves) {
  const std::string slope = "( 3 0 41 ) ( 0 61 37 ) ( 59 64 47 )";
  auto map = Open(CutBlock(slope));
  const Plane plane = BrushOf(*map).face(0).plane;
  EXPECT_EQ(BrushOf(*map).face(0).Name(), "slope");
  const auto expectSame = [&](const Map& now) {
    const Face& face = BrushOf(now).face(0);
    for (const Plane& p : {face.plane, PlaneOf(PointsToWrite(face).points)}) {
      EXPECT_EQ(p.normal, plane.normal);
      EXPECT_EQ(p.dist, plane.dist);
    }
  };
  expectSame(*map);
  const std::string text = ExtendedText(*map);
  expectSame(*ReadText(text));
  EXPECT_EQ(ExtendedText(*ReadText(text)), text);

  // A check, moves by whole units, turns by right angles: each leaves it what it was.
  for (int i = 0; i < BrushOf(*map).getNumFaces(); ++i) UpdateFromWinding(BrushOf(*map).face(i));
  TranslateEntity(Holder(*map), {100, -70, 33});
  TranslateEntity(Holder(*map), {-100, 70, -33});
  for (int i = 0; i < 4; ++i) TransformEntity(Holder(*map), Matrix::TurnZ(90), {7, 3, 0});
  TransformEntity(Holder(*map), Matrix::Diagonal(-2, 2, 2), {});
  TransformEntity(Holder(*map), Matrix::Diagonal(-0.5, 0.5, 0.5), {});
  expectSame(*map);
  EXPECT_EQ(ExtendedText(*map), text);
}

TEST_F(WrittenPointsTest, ATurnedBrushStandsOverTenSaves) {
  for (int degrees = 15; degrees < 180; degrees += 15) {
    if (degrees % 45 == 0) continue;
    auto map = Open(CutBlock("( 3 0 41 ) ( 0 61 37 ) ( 59 64 47 )"));
    TransformEntity(Holder(*map), Matrix::TurnZ(degrees), {32, 32, 0});
    const Brush turned = BrushOf(*map).Copy();
    map = ReadText(ExtendedText(*map));
    const std::string text = ExtendedText(*map);
    for (int save = 2; save <= 10; ++save) map = ReadText(ExtendedText(*map));
    EXPECT_EQ(ExtendedText(*map), text) << degrees;
    for (int i = 0; i < turned.getNumFaces(); ++i) {
      const Face& face = turned.face(i);
      EXPECT_LE(Difference(BrushOf(*map).face(i).plane, face.plane, face.w->Points()), 2 * CARRIED);
    }
  }
}

// Those that the face was read with may lie anywhere on its plane.
TEST_F(WrittenPointsTest, TheCornersAreWrittenWhereTheyLieOnThePlane) {
  std::string text = Cuboid(0, 0, 0, 64, 64, 64);
  const std::string near = "( 0 0 0 ) ( 0 64 0 ) ( 0 0 64 )";
  text.replace(text.find(near), near.size(), "( 0 0 0 ) ( 0 500 0 ) ( 0 0 700 )");
  const auto map = Open(text);
  EXPECT_EQ(BrushOf(*map).face(0).planepts[2], Vec3(0, 0, 700));
  EXPECT_EQ(ExtendedText(*map), ExtendedText(*Open(Cuboid(0, 0, 0, 64, 64, 64))));
}

class StatusTexts : public MapObserver {
 public:
  void OnStatus(const std::string& text) override { texts.push_back(text); }
  std::vector<std::string> texts;
};

TEST_F(WrittenPointsTest, WhatASaveMovesIsSaidBehindItsText) {
  const auto map = Open(Cuboid(0, 0, 0, 65, 64, 64));
  StatusTexts status;
  map->AddObserver(status);
  EXPECT_TRUE(map->Save(temp.Path("a.map"), 0, {}));
  TransformEntity(Holder(*map), Matrix::Diagonal(0.5f, 1, 0.51f), {});
  EXPECT_TRUE(map->Save(temp.Path("a.xmp"), 0, {}));
  // For the game the same again through an instance, and the template not at all.
  Holder(*map).SetKey("classname", "templateClass");
  Holder(*map).SetKey("XMPentityname", "t");
  auto instance = std::make_unique<entity>(*map->classSet);
  instance->SetKey("classname", "templateInstance");
  instance->SetKey("XMPclass", "t");
  map->AddChild(std::move(instance));
  EXPECT_TRUE(map->Export(temp.Path("a.map"), 0, {}));
  TransformEntity(Holder(*map), Matrix::Diagonal(0.001f, 1, 1), {});
  temp.Write("a.xmp.1.bak/in the way", "");
  EXPECT_TRUE(map->Save(temp.Path("a.xmp"), 0, {.backups = 1}));
  EXPECT_NE(status.texts.back().find("faces are too small for whole units and were lost, without "
                                     "keeping the version before"),
            std::string::npos)
      << status.texts.back();
  status.texts.pop_back();
  map->RemoveObserver(status);
  EXPECT_EQ(status.texts,
            (std::vector<std::string>{"Saved MAP format",
                                      "Saved Extended MAP format; 2 faces lie between whole units "
                                      "and were moved, by up to 0.50 units",
                                      "Saved MAP format; 2 faces lie between whole units "
                                      "and were moved, by up to 0.50 units"}));
}

}  // namespace
}  // namespace ferrowand
