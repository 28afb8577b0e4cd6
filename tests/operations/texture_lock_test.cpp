#include "operations/texture_lock.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "document/classes/special_classes.h"
#include "operations/edit_fixture.h"
#include "operations/templates.h"
#include "operations/texture_settling.h"
#include "operations/transform_selection.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

constexpr const char* WEDGE =
    "{\n( 0 0 0 ) ( 0 64 0 ) ( 0 0 64 ) wall 5 -9 0 1 1\n"
    "( 0 0 0 ) ( 0 0 64 ) ( 64 0 0 ) wall 3 4 90 2 0.5\n"
    "( 0 64 0 ) ( 64 64 0 ) ( 0 64 64 ) wall 0 0 30 -1 1.5\n"
    "( 0 0 0 ) ( 64 0 0 ) ( 0 64 0 ) wall 0 7 0 1 -1\n"
    "( 64 0 0 ) ( 0 0 64 ) ( 0 64 64 ) wall 1 2 45 1 1\n}";

using Options = const TransformOptions&;
const Matrix SAME = Matrix::Diagonal(1, 1, 1);

// What is done, and where it leads.
const Cases<const char*, std::function<EditResult(Map&, Options)>, Matrix, DVec3, Vec3> STEPS{
    {"move",
     [](Map& m, Options o) {
       return MoveSelection(m, {24, -40, 13}, o);
     },
     SAME,
     {},
     {24, -40, 13}},
    {"raise",
     [](Map& m, Options o) {
       return MoveSelection(m, {0, 0, 13}, o);
     },
     SAME,
     {},
     {0, 0, 13}},
    {"turn",
     [](Map& m, Options o) {
       return RotateSelection(m, 0, 1, 90, {32, 8, 0}, o);
     },
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
     [](Map& m, Options o) {
       return ScaleSelection(m, {2, 2, 2}, {}, o);
     },
     Matrix::Diagonal(2, 2, 2),
     {},
     {}}};

class TextureLockTest : public EditTest {
 protected:
  // In a group that is selected.
  Brush& OpenWedge() {
    Open(Named("group", "{" + Named("wedge", WEDGE) + "}"));
    Pick({"group"});
    Brush& brush = Get("wedge").brush;
    // A fresh projection, as every move makes it.
    for (int i = 0; i < 5; ++i) UpdateFromWinding(brush.face(i));
    return brush;
  }
  // Where a point of a face of the one has gone the other shows the same of the texture, but for
  // what whole offsets cost; and so it does after a save.
  static void ExpectSameLook(const Brush& before, const Brush& after,
                             const std::function<Vec3(const Vec3&)>& move) {
    ASSERT_EQ(after.getNumFaces(), before.getNumFaces());
    for (int i = 0; i < before.getNumFaces(); ++i) {
      const auto points = std::as_const(*after.face(i).w).Points();
      for (const WindingPoint& old : std::as_const(*before.face(i).w).Points()) {
        const auto moved = std::ranges::find(points, move(old.Position()), &WindingPoint::Position);
        ASSERT_NE(moved, points.end()) << "face " << i;
        EXPECT_LE(TexelsApart(moved->s, old.s), MISS) << "face " << i;
        EXPECT_LE(TexelsApart(moved->t, old.t), MISS) << "face " << i;
      }
    }
  }
  static constexpr double MISS = 0.51;
  // A texture is 64 texels wide and high here, and lies the same one texture further.
  static double TexelsApart(double a, double b) {
    return std::abs(std::remainder(a - b, 1.0)) * 64;
  }
  static void ExpectSaved(const Brush& brush) {
    for (const Face& face : brush.Faces()) {
      EXPECT_EQ(PlacementOf(face),
                (TexturePlacement{face.xoff, face.yoff, face.rotation, face.xscale, face.yscale}));
    }
  }
  static void ExpectSameSettings(const Brush& before, const Brush& after) {
    for (int i = 0; i < 5; ++i) {
      const Face &a = before.face(i), &b = after.face(i);
      EXPECT_NEAR(b.xoff, a.xoff, 0.01) << i;
      EXPECT_NEAR(b.yoff, a.yoff, 0.01) << i;
      EXPECT_FLOAT_EQ(b.xscale, a.xscale) << i;
      EXPECT_FLOAT_EQ(b.yscale, a.yscale) << i;
      EXPECT_EQ(std::fmod(b.rotation - a.rotation + 720, 360), 0) << i;
    }
  }
};

TEST_F(TextureLockTest, TexturesFollowTheirFacesOrStayPut) {
  for (const auto& [name, operation, matrix, centre, by] : STEPS) {
    SCOPED_TRACE(name);
    const Brush before = OpenWedge().Copy();
    const std::string text = Text();
    ASSERT_EQ(operation(*map, {}), EditResult::Done);
    ExpectOneStep(text);
    const auto move = [&, &matrix = matrix, &centre = centre, &by = by](const Vec3& p) {
      return Vec3(Transform(DVec3(p), matrix, centre)) + by;
    };
    ExpectSameLook(before, Get("wedge").brush, move);
    OpenWedge();
    ASSERT_EQ(operation(*map, {.textureLock = false}), EditResult::Done);
    ExpectSameSettings(before, Get("wedge").brush);
  }
}

// Whole texels go round without a trace; between them a little is lost each time.
TEST_F(TextureLockTest, ATurnAllRoundLeavesTheSettings) {
  const Brush before = OpenWedge().Copy();
  for (int i = 0; i < 8; ++i) {
    const int u = i % 4 == i ? 0 : 1;
    ASSERT_EQ(RotateSelection(*map, u, u + 1, 90, {5, 7, 9}, {}), EditResult::Done);
  }
  MoveSelection(*map, {1000, 0, 3}, {});
  MoveSelection(*map, {-1000, 0, -3}, {});
  const Brush& after = Get("wedge").brush;
  ExpectSaved(after);
  for (int i = 0; i < 5; ++i) {
    const TexturePlacement was = PlacementOf(before.face(i)), is = PlacementOf(after.face(i));
    EXPECT_EQ(is.rotation, was.rotation) << i;
    if (i % 3 == 0) {
      EXPECT_EQ(is, was) << i;
    } else {
      EXPECT_NEAR(is.xscale / was.xscale, 1, 0.03) << i;
      EXPECT_NEAR(is.yscale / was.yscale, 1, 0.03) << i;
    }
  }
}

TEST_F(TextureLockTest, AnInstanceLooksLikeWhatItsTemplateWasMadeOf) {
  const Brush before = OpenWedge().Copy();
  ASSERT_EQ(MakeTemplate(*map, "T", {24, -40, 13}), EditResult::Done);
  const entity* shown = ExpandInstance(*map->selection.front());
  ExpectSameLook(before, FindNamed(*shown, "wedge")->brush, [](const Vec3& p) { return p; });
}

}  // namespace
}  // namespace ferrowand
