// What CSG, hollow, turns and scales make in memory against what the file of it holds.
// FERROWAND_SHAPES sets how many of each kind are made, and prints what came of them.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <random>

#include "document/written_points.h"
#include "operations/brush_check.h"
#include "operations/csg.h"
#include "operations/edit_fixture.h"
#include "operations/hollow.h"
#include "operations/primitives.h"
#include "operations/transform_selection.h"
#include "support/brush_checks.h"

namespace ferrowand {
namespace {

constexpr int USUAL_COUNT = 3;

// What a file makes of brushes, at worst.
struct Strays {
  int brushes = 0;
  double corner = 0;  // units
  double volume = 0;  // cubic units for each square unit of surface
};

struct Tally {
  int made = 0, refused = 0, movedFaces = 0;
  double sum = 0;           // of all pieces' volumes against the whole, likewise
  Strays carried, rounded;  // the latter with faces between whole units
};

class SavedShapesTest : public EditTest {
 protected:
  void SetUp() override {
    if (const char* text = std::getenv("FERROWAND_SHAPES")) count = std::atoi(text);
    Open(Box("a", 0, 0, 0));
  }

  float OnGrid(int low, int high, int step = 16) {
    return static_cast<float>(step * (low + static_cast<int>(random() % (high - low + 1u))));
  }
  Vec3 Place() { return {OnGrid(-8, 8), OnGrid(-8, 8), OnGrid(-8, 8)}; }
  Brush Sphere() {
    const Vec3 at = Place(), size(OnGrid(4, 12), OnGrid(4, 12), OnGrid(4, 12));
    const Primitive sphere{PrimitiveKind::Sphere, {at, at + size}, 2, 8};
    return std::move(MakePrimitive(sphere, "wall", *map).object->brush);
  }
  Brush Block() {
    const Vec3 at = Place(), size(OnGrid(8, 16), OnGrid(8, 16), OnGrid(8, 16));
    const Primitive block{PrimitiveKind::Cuboid, {at, at + size}, 2, 0};
    return std::move(MakePrimitive(block, "wall", *map).object->brush);
  }
  Brush Hull() { return RandomHull(random, Place(), 128, reporter); }

  Brush Read(const Brush& brush) {
    TextWriter out;
    brush.WriteFaces(out, reporter);
    TextReader reader(reporter);
    reader.Open(temp.Write("brush.txt", out.Text() + "}"));
    Brush read(Colour{});
    read.ReadBody(reader, map->wads, 0, reporter);
    return read;
  }

  // Returns its volume in the file.
  double Hold(const Brush& brush, Tally& tally) {
    const SavedShape shape = ShapeInFile(brush, reporter);
    tally.movedFaces += shape.movedFaces;
    Strays& strays = shape.isCarried ? tally.carried : tally.rounded;
    const Brush read = Read(brush);
    ++strays.brushes;
    EXPECT_EQ(read.getNumFaces(), brush.getNumFaces());
    for (int i = 0; i < std::min(read.getNumFaces(), brush.getNumFaces()); ++i) {
      strays.corner = std::max(strays.corner, CornerDistance(*read.face(i).w, *brush.face(i).w));
    }
    const double change = std::fabs(Volume(read) - Volume(brush));
    strays.volume = std::max(strays.volume, change / SurfaceArea(brush));
    return Volume(read);
  }

  Tally Cuts(const std::function<Brush()>& target, const std::function<Brush()>& cutter) {
    Tally tally;
    while (tally.made < count) {
      const Brush from = target(), by = cutter();
      const Carving carving = Carve(from, by, *map->classSet, CapTexture::First, reporter);
      if (carving.isWhole && carving.inside.getNumFaces() == 0) continue;
      ++tally.made;
      const bool isKept =
          carving.isWhole && std::ranges::all_of(carving.outside, [&](const EntityPtr& piece) {
            return IsKeepable(piece->brush, reporter);
          });
      tally.refused += !isKept;
      if (!isKept) continue;
      double volume = Volume(carving.inside);
      for (const EntityPtr& piece : carving.outside) volume += Hold(piece->brush, tally);
      tally.sum = std::max(tally.sum, std::fabs(volume - Volume(from)) / SurfaceArea(from));
    }
    return tally;
  }

