// What CSG, hollow, turns and scales make in memory against what the file of it holds.
#include <algorithm>
#include <functional>
#include <random>

#include "document/read_log.h"
#include "document/written_points.h"
#include "operations/brush_check.h"
#include "operations/csg.h"
#include "operations/edit_fixture.h"
#include "operations/hollow.h"
#include "operations/primitives.h"
#include "operations/transform_selection.h"
#include "support/brush_checks.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

constexpr int EACH = 4;

class SavedShapesTest : public EditTest {
 protected:
  void SetUp() override { Open(Box("a", 0, 0, 0)); }

  Vec3 OnGrid(int low, int high) {
    const auto any = [&] {
      return 16.0f * static_cast<float>(low + static_cast<int>(random() % (high - low + 1u)));
    };
    return {any(), any(), any()};
  }
  Brush Made(PrimitiveKind kind) {
    const Vec3 at = OnGrid(-8, 8);
    const Primitive primitive{kind, {at, at + OnGrid(6, 14)}, 2, 8};
    return std::move(MakePrimitive(primitive, "wall", *map).object->brush);
  }
  Brush Hull() { return RandomHull(random, OnGrid(-8, 8), 128, reporter); }
  bool Turn() {
    const int axis = static_cast<int>(random() % 3);
    const double degrees = 15.0 * (1 + static_cast<double>(random() % 23));
    return RotateSelection(*map, axis, (axis + 1) % 3, degrees, DVec3(OnGrid(-8, 8)), {}) ==
           EditResult::Done;
  }
  bool Scale() {
    const auto factor = [&] { return 0.5 + static_cast<double>(random() % 100) / 40; };
    return ScaleSelection(*map, {factor(), factor(), factor()}, {}, {}) == EditResult::Done;
  }

  Brush Read(const Brush& brush) {
    TextWriter out;
    brush.WriteFaces(out, reporter);
    TextReader reader(reporter);
    reader.Open(temp.Write("brush.txt", std::string(out.Text()) + "}"));
    Brush read(Colour{});
    ReadLog log(reporter);
    read.ReadBody(reader, map->wads, log, reporter);
    return read;
  }
  // Returns its volume in the file.
  double ExpectKept(const Brush& brush) {
    const bool isCarried = ShapeInFile(brush, reporter).isCarried;
    const Brush read = Read(brush), again = Read(read);
    EXPECT_EQ(read.getNumFaces(), brush.getNumFaces());
    for (int i = 0; i < std::min(read.getNumFaces(), brush.getNumFaces()); ++i) {
      EXPECT_LE(CornerDistance(*read.face(i).w, *brush.face(i).w),
                isCarried ? LARGEST_SLIP : LARGEST_STRAY);
      EXPECT_EQ(again.face(i).plane.dist, read.face(i).plane.dist);
    }
    EXPECT_NEAR(Volume(read), Volume(brush), (isCarried ? 0.02 : 0.5) * SurfaceArea(brush));
    return Volume(read);
  }

  std::mt19937 random{7};
};

TEST_F(SavedShapesTest, ABrushWithAGapIsNoneToKeep) {
  Brush& brush = Get("a").brush;
  EXPECT_TRUE(IsKeepable(brush, reporter));
  const WindingPoint corner = brush.face(0).w->Points().front();
  for (WindingPoint& point : brush.face(0).w->Points()) {
    point.x = (point.x + corner.x) / 2;
    point.y = (point.y + corner.y) / 2;
    point.z = (point.z + corner.z) / 2;
  }
  EXPECT_FALSE(IsKeepable(brush, reporter));
}

TEST_F(SavedShapesTest, PiecesFillTheWholeInTheFileToo) {
  int refused = 0;
  for (int round = 0; round < 3 * EACH; ++round) {
    const Brush from = round % 3 ? Made(PrimitiveKind::Cuboid) : Hull();
    const Brush by = round % 3 == 1 ? Made(PrimitiveKind::Sphere) : Hull();
    const Carving carving = Carve(from, by, *map->classSet, CapTexture::First, reporter);
    const bool isKept = carving.loss == CutLoss::None &&
                        std::ranges::all_of(carving.outside, [&](const EntityPtr& piece) {
                          return IsKeepable(piece->brush, reporter);
                        });
    refused += !isKept;
    if (!isKept) continue;
    double volume = Volume(carving.inside);
    for (const EntityPtr& piece : carving.outside) volume += ExpectKept(piece->brush);
    EXPECT_NEAR(volume, Volume(from), ON_EPSILON * SurfaceArea(from));
  }
  EXPECT_LE(refused, EACH);
}

TEST_F(SavedShapesTest, WhatIsMadeHollowTurnedOrScaledComesBack) {
  const Cases<const char*, std::function<bool()>> changes{
      {"hollow", [&] { return HollowSelection(*map, 8); }},
      {"hollow and turned", [&] { return Turn() && HollowSelection(*map, 8); }},
      {"turned", [&] { return Turn(); }},
      {"scaled", [&] { return Scale(); }}};
  for (const auto& [what, change] : changes) {
    int refused = 0;
    for (int round = 0; round < EACH; ++round) {
      Open(Box("a", 0, 0, 0));
      Get("a").brush = round % 2 ? Made(PrimitiveKind::Sphere) : Hull();
      Pick({"a"});
      refused += !change();
      ForEachEntity(Get("a"), [&](const entity& e) { ExpectKept(e.brush); });
    }
    EXPECT_LE(refused, EACH / 2) << what;
  }
}

}  // namespace
}  // namespace ferrowand
