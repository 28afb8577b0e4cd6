#include "operations/csg.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "document/edit_step.h"
#include "operations/brush_check.h"
#include "operations/csg_commands.h"
#include "operations/edit_fixture.h"
#include "operations/face_check.h"
#include "support/brush_checks.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

double VolumeBelow(const entity& e) {
  double volume = e.brush.getNumFaces() > 0 ? Volume(e.brush) : 0;
  for (const EntityPtr& child : e.getEntityList()) volume += VolumeBelow(*child);
  return volume;
}

class CsgTest : public EditTest {
 protected:
  Brush BrushOf(int x0, int y0, int z0, int x1, int y1, int z1) {
    Open(Block("it", x0, y0, z0, x1, y1, z1));
    return Get("it").brush.Copy();
  }
  void Subtract(std::initializer_list<const char*> cutters) {
    Pick(cutters);
    SubtractSelection(*map);
  }
  const ClassSet& Classes() { return data.classes.Default(); }
};

TEST_F(CsgTest, ASplitFillsBothHalvesAndCapsThemInTheLookOfTheFirstFace) {
  Brush source = BrushOf(0, 0, 0, 64, 64, 64);
  Face& first = source.face(0);
  first.SetName("stone");
  first.xoff = 5;
  first.rotation = 45;
  first.yscale = 2;
  Brush outside(Colour{}), inside(Colour{});
  ASSERT_TRUE(SplitBrush(source, {{1, 0, 0}, 16}, outside, inside, reporter));
  for (const Brush* half : {&outside, &inside}) {
    EXPECT_TRUE(IsSolid(*half));
    const Face& cap = half->Faces().back();
    EXPECT_EQ(cap.Name(), "stone");
    EXPECT_EQ(std::tie(cap.xoff, cap.rotation, cap.yscale),
              std::tie(first.xoff, first.rotation, first.yscale));
  }
  EXPECT_EQ(outside.Box(), (Bounds{{16, 0, 0}, {64, 64, 64}}));
  EXPECT_EQ(inside.Box(), (Bounds{{0, 0, 0}, {16, 64, 64}}));
}

TEST_F(CsgTest, ASplitBesideTheSolidLeavesOneHalfEmpty) {
  const Brush source = BrushOf(0, 0, 0, 64, 64, 64);
  Brush outside(Colour{}), inside(Colour{});
  const Cases<Plane, int, int> cases{
      {{{1, 0, 0}, -8}, 6, 0},
      {{{1, 0, 0}, 80}, 0, 6},
      // A face on the plane is in neither half; the cap takes its place.
      {{{1, 0, 0}, 0.05}, 6, 0},
      {{{1, 0, 0}, 64}, 0, 6},
  };
  for (const auto& [plane, facesOutside, facesInside] : cases) {
    EXPECT_TRUE(SplitBrush(source, plane, outside, inside, reporter));
    EXPECT_EQ(outside.getNumFaces(), facesOutside);
    EXPECT_EQ(inside.getNumFaces(), facesInside);
  }
  EXPECT_FALSE(SplitBrush(Brush(Colour{}), {{1, 0, 0}, 0}, outside, inside, reporter));
  EXPECT_EQ(inside.getNumFaces(), 0);
}

// Every face lies on a plane of the target, exactly and with its texture, or on one of the cutter.
void ExpectPlanesKept(const Brush& target, const Brush& cutter, const Brush& piece) {
  for (const Face& face : piece.Faces()) {
    const bool isOld = std::ranges::any_of(target.Faces(), [&](const Face& old) {
      return face.plane.normal == old.plane.normal && face.plane.dist == old.plane.dist &&
             face.planepts == old.planepts && face.Name() == old.Name();
    });
    const bool isCap = std::ranges::any_of(cutter.Faces(), [&](const Face& cut) {
      return (face.plane.normal == cut.plane.normal && face.plane.dist == cut.plane.dist) ||
             (face.plane.normal == -cut.plane.normal && face.plane.dist == -cut.plane.dist);
    });
    EXPECT_TRUE(isOld || isCap);
  }
}

