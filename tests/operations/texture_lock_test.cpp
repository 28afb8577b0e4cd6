#include "operations/texture_lock.h"

#include <cmath>
#include <map>
#include <tuple>

#include "operations/edit_fixture.h"
#include "operations/transform_selection.h"

namespace ferrowand {
namespace {

constexpr const char* WEDGE =
    "{\n( 0 0 0 ) ( 0 64 0 ) ( 0 0 64 ) wall 5 -9 0 1 1\n"
    "( 0 0 0 ) ( 0 0 64 ) ( 64 0 0 ) wall 3 4 90 2 0.5\n"
    "( 0 64 0 ) ( 64 64 0 ) ( 0 64 64 ) wall 0 0 30 -1 1.5\n"
    "( 0 0 0 ) ( 64 0 0 ) ( 0 64 0 ) wall 0 7 0 1 -1\n"
    "( 64 0 0 ) ( 0 0 64 ) ( 0 64 64 ) wall 1 2 45 1 1\n}";

class TextureLockTest : public EditTest {
 protected:
  struct Corner {
    Vec3 at;
    float s, t;
  };
  // What the projection makes of each face, by the face's place.
  std::vector<std::vector<Corner>> Corners() {
    std::vector<std::vector<Corner>> faces;
    for (const Face& face : Get("wedge").brush.Faces()) {
      faces.emplace_back();
      for (const WindingPoint& p : std::as_const(*face.w).Points()) {
        faces.back().push_back({p.Position(), p.s, p.t});
      }
    }
    return faces;
  }
  void OpenWedge() {
    Open(Named("wedge", WEDGE));
    // A fresh projection, as every move makes it.
    Pick({"wedge"});
    for (int i = 0; i < 5; ++i) UpdateFromWinding(Get("wedge").brush.face(i));
  }
  std::vector<std::tuple<float, float, float, float, float>> Settings() {
    std::vector<std::tuple<float, float, float, float, float>> all;
    for (const Face& f : Get("wedge").brush.Faces()) {
      all.emplace_back(f.xoff, f.yoff, f.rotation, f.xscale, f.yscale);
    }
    return all;
  }
};

using Options = const TransformOptions&;

struct Step {
  const char* name;
  EditResult (*operation)(Map& map, Options options);
  Matrix matrix;
  DVec3 centre;
  Vec3 by;
};

const Matrix SAME = Matrix::Diagonal(1, 1, 1);
const Step STEPS[] = {
    {"move",
     [](Map& m, Options o) { return MoveSelection(m, Vec3(24, -40, 13), o); },
     SAME,
     {},
     {24, -40, 13}},
    {"turn",
     [](Map& m, Options o) { return RotateSelection(m, 0, 1, 90, DVec3(32, 8, 0), o); },
     TurnMatrix(0, 1, 90),
     {32, 8, 0},
     {}},
    {"turn on its side",
     [](Map& m, Options o) { return RotateSelection(m, 1, 2, 270, {}, o); },
     TurnMatrix(1, 2, 270),
     {},
     {}},
    {"flip on X",
     [](Map& m, Options o) { return FlipSelection(m, 0, o); },
     Matrix::Diagonal(-1, 1, 1),
     {32, 32, 32},
     {}},
    {"flip on Z",
     [](Map& m, Options o) { return FlipSelection(m, 2, o); },
     Matrix::Diagonal(1, 1, -1),
     {32, 32, 32},
     {}},
    {"scale",
     [](Map& m, Options o) { return ScaleSelection(m, DVec3(2, 2, 2), DVec3(), o); },
     Matrix::Diagonal(2, 2, 2),
     {},
     {}},
};

TEST_F(TextureLockTest, TexturesFollowTheirFaces) {
  for (const Step& step : STEPS) {
    SCOPED_TRACE(step.name);
    OpenWedge();
    const auto before = Corners();
    ASSERT_EQ(step.operation(*map, {}), EditResult::Done);
    const auto after = Corners();
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t face = 0; face < before.size(); ++face) {
      for (const Corner& old : before[face]) {
        const Vec3 at(Transform(DVec3(old.at), step.matrix, step.centre));
        bool found = false;
        for (const Corner& corner : after[face]) {
          if (corner.at != at + step.by) continue;
          found = true;
          EXPECT_NEAR(corner.s, old.s, 0.02) << "face " << face;
          EXPECT_NEAR(corner.t, old.t, 0.02) << "face " << face;
        }
        EXPECT_TRUE(found) << "face " << face;
      }
    }
  }
}

TEST_F(TextureLockTest, WithoutItTexturesStayPut) {
  for (const Step& step : STEPS) {
    SCOPED_TRACE(step.name);
    OpenWedge();
    const auto before = Settings();
    ASSERT_EQ(step.operation(*map, {false, ALL_AXES}), EditResult::Done);
    EXPECT_EQ(Settings(), before);
  }
}

TEST_F(TextureLockTest, ATurnAllRoundLeavesTheSettings) {
  OpenWedge();
  const auto before = Settings();
  for (int i = 0; i < 8; ++i) {
    const int u = i % 4 == i ? 0 : 1;
    ASSERT_EQ(RotateSelection(*map, u, u + 1, 90, {5, 7, 9}, {}), EditResult::Done);
  }
  MoveSelection(*map, {1000, 0, 3}, {});
  MoveSelection(*map, {-1000, 0, -3}, {});
  const auto after = Settings();
  for (std::size_t face = 0; face < 5; ++face) {
    const auto [x0, y0, r0, xs0, ys0] = before[face];
    const auto [x1, y1, r1, xs1, ys1] = after[face];
    EXPECT_NEAR(x1, x0, 0.01) << face;
    EXPECT_NEAR(y1, y0, 0.01) << face;
    EXPECT_FLOAT_EQ(xs1, xs0) << face;
    EXPECT_FLOAT_EQ(ys1, ys0) << face;
    EXPECT_EQ(std::fmod(r1 - r0 + 720, 360), 0) << face;
  }
}

}  // namespace
}  // namespace ferrowand
