#include "document/csg.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "document/csg_commands.h"
#include "document/edit/selection.h"
#include "document/edit_step.h"
#include "document/face_check.h"
#include "document_fixture.h"
#include "support/brush_checks.h"

namespace ferrowand {
namespace {

std::string World(const std::string& content) {
  return "{\n\"classname\" \"worldspawn\"\n" + content + "}\n";
}

std::string Named(const std::string& name, const std::string& content,
                  const std::string& classname = "brush") {
  return "{\n\"classname\" \"" + classname + "\"\n\"XMPentityname\" \"" + name + "\"\n" + content +
         "}\n";
}

// What stands between the outer braces of a cuboid.
std::string Faces(int x0, int y0, int z0, int x1, int y1, int z1) {
  const std::string block = Cuboid(x0, y0, z0, x1, y1, z1);
  return block.substr(2, block.size() - 4);
}

double VolumeBelow(const entity& e) {
  double volume = e.brush.getNumFaces() > 0 ? Volume(e.brush) : 0;
  for (const EntityPtr& child : e.getEntityList()) volume += VolumeBelow(*child);
  return volume;
}

class CsgTest : public DocumentTest {
 protected:
  entity& Find(const Map& map, const std::string& name) {
    return const_cast<entity&>(*FindNamed(map, name));
  }
  void Select(Map& map, std::initializer_list<const char*> names) {
    map.selection.clear();
    for (const char* name : names) map.selection.push_back(&Find(map, name));
  }
  Brush BrushOf(const std::string& faces) {
    const auto map = ReadText(World(Named("it", faces)));
    return Find(*map, "it").brush.Copy();
  }
  const ClassSet& Classes() { return data.classes.Default(); }
};

TEST_F(CsgTest, ASplitFillsBothHalvesAndCapsThem) {
  const Brush source = BrushOf(Faces(0, 0, 0, 64, 64, 64));
  Brush outside(Colour{}), inside(Colour{});
  ASSERT_TRUE(SplitBrush(source, {{1, 0, 0}, 16}, outside, inside, reporter));
  EXPECT_TRUE(IsSolid(outside));
  EXPECT_TRUE(IsSolid(inside));
  EXPECT_EQ(outside.Box(), (Bounds{{16, 0, 0}, {64, 64, 64}}));
  EXPECT_EQ(inside.Box(), (Bounds{{0, 0, 0}, {16, 64, 64}}));
  EXPECT_EQ(outside.Faces().back().plane.normal, DVec3(-1, 0, 0));
  EXPECT_EQ(outside.Faces().back().plane.dist, -16);
  EXPECT_EQ(inside.Faces().back().plane.normal, DVec3(1, 0, 0));
  EXPECT_EQ(inside.Faces().back().plane.dist, 16);
}

TEST_F(CsgTest, ASplitBesideTheSolidLeavesOneHalfEmpty) {
  const Brush source = BrushOf(Faces(0, 0, 0, 64, 64, 64));
  Brush outside(Colour{}), inside(Colour{});
  const struct {
    Plane plane;
    int outside, inside;
  } cases[] = {
      {{{1, 0, 0}, -8}, 6, 0},
      {{{1, 0, 0}, 80}, 0, 6},
      // A face on the plane is in neither half; the cap takes its place.
      {{{1, 0, 0}, 0.05}, 6, 0},
      {{{1, 0, 0}, 64}, 0, 6},
  };
  for (const auto& c : cases) {
    EXPECT_TRUE(SplitBrush(source, c.plane, outside, inside, reporter));
    EXPECT_EQ(outside.getNumFaces(), c.outside);
    EXPECT_EQ(inside.getNumFaces(), c.inside);
  }
  EXPECT_FALSE(SplitBrush(Brush(Colour{}), {{1, 0, 0}, 0}, outside, inside, reporter));
  EXPECT_EQ(inside.getNumFaces(), 0);
}

TEST_F(CsgTest, ACapLooksLikeTheFirstFace) {
  Brush source = BrushOf(Faces(0, 0, 0, 64, 64, 64));
  Face& first = source.face(0);
  first.SetName("stone");
  first.xoff = 5;
  first.rotation = 45;
  first.yscale = 2;
  Brush outside(Colour{}), inside(Colour{});
  SplitBrush(source, {{0, 0, 1}, 16}, outside, inside, reporter);
  for (const Brush* half : {&outside, &inside}) {
    const Face& cap = half->Faces().back();
    EXPECT_EQ(cap.Name(), "stone");
    EXPECT_EQ(cap.xoff, 5);
    EXPECT_EQ(cap.rotation, 45);
    EXPECT_EQ(cap.yscale, 2);
  }
}

// How far inside it a point lies; negative outside.
double DepthIn(const Brush& brush, const DVec3& p) {
  double depth = brush.getNumFaces() > 0 ? 1e9 : -1e9;
  for (const Face& face : brush.Faces()) depth = std::min(depth, -face.plane.DistanceTo(p));
  return depth;
}

void ExpectCarved(const Brush& target, const Brush& cutter, const Carving& carving,
                  std::mt19937& random) {
  constexpr double CLEAR = 0.3;  // of any surface, so that no tolerance has a say
  const Bounds& box = target.Box();
  for (int i = 0; i < 300; ++i) {
    DVec3 p;
    for (int axis = 0; axis < 3; ++axis) {
      p[axis] = std::uniform_real_distribution<double>(box.mins[axis], box.maxs[axis])(random);
    }
    if (DepthIn(target, p) < CLEAR) continue;
    int inside = DepthIn(carving.inside, p) > 0;
    bool isClear = true;
    for (const Face& face : cutter.Faces()) {
      isClear = isClear && std::fabs(face.plane.DistanceTo(p)) > CLEAR;
    }
    if (!isClear) continue;
    EXPECT_EQ(inside != 0, DepthIn(cutter, p) > 0);
    for (const EntityPtr& piece : carving.outside) inside += DepthIn(piece->brush, p) > 0;
    EXPECT_EQ(inside, 1);
  }
}

TEST_F(CsgTest, RandomSolidsAreCarvedWithoutLossOrOverlap) {
  std::mt19937 random(11);
  int keepable = 0;
  for (int round = 0; round < 1000; ++round) {
    const float far = round % 3 == 0 ? 3800.0f : 0.0f;
    const Brush target = RandomBrush(random, {far, -far, far}, 128, reporter);
    const Brush cutter = RandomBrush(random, {far + 32, -far, far}, 96, reporter);
    const Carving carving = Carve(target, cutter, Classes(), CapTexture::First, reporter);
    if (!carving.isWhole) continue;
    ExpectCarved(target, cutter, carving, random);
    const bool isKept = std::ranges::all_of(carving.outside, [&](const EntityPtr& piece) {
      return IsKeepable(piece->brush, reporter);
    });
    if (!isKept) continue;
    ++keepable;
    double volume = carving.inside.getNumFaces() > 0 ? Volume(carving.inside) : 0;
    for (const EntityPtr& piece : carving.outside) {
      EXPECT_TRUE(IsSolid(piece->brush)) << round;
      volume += Volume(piece->brush);
    }
    EXPECT_NEAR(volume, Volume(target), 0.02 * SurfaceArea(target)) << round;
  }
  EXPECT_GT(keepable, 30);
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(CsgTest, FacesThatAreNotCutKeepTheirPlanesAndTextures) {
  const Brush target = BrushOf(Faces(0, 0, 0, 64, 64, 64));
  const Brush cutter = BrushOf(Faces(16, 16, 32, 48, 48, 64));  // flush with the top
  const Carving carving = Carve(target, cutter, Classes(), CapTexture::First, reporter);
  ASSERT_EQ(carving.outside.size(), 5u);
  for (const EntityPtr& piece : carving.outside) {
    for (const Face& face : piece->brush.Faces()) {
      for (const Face& old : target.Faces()) {
        if (face.plane.normal != old.plane.normal || face.plane.dist != old.plane.dist) continue;
        EXPECT_EQ(face.planepts, old.planepts);
        EXPECT_EQ(face.Name(), old.Name());
      }
    }
  }
}

TEST_F(CsgTest, ACutterThroughTheTargetLeavesAPieceAFaceAsItsChildren) {
  const auto map = ReadText(World(Named("target", Faces(0, 0, 0, 96, 96, 96)) +
                                  Named("cutter", Faces(32, 32, 32, 64, 64, 64))));
  entity& target = Find(*map, "target");
  const std::string before = ExtendedText(*map);
  Select(*map, {"cutter"});
  SubtractSelection(*map);
  EXPECT_EQ(target.brush.getNumFaces(), 0);
  ASSERT_EQ(target.getEntityList().size(), 6u);
  for (const EntityPtr& piece : target.getEntityList()) {
    EXPECT_TRUE(IsSolid(piece->brush));
    EXPECT_TRUE(IsOnWholeUnits(piece->brush));
    EXPECT_STREQ(piece->GetKey("classname"), "brush");
  }
  EXPECT_EQ(VolumeBelow(target), 96 * 96 * 96 - 32 * 32 * 32);
  EXPECT_TRUE(map->modified);
  EXPECT_EQ(map->selection, (std::vector<entity*>{&Find(*map, "cutter")}));

  const std::string after = ExtendedText(*map);
  map->undo.Undo();
  EXPECT_EQ(ExtendedText(*map), before);
  map->undo.Redo();
  EXPECT_EQ(ExtendedText(*map), after);
  map->undo.Undo();
  EXPECT_EQ(ExtendedText(*map), before);
}

TEST_F(CsgTest, CutsReachTheBoundsOfTheWorld) {
  const auto map = ReadText(World(Named("target", Faces(-8192, -8192, -8192, 8192, 8192, 8192)) +
                                  Named("cutter", Faces(8000, 8000, 8000, 8192, 8192, 8192))));
  Select(*map, {"cutter"});
  SubtractSelection(*map);
  const entity& target = Find(*map, "target");
  ASSERT_EQ(target.getEntityList().size(), 3u);
  for (const EntityPtr& piece : target.getEntityList()) EXPECT_TRUE(IsOnWholeUnits(piece->brush));
  EXPECT_DOUBLE_EQ(VolumeBelow(target), std::pow(16384.0, 3) - std::pow(192.0, 3));
}

TEST_F(CsgTest, OnlyWhatOverlapsIsTouched) {
  const auto map = ReadText(World(Named("beside", Faces(64, 0, 0, 128, 64, 64)) +
                                  Named("cutter", Faces(0, 0, 0, 64, 64, 64)) +
                                  Named("corner", Faces(-64, -64, -64, 0, 0, 0))));
  const std::string before = ExtendedText(*map);
  for (const bool selects : {false, true}) {
    if (selects) Select(*map, {"cutter"});
    SubtractSelection(*map);
    EXPECT_EQ(ExtendedText(*map), before);
    EXPECT_FALSE(map->undo.CanUndo());
  }
}

TEST_F(CsgTest, ATargetWhoseBoxAloneOverlapsHoldsItselfAsItsOnePiece) {
  const std::string wedge =
      "( 0 0 0 ) ( 0 64 0 ) ( 0 0 64 ) wall 0 0 0 1 1\n"
      "( 0 0 0 ) ( 0 0 64 ) ( 64 0 0 ) side 0 0 0 1 1\n"
      "( 0 0 0 ) ( 64 0 0 ) ( 0 64 0 ) floor 0 0 0 1 1\n"
      "( 64 0 0 ) ( 0 0 64 ) ( 0 64 0 ) slope 0 0 0 1 1\n";
  const auto map =
      ReadText(World(Named("target", Faces(40, 40, 40, 80, 80, 80)) + Named("cutter", wedge)));
  entity& target = Find(*map, "target");
  const Brush old = target.brush.Copy();
  Select(*map, {"cutter"});
  SubtractSelection(*map);
  ASSERT_EQ(target.getEntityList().size(), 1u);
  const Brush& piece = target.getEntityList()[0]->brush;
  ASSERT_EQ(piece.getNumFaces(), old.getNumFaces());
  EXPECT_EQ(piece.Box(), old.Box());
}

TEST_F(CsgTest, ATargetInsideTheCutterKeepsItsKeysAndNothingElse) {
  const auto map = ReadText(World(Named("target", Faces(16, 16, 16, 32, 32, 32)) +
                                  Named("cutter", Faces(0, 0, 0, 64, 64, 64))));
  Select(*map, {"cutter"});
  SubtractSelection(*map);
  entity& target = Find(*map, "target");
  EXPECT_EQ(target.brush.getNumFaces(), 0);
  EXPECT_TRUE(target.getEntityList().empty());
  EXPECT_TRUE(target.brush.Box().IsEmpty());
}

TEST_F(CsgTest, HiddenAndDisabledObjectsAreNeverCut) {
  const std::string block = Faces(0, 0, 0, 64, 64, 64);
  const auto map = ReadText(
      World(Named("hid", block, "hidden") + Named("below", Named("child", block), "hidden") +
            Named("l1", "\"XMPstate\" \"1\"\n" + Named("unseen", block), "layer") +
            Named("l2", "\"XMPstate\" \"2\"\n" + Named("locked", block), "layer") +
            Named("cutter", Faces(32, 32, 32, 96, 96, 96)) + Named("seen", block)));
  Select(*map, {"cutter"});
  SubtractSelection(*map);
  for (const char* name : {"hid", "child", "unseen", "locked"}) {
    EXPECT_EQ(Find(*map, name).brush.getNumFaces(), 6) << name;
  }
  EXPECT_EQ(Find(*map, "seen").brush.getNumFaces(), 0);
}

TEST_F(CsgTest, AMarkedGroupCutsWithAllItsBrushes) {
  const std::string group = Named("group", Named("left", Faces(-16, 16, 16, 16, 32, 32)) +
                                               Named("right", Faces(80, 16, 16, 112, 32, 32)));
  const auto text = World(Named("target", Faces(0, 0, 0, 96, 96, 96)) + group);
  for (const int state : {1, 0}) {
    const auto map = ReadText(text);
    Find(*map, "group").state = static_cast<std::uint8_t>(state);
    EditStep step(*map);
    const CsgCount count = SubtractEntity(Find(*map, "target"), Find(*map, "group"), step);
    EXPECT_EQ(count.cut, state ? 2u : 0u);
    const double hole = state ? 2 * 16 * 16 * 16 : 0;
    EXPECT_EQ(VolumeBelow(Find(*map, "target")), 96.0 * 96 * 96 - hole);
  }
}

TEST_F(CsgTest, WhatIsCutAndThenTheCuttersStandLast) {
  const auto map = ReadText(World(Named("cutter", Faces(32, 0, 0, 96, 64, 64)) +
                                  Named("first", Faces(0, 0, 0, 64, 64, 64)) +
                                  Named("other", Faces(500, 0, 0, 564, 64, 64)) +
                                  Named("second", Faces(64, 0, 0, 128, 64, 64)) +
                                  Named("cutter2", Faces(600, 0, 0, 640, 64, 64))));
  Select(*map, {"cutter2", "cutter"});
  SubtractSelection(*map);
  std::string order;
  for (const EntityPtr& e : Find(*map, "other").Parent()->getEntityList()) {
    if (const char* name = e->GetKey("XMPentityname")) order += std::string(name) + ' ';
  }
  EXPECT_NE(order.find("other first second cutter2 cutter "), std::string::npos) << order;
}

// Each cutter meets the piece that the one before has left, so that pieces of pieces go deep.
TEST_F(CsgTest, AMapInWhichMuchWasCutCanBeReadAgain) {
  std::string holes;
  for (int i = 0; i < 250; ++i) {
    holes += Named("cutter", Faces(16 * i + 4, 4, 0, 16 * i + 8, 8, 64));
  }
  const auto map = ReadText(World(Named("floor", Faces(0, 0, 0, 4000, 64, 64)) + holes));
  ForEachEntity(*map, [&](const entity& e) {
    const char* name = e.GetKey("XMPentityname");
    if (name && std::string(name) == "cutter") map->selection.push_back(const_cast<entity*>(&e));
  });
  SubtractSelection(*map);
  const std::string text = ExtendedText(*map);
  unsigned flags = 0;
  const auto again = ReadText(text, &flags);
  EXPECT_EQ(flags & READ_DEPTH_REPORTED, 0u);
  const double solid = 4000.0 * 64 * 64 - 250 * 4 * 4 * 64;
  EXPECT_EQ(VolumeBelow(*again), solid + 250 * 4 * 4 * 64);
  EXPECT_EQ(ExtendedText(*again), text);
  EXPECT_TRUE(recorder.messages.empty());
}

// On the maps of the folder that FERROWAND_CORPUS names, every tenth brush cuts all others.
TEST_F(CsgTest, RealMapsAreCutIntoSoundPiecesAndComeBack) {
  const char* corpus = std::getenv("FERROWAND_CORPUS");
  if (!corpus) GTEST_SKIP() << "FERROWAND_CORPUS names no folder";
  for (const auto& file : std::filesystem::directory_iterator(corpus)) {
    if (file.path().extension() != ".map") continue;
    const auto map = LoadMap(data, file.path().string());
    const std::string before = ExtendedText(*map);
    const double volume = VolumeBelow(*map);
    int brushes = 0;
    std::set<const entity*> unsound;  // some have a face twice
    ForEachEntity(*map, [&](const entity& e) {
      const bool isTenth = e.brush.getNumFaces() > 0 && ++brushes % 10 == 0;
      if (e.brush.getNumFaces() > 0 && !IsSolid(e.brush)) unsound.insert(&e);
      if (isTenth) map->selection.push_back(const_cast<entity*>(&e));
    });
    SubtractSelection(*map);
    EXPECT_LE(VolumeBelow(*map), volume);
    ForEachEntity(*map, [&](const entity& e) {
      if (e.brush.getNumFaces() == 0 || unsound.contains(&e)) return;
      EXPECT_TRUE(IsSolid(e.brush)) << file.path();
    });
    map->undo.Undo();
    EXPECT_EQ(ExtendedText(*map), before);
  }
}

TEST_F(CsgTest, APieceOfMoreFacesThanABrushCanHaveLeavesTheTargetWhole) {
  // Sixteen sides slope inwards above the middle and sixteen below it.
  Brush brush(Colour{});
  for (int i = 0; i < 32; ++i) {
    const double angle = (i + 0.25) * 3.14159265358979 / 16;
    const double up = i % 2 ? 1 : -1;
    const DVec3 normal = Normalise({std::cos(angle), std::sin(angle), up * 0.5});
    Face face;
    face.xscale = face.yscale = 1;
    face.plane = {normal, 512};
    brush.AddFace(std::move(face));
  }
  brush.Rebuild(reporter);
  ASSERT_EQ(brush.getNumFaces(), 32);
  Brush outside(Colour{}), inside(Colour{});
  EXPECT_TRUE(SplitBrush(brush, {{0, 0, 1}, 0}, outside, inside, reporter));
  EXPECT_EQ(outside.getNumFaces() + inside.getNumFaces(), 0);

  const auto map = ReadText(World(Named("target", Faces(0, 0, 0, 64, 64, 64)) +
                                  Named("cutter", Faces(-900, -900, -900, 900, 900, 0))));
  Find(*map, "target").brush = brush.Copy();
  const std::string before = ExtendedText(*map);
  Select(*map, {"cutter"});
  recorder.messages.clear();
  SubtractSelection(*map);
  EXPECT_NE(recorder.OnlyText().find("1 of the brushes could not be cut"), std::string::npos);
  EXPECT_EQ(ExtendedText(*map), before);
  EXPECT_FALSE(map->undo.CanUndo());
}

TEST_F(CsgTest, AnIntersectionReplacesBothObjects) {
  const auto map = ReadText(
      World(Named("a", Faces(0, 0, 0, 64, 64, 64)) + Named("b", Faces(32, 32, 32, 96, 96, 96))));
  const std::string before = ExtendedText(*map);
  Select(*map, {"a", "b"});
  entity* common = IntersectSelection(*map);
  ASSERT_NE(common, nullptr);
  EXPECT_STREQ(common->GetKey("XMPentityname"), "CSGed father");
  EXPECT_EQ(common->Parent(), map->currentLayer);
  ASSERT_EQ(common->getEntityList().size(), 1u);
  EXPECT_TRUE(IsSolid(common->getEntityList()[0]->brush));
  EXPECT_EQ(common->GetBounds(), (Bounds{{32, 32, 32}, {64, 64, 64}}));
  EXPECT_EQ(FindNamed(*map, "a"), nullptr);
  EXPECT_EQ(FindNamed(*map, "b"), nullptr);
  EXPECT_EQ(map->selection, std::vector<entity*>{common});
  map->undo.Undo();
  EXPECT_EQ(ExtendedText(*map), before);
}

TEST_F(CsgTest, AnIntersectionWithAGroupTakesWhatLiesInTwoOfItsBrushesOnce) {
  const auto map = ReadText(World(Named("a", Faces(0, 0, 0, 64, 64, 64)) +
                                  Named("b", Named("b1", Faces(0, 0, 0, 48, 64, 64)) +
                                                 Named("b2", Faces(32, 0, 0, 64, 64, 64)))));
  Select(*map, {"a", "b"});
  const entity* common = IntersectSelection(*map);
  ASSERT_NE(common, nullptr);
  EXPECT_EQ(VolumeBelow(*common), 64 * 64 * 64);
}

TEST_F(CsgTest, NothingInCommonLeavesBothWhereTheyWere) {
  const auto map = ReadText(World(Named("a", Faces(0, 0, 0, 64, 64, 64)) +
                                  Named("b", Faces(64, 0, 0, 96, 64, 64)) +
                                  Named("c", Faces(32, 0, 0, 96, 64, 64))));
  const std::string before = ExtendedText(*map);
  for (const auto& names : {std::initializer_list<const char*>{"a", "b"}, {"a"}, {"a", "b", "c"}}) {
    Select(*map, names);
    EXPECT_EQ(IntersectSelection(*map), nullptr);
    EXPECT_EQ(ExtendedText(*map), before);
    EXPECT_FALSE(map->undo.CanUndo());
  }
}

}  // namespace
}  // namespace ferrowand