// Whether all pieces could be kept; if so, that nothing was lost and nothing is there twice.
bool ExpectCarved(const Brush& target, const Brush& cutter, const Carving& carving,
                  Reporter& reporter) {
  if (carving.loss != CutLoss::None) return false;
  std::vector<const Brush*> pieces;
  for (const EntityPtr& piece : carving.outside) pieces.push_back(&piece->brush);
  if (!std::ranges::all_of(pieces, [&](const Brush* b) { return IsKeepable(*b, reporter); })) {
    return false;
  }
  if (carving.inside.getNumFaces() > 0) pieces.push_back(&carving.inside);
  double volume = 0;
  for (const Brush* piece : pieces) {
    ExpectPlanesKept(target, cutter, *piece);
    EXPECT_TRUE(piece == &carving.inside || IsSolid(*piece)) << IsSolid(*piece).message();
    volume += Volume(*piece);
  }
  EXPECT_NEAR(volume, Volume(target), 0.02 * SurfaceArea(target));
  for (const Face& face : carving.inside.Faces()) {
    for (const WindingPoint& p : face.w->Points()) {
      EXPECT_TRUE(IsPointInsideBrush(cutter, DVec3(p.Position())));
    }
  }
  return true;
}

// Nearly every pair can be kept, and so is compared; of free hulls hardly any could.
TEST_F(CsgTest, RandomSolidsAreCarvedWithoutLossOrOverlap) {
  std::mt19937 random(11);
  int kept = 0;
  for (int round = 0; round < 500; ++round) {
    const float far = round % 3 == 0 ? 3808.0f : 0.0f;
    const bool isHull = round % 5 == 0;
    const auto solid = isHull ? RandomHull : RandomBlock;
    const Brush target = solid(random, {far, -far, far}, 128, reporter);
    const Brush cutter = solid(random, {far + 32, -far, far}, 96, reporter);
    const Carving carving = Carve(target, cutter, Classes(), CapTexture::First, reporter);
    const bool isKept = ExpectCarved(target, cutter, carving, reporter);
    kept += isKept && !isHull;
  }
  EXPECT_GT(kept, 380);  // of 400
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(CsgTest, ACutterThroughTheTargetLeavesAPieceAFaceAsItsChildren) {
  Open(Block("target", 0, 0, 0, 96, 96, 96) + Block("cutter", 32, 32, 32, 64, 64, 64));
  entity& target = Get("target");
  const std::string before = Text();
  Subtract({"cutter"});
  EXPECT_EQ(target.brush.getNumFaces(), 0);
  ASSERT_EQ(target.getEntityList().size(), 6u);
  EXPECT_STREQ(target.getEntityList()[0]->GetKey("classname"), "brush");
  EXPECT_EQ(VolumeBelow(target), 96 * 96 * 96 - 32 * 32 * 32);
  EXPECT_EQ(map->selection, (std::vector<entity*>{&Get("cutter")}));
  ExpectOneStep(before);
}

TEST_F(CsgTest, CutsReachTheBoundsOfTheWorld) {
  Open(Block("target", -32767, -32767, -32767, 32767, 32767, 32767) +
       Block("cutter", 32567, 32567, 32567, 32767, 32767, 32767));
  Subtract({"cutter"});
  const entity& target = Get("target");
  ASSERT_EQ(target.getEntityList().size(), 3u);
  for (const EntityPtr& piece : target.getEntityList()) EXPECT_TRUE(IsOnWholeUnits(piece->brush));
  EXPECT_DOUBLE_EQ(VolumeBelow(target), std::pow(65534.0, 3) - std::pow(200.0, 3));
}

TEST_F(CsgTest, OnlyWhatOverlapsIsTouched) {
  Open(Block("beside", 64, 0, 0, 128, 64, 64) + Block("cutter", 0, 0, 0, 64, 64, 64) +
       Block("corner", -64, -64, -64, 0, 0, 0));
  const std::string before = Text();
  for (const bool selects : {false, true}) {
    if (selects) Subtract({"cutter"});
    EXPECT_EQ(Text(), before);
    EXPECT_FALSE(map->undo.CanUndo());
  }
}

TEST_F(CsgTest, ATargetWhoseBoxAloneOverlapsHoldsItselfAsItsOnePiece) {
  const std::string wedge =
      "( 0 0 0 ) ( 0 64 0 ) ( 0 0 64 ) wall 0 0 0 1 1\n"
      "( 0 0 0 ) ( 0 0 64 ) ( 64 0 0 ) side 0 0 0 1 1\n"
      "( 0 0 0 ) ( 64 0 0 ) ( 0 64 0 ) floor 0 0 0 1 1\n"
      "( 64 0 0 ) ( 0 0 64 ) ( 0 64 0 ) slope 0 0 0 1 1\n";
  Open(Block("target", 40, 40, 40, 80, 80, 80) + Named("cutter", "{" + wedge + "}"));
  entity& target = Get("target");
  const Brush old = target.brush.Copy();
  Subtract({"cutter"});
  ASSERT_EQ(target.getEntityList().size(), 1u);
  const Brush& piece = target.getEntityList()[0]->brush;
  ASSERT_EQ(piece.getNumFaces(), old.getNumFaces());
  EXPECT_EQ(piece.Box(), old.Box());
}

TEST_F(CsgTest, ATargetInsideTheCutterKeepsItsKeysAndNothingElse) {
  Open(Block("target", 16, 16, 16, 32, 32, 32) + Block("cutter", 0, 0, 0, 64, 64, 64));
  Subtract({"cutter"});
  entity& target = Get("target");
  EXPECT_EQ(target.brush.getNumFaces(), 0);
  EXPECT_TRUE(target.getEntityList().empty());
  EXPECT_TRUE(target.brush.Box().IsEmpty());
}

TEST_F(CsgTest, HiddenAndDisabledObjectsAreNeverCut) {
  const auto block = [](const char* name) { return Block(name, 0, 0, 0, 64, 64, 64); };
  const std::string hidden = "{\"classname\" \"hidden\" ";
  Open(hidden + block("hid").substr(1) + hidden + block("child") + "}" +
           Block("cutter", 32, 32, 32, 96, 96, 96) + block("seen"),
       block("there"));
  Subtract({"cutter"});
  std::map<std::string, int> faces;
  ForEachEntity(*map, [&](const entity& e) {
    const char* name = e.GetKey("XMPentityname");
    faces[name ? name : ""] += e.brush.getNumFaces();
  });
  EXPECT_EQ(faces["seen"], 0);
  EXPECT_EQ(faces["hid"], 6);
  EXPECT_EQ(faces["child"], 6);
  EXPECT_EQ(faces["there"], 12) << "in a hidden layer and in a disabled one";
}

TEST_F(CsgTest, AMarkedGroupCutsWithAllItsBrushes) {
  for (const int state : {1, 0}) {
    Open(Block("target", 0, 0, 0, 96, 96, 96) +
         Named("group", "{" + Block("left", -16, 16, 16, 16, 32, 32) +
                            Block("right", 80, 16, 16, 112, 32, 32) + "}"));
    Get("group").state = static_cast<std::uint8_t>(state);
    EditStep step(*map);
    const CsgCount count = SubtractEntity(Get("target"), Get("group"), step);
    EXPECT_EQ(count.cut, state ? 1u : 0u);
    const double hole = state ? 2 * 16 * 16 * 16 : 0;
    EXPECT_EQ(VolumeBelow(Get("target")), 96.0 * 96 * 96 - hole);
  }
}

TEST_F(CsgTest, WhatIsCutAndThenTheCuttersStandLast) {
  Open(Block("cutter", 32, 0, 0, 96, 64, 64) + Block("first", 0, 0, 0, 64, 64, 64) +
       Block("other", 500, 0, 0, 564, 64, 64) + Block("second", 64, 0, 0, 128, 64, 64) +
       Block("cutter2", 600, 0, 0, 640, 64, 64));
  map->AddLayer("current");  // what lies in another one stays there
  Subtract({"cutter2", "cutter"});
  EXPECT_EQ(Children("main"), (Names{"other", "first", "second", "cutter2", "cutter"}));
}

TEST_F(CsgTest, ACutterThatStoodInNoLayerGoesWhereNewObjectsGo) {
  Open(Block("first", 0, 0, 0, 64, 64, 64) + Block("cutter", 32, 0, 0, 96, 64, 64));
  entity* const cutter = &Get("cutter");
  EditStep(*map).Move({&cutter, 1}, *map);
  Subtract({"cutter"});
  EXPECT_EQ(Children("main"), (Names{"first", "cutter"}));
}

// Each cutter meets the piece that the one before has left, so that pieces of pieces go deep.
TEST_F(CsgTest, AMapInWhichMuchWasCutCanBeReadAgain) {
  std::string holes;
  for (int i = 0; i < 250; ++i) holes += Block("cutter", 16 * i + 4, 4, 0, 16 * i + 8, 8, 64);
  Open(Block("floor", 0, 0, 0, 4000, 64, 64) + holes);
  for (const EntityPtr& e : Get("main").getEntityList()) Select(*map, e.get(), true);
  map->selection.Remove(Get("floor"));
  SubtractSelection(*map);
  const std::string text = Text();
  const auto again = ReadText(text);
  const double solid = 4000.0 * 64 * 64 - 250 * 4 * 4 * 64;
  EXPECT_EQ(VolumeBelow(*again), solid + 250 * 4 * 4 * 64);
  EXPECT_EQ(ExtendedText(*again), text);
  EXPECT_TRUE(recorder.messages.empty());
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

  Open(Block("target", 0, 0, 0, 64, 64, 64) + Block("cutter", -900, -900, -900, 900, 900, 0));
  Get("target").brush = brush.Copy();
  const std::string before = Text();
  recorder.messages.clear();
  Subtract({"cutter"});
  EXPECT_EQ(recorder.OnlyText(),
            "1 brush could not be cut as wanted: a piece would have too many faces.");
  EXPECT_EQ(Text(), before);
  EXPECT_FALSE(map->undo.CanUndo());
}

TEST_F(CsgTest, ACutterThatFailsBeforeOneThatWorksIsTold) {
  Open(Block("target", 0, 0, 0, 64, 64, 64) + Block("sliver", -16, -16, -16, 63, 80, 80) +
       Block("corner", 48, 48, 48, 96, 96, 96));
  Get("sliver").brush.Translate({0.7f, 0, 0});
  Subtract({"sliver", "corner"});
  EXPECT_EQ(recorder.OnlyText(),
            "1 brush could not be cut as wanted: a piece would be too small for whole units.");
  EXPECT_EQ(VolumeBelow(Get("target")), 64.0 * 64 * 64 - 16 * 16 * 16);
}

TEST_F(CsgTest, AnIntersectionReplacesBothObjects) {
  Open(Block("a", 0, 0, 0, 64, 64, 64) + Block("b", 32, 32, 32, 96, 96, 96));
  const std::string before = Text();
  Pick({"a", "b"});
  entity* common = IntersectSelection(*map);
  ASSERT_NE(common, nullptr);
  EXPECT_STREQ(common->GetKey("XMPentityname"), "CSGed father");
  EXPECT_EQ(common->Parent(), map->currentLayer());
  EXPECT_EQ(common->getEntityList().size(), 1u);
  EXPECT_EQ(common->GetBounds(), (Bounds{{32, 32, 32}, {64, 64, 64}}));
  EXPECT_EQ(FindNamed(*map, "a"), nullptr);
  EXPECT_EQ(FindNamed(*map, "b"), nullptr);
  EXPECT_EQ(map->selection, std::vector<entity*>{common});
  ExpectOneStep(before);

  map->undo.Undo();
  const std::string again = Text();
  map->SetCurrentLayer(&Get("hidden"));
  Pick({"a", "b"});
  recorder.answers = {Answer::No};
  EXPECT_EQ(IntersectSelection(*map), nullptr) << "asked before it goes out of sight";
  EXPECT_EQ(Text(), again);
}

TEST_F(CsgTest, AnIntersectionWithAGroupTakesWhatLiesInTwoOfItsBrushesOnce) {
  Open(Block("a", 0, 0, 0, 64, 64, 64) + Named("b", "{" + Block("b1", 0, 0, 0, 48, 64, 64) +
                                                        Block("b2", 32, 0, 0, 64, 64, 64) + "}"));
  Pick({"a", "b"});
  const entity* common = IntersectSelection(*map);
  ASSERT_NE(common, nullptr);
  EXPECT_EQ(VolumeBelow(*common), 64 * 64 * 64);
}

TEST_F(CsgTest, NothingInCommonLeavesBothWhereTheyWere) {
  Open(Block("a", 0, 0, 0, 64, 64, 64) + Block("b", 64, 0, 0, 96, 64, 64) +
       Block("c", 32, 0, 0, 96, 64, 64));
  const std::string before = Text();
  for (const auto& names : {std::initializer_list<const char*>{"a", "b"}, {"a"}, {"a", "b", "c"}}) {
    Pick(names);
    EXPECT_EQ(IntersectSelection(*map), nullptr);
    EXPECT_EQ(Text(), before);
    EXPECT_FALSE(map->undo.CanUndo());
  }
}

}  // namespace
}  // namespace ferrowand