  Tally Changes(const std::function<Brush()>& shape, const std::function<bool()>& change) {
    Tally tally;
    for (; tally.made < count; ++tally.made) {
      Open(Box("a", 0, 0, 0));
      Get("a").brush = shape();
      Pick({"a"});
      if (!change()) {
        ++tally.refused;
        continue;
      }
      if (Get("a").brush.getNumFaces() > 0) Hold(Get("a").brush, tally);
      for (const EntityPtr& wall : Get("a").getEntityList()) Hold(wall->brush, tally);
    }
    return tally;
  }
  bool Turn() {
    const int axis = static_cast<int>(random() % 3);
    const double degrees = 15.0 * (1 + static_cast<double>(random() % 23));
    return RotateSelection(*map, axis, (axis + 1) % 3, degrees, DVec3(Place()), {}) ==
           EditResult::Done;
  }

  void Expect(const char* kind, const Tally& tally, double mostRefused) {
    if (std::getenv("FERROWAND_SHAPES")) {
      std::cout << kind << ": " << tally.made << " made, " << 100.0 * tally.refused / tally.made
                << " % refused; " << tally.movedFaces << " faces moved; sum " << tally.sum;
      for (const Strays& s : {tally.carried, tally.rounded}) {
        std::cout << "; " << s.brushes << " brushes, corner " << s.corner << " volume " << s.volume;
      }
      std::cout << std::endl;
    }
    EXPECT_LE(tally.refused, tally.made * mostRefused) << kind;
    EXPECT_LE(tally.carried.corner, LARGEST_SLIP) << kind;
    EXPECT_LE(tally.rounded.corner, LARGEST_STRAY) << kind;
    recorder.messages.clear();
  }

  std::mt19937 random{7};
  int count = USUAL_COUNT;
};

TEST_F(SavedShapesTest, WhatIsCutComesBackFromTheFile) {
  const auto block = [&] { return Block(); };
  const auto sphere = [&] { return Sphere(); };
  const auto hull = [&] { return Hull(); };
  const auto turned = [&] {
    Open(Box("a", 0, 0, 0));
    Get("a").brush = Block();
    Pick({"a"});
    Turn();
    return Get("a").brush.Copy();
  };
  Expect("block minus sphere", Cuts(block, sphere), 0.5);
  Expect("block minus hull", Cuts(block, hull), 0.5);
  Expect("hull minus hull", Cuts(hull, hull), 0.5);
  Expect("block minus turned block", Cuts(block, turned), 0.5);
  Expect("turned block minus turned block", Cuts(turned, turned), 0.5);
}

TEST_F(SavedShapesTest, WhatIsMadeHollowTurnedOrScaledComesBackFromTheFile) {
  const auto block = [&] { return Block(); };
  const auto sphere = [&] { return Sphere(); };
  const auto hull = [&] { return Hull(); };
  const auto hollow = [&] { return HollowSelection(*map, 8); };
  const auto turn = [&] { return Turn(); };
  const auto scale = [&] {
    const auto factor = [&] { return 0.5 + static_cast<double>(random() % 100) / 40; };
    return ScaleSelection(*map, {factor(), factor(), factor()}, DVec3(Place()), {}) ==
           EditResult::Done;
  };
  Expect("hollow sphere", Changes(sphere, hollow), 0.5);
  Expect("hollow hull", Changes(hull, hollow), 0.5);
  Expect("hollow turned block", Changes(block, [&] { return Turn() && hollow(); }), 0.5);
  Expect("hollow turned sphere", Changes(sphere, [&] { return Turn() && hollow(); }), 0.5);
  Expect("turned block", Changes(block, turn), 0.5);
  Expect("turned sphere", Changes(sphere, turn), 0.5);
  Expect("turned hull", Changes(hull, turn), 0.5);
  Expect("scaled block", Changes(block, scale), 0.5);
  Expect("scaled sphere", Changes(sphere, scale), 0.5);
  Expect("scaled hull", Changes(hull, scale), 0.5);
}

}  // namespace
}  // namespace ferrowand
