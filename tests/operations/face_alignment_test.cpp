// How textures are laid on faces: what a save writes of it is read by a few lines that know only
// the game's own formula, and held against what was meant.
#include "operations/face_alignment.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>

#include "document/edit_step.h"
#include "document/live_step.h"
#include "operations/edit_fixture.h"
#include "operations/face_editing.h"
#include "operations/face_wrapping.h"
#include "operations/primitives.h"
#include "operations/texture_lock.h"
#include "operations/transform_selection.h"
#include "support/cases.h"
#include "support/change_recorder.h"

namespace ferrowand {
namespace {

constexpr double SIZE = 64;  // texels: of the texture that stands in for all that are missing

// A line of a saved face, and where the game shows which texel of it.
struct SavedFace {
  double points[3][3], xoff, yoff, rotation, xscale, yscale;

  explicit SavedFace(const std::string& line) {
    auto& p = points;
    const int count = std::sscanf(
        line.c_str(), " ( %lf %lf %lf ) ( %lf %lf %lf ) ( %lf %lf %lf ) %*s %lf %lf %lf %lf %lf",
        &p[0][0], &p[0][1], &p[0][2], &p[1][0], &p[1][1], &p[1][2], &p[2][0], &p[2][1], &p[2][2],
        &xoff, &yoff, &rotation, &xscale, &yscale);
    EXPECT_EQ(count, 14) << line;
  }
  std::array<double, 2> Texel(const DVec3& at) const {
    static constexpr double BASE[18][3]{{0, 0, 1},  {1, 0, 0},  {0, -1, 0}, {0, 0, -1}, {1, 0, 0},
                                        {0, -1, 0}, {1, 0, 0},  {0, 1, 0},  {0, 0, -1}, {-1, 0, 0},
                                        {0, 1, 0},  {0, 0, -1}, {0, 1, 0},  {1, 0, 0},  {0, 0, -1},
                                        {0, -1, 0}, {1, 0, 0},  {0, 0, -1}};
    double a[3], b[3], n[3];
    for (int i = 0; i < 3; ++i) {
      a[i] = points[0][i] - points[1][i];
      b[i] = points[2][i] - points[1][i];
    }
    for (int i = 0; i < 3; ++i)
      n[i] = a[(i + 1) % 3] * b[(i + 2) % 3] - a[(i + 2) % 3] * b[(i + 1) % 3];
    int best = 0;
    double most = 0;
    for (int i = 0; i < 6; ++i) {
      const double* base = BASE[i * 3];
      const double dot = n[0] * base[0] + n[1] * base[1] + n[2] * base[2];
      if (dot > most * (1 + 1e-12)) {
        most = dot;
        best = i;
      }
    }
    const double turn = rotation * std::numbers::pi / 180;
    std::array<double, 2> along{};
    for (int i = 0; i < 3; ++i) {
      along[0] += BASE[best * 3 + 1][i] * at[i];
      along[1] += BASE[best * 3 + 2][i] * at[i];
    }
    return {(std::cos(turn) * along[0] - std::sin(turn) * along[1]) / xscale + xoff,
            (std::sin(turn) * along[0] + std::cos(turn) * along[1]) / yscale + yoff};
  }
};

// Of whole textures, by which the two lie the same.
double Apart(double a, double b, double size = SIZE) {
  return std::abs(std::remainder(a - b, size));
}

std::vector<DVec3> Corners(const Face& face) {
  std::vector<DVec3> corners;
  for (const WindingPoint& p : std::as_const(*face.w).Points()) {
    corners.emplace_back(p.Position());
  }
  return corners;
}

class FaceAlignmentTest : public EditTest {
 protected:
  // One brush "b".
  void OpenBrush(const std::string& brush) { Open(Named("b", brush)); }
  // Sides around the Z axis, from a ring of whole points at the bottom to one at the top.
  void OpenColumn(const std::vector<std::array<int, 2>>& ring, int slant, int height) {
    std::string text = "{\n";
    const auto add = [&](const DVec3& a, const DVec3& b, const DVec3& c) {
      for (const DVec3& p : {a, b, c}) {
        text += Format("( %i %i %i ) ", int(p.x), int(p.y), int(p.z));
      }
      text += "wall 0 0 0 1 1\n";
    };
    const auto low = [&](std::size_t i) {
      return DVec3(ring[i % ring.size()][0], ring[i % ring.size()][1], 0);
    };
    const auto high = [&](std::size_t i) {
      const DVec3 p = low(i);
      return DVec3(p.x - (p.x > 0 ? slant : -slant), p.y - (p.y > 0 ? slant : -slant), height);
    };
    for (std::size_t i = 0; i < ring.size(); ++i) add(low(i + 1), low(i), high(i));
    add({0, 0, 0}, {8, 0, 0}, {0, 8, 0});
    add({0, 0, double(height)}, {0, 8, double(height)}, {8, 0, double(height)});
    OpenBrush(text + "}");
    ASSERT_EQ(Brush0().getNumFaces(), static_cast<int>(ring.size()) + 2);
  }
  Brush& Brush0() { return Get("b").brush; }
  PickedFace Of(int face, int held = PickedFace::MIDDLE) { return {&Get("b"), face, held}; }
  std::vector<PickedFace> All() { return FacesOf(Get("b")); }
  void Do(const std::function<void(EditStep&)>& change) {
    EditStep step(*map);
    change(step);
  }
  void Lay(const PickedFace& face, const std::optional<Settled>& how) {
    ASSERT_TRUE(how);
    Do([&](EditStep& step) { ChangeFaces(step, {&face, 1}, [&](auto&) { return how; }); });
  }
  // The face as it is written now, and read.
  SavedFace Saved(int face) {
    const std::string text = ExtendedText(Get("b"));
    std::size_t at = 0;
    for (int i = 0; i <= face; ++i) at = text.find("\t\t(", at + 1);
    return SavedFace(text.substr(at, text.find('\n', at) - at));
  }
  // Texels, by which the textures of two faces that share an edge miss each other at its ends.
  double Seam(int face, int other) {
    double worst = 0;
    int shared = 0;
    for (const DVec3& corner : Corners(FaceAt(face))) {
      for (const DVec3& same : Corners(FaceAt(other))) {
        if (!(corner == same)) continue;
        ++shared;
        const auto a = Saved(face).Texel(corner), b = Saved(other).Texel(corner);
        worst = std::max({worst, Apart(a[0], b[0]), Apart(a[1], b[1])});
      }
    }
    EXPECT_EQ(shared, 2);
    return worst;
  }
  Face& FaceAt(int face) { return Brush0().face(face); }
};

constexpr const char* RAMP =  // normal (0.6 0 0.8), 80 units long and 64 wide
    "{\n( 0 0 48 ) ( 0 64 48 ) ( 64 0 0 ) wall 3 5 0 1 -1\n( 0 0 0 ) ( 0 64 0 ) ( 0 0 64 ) wall 0 "
    "0 0 1 1\n"
    "( 0 0 0 ) ( 0 0 64 ) ( 64 0 0 ) wall 0 0 0 1 1\n( 0 64 0 ) ( 64 64 0 ) ( 0 64 64 ) wall 0 0 0 "
    "1 1\n"
    "( 0 0 0 ) ( 64 0 0 ) ( 0 64 0 ) wall 0 0 0 1 1\n}";
constexpr const char* STEEP =  // normal (0 -0.8 0.6): t goes up and down there, scaled by 0.8
    "{\n( 0 0 0 ) ( 0 48 64 ) ( 64 0 0 ) wall 0 0 0 2 2\n( 0 48 64 ) ( 0 48 0 ) ( 64 48 64 ) wall "
    "0 0 0 1 1\n"
    "( 0 0 0 ) ( 0 48 0 ) ( 0 48 64 ) wall 0 0 0 1 1\n( 64 0 0 ) ( 64 48 64 ) ( 64 48 0 ) wall 0 0 "
    "0 1 1\n"
    "( 0 0 0 ) ( 64 0 0 ) ( 0 48 0 ) wall 0 0 0 1 1\n}";
constexpr const char* CORNER =  // a tetrahedron; face 0 has the normal (2 3 6) / 7
    "{\n( 0 0 64 ) ( 0 128 0 ) ( 192 0 0 ) wall 0 0 0 1 1\n( 0 0 0 ) ( 0 64 0 ) ( 0 0 64 ) wall 0 "
    "0 0 1 1\n"
    "( 0 0 0 ) ( 0 0 64 ) ( 64 0 0 ) wall 0 0 0 1 1\n( 0 0 0 ) ( 64 0 0 ) ( 0 64 0 ) wall 0 0 0 1 "
    "1\n}";

// Worked out by hand.
TEST_F(FaceAlignmentTest, ATexelIsAUnitOfTheSlope) {
  for (const auto& [brush, xscale, yscale] :
       Cases<const char*, double, double>{{RAMP, 0.8, -1}, {STEEP, 1, 0.8}}) {
    OpenBrush(brush);
    Lay(Of(0), AlignedToSlope(Of(0)));
    const SavedFace saved = Saved(0);
    EXPECT_EQ(saved.rotation, 0);
    EXPECT_NEAR(saved.xscale, xscale, 0.01);
    EXPECT_NEAR(saved.yscale, yscale, 0.01);
    const auto a = saved.Texel({0, 0, brush == RAMP ? 48.0 : 0.0});
    const auto b = saved.Texel(brush == RAMP ? DVec3(64, 0, 0) : DVec3(0, 48, 64));
    EXPECT_NEAR(std::hypot(a[0] - b[0], a[1] - b[1]), 80, 0.5);
  }
  OpenBrush(CORNER);
  const auto nearest = AlignedToSlope(Of(0));
  Lay(Of(0), nearest);
  EXPECT_GT(nearest->miss, TOLD_MISS) << "no scales alone do it";
  // The edges of the triangle: 9 units on 10 of them, about.
  const std::vector<DVec3> corners = Corners(FaceAt(0));
  for (int i = 0; i < 3; ++i) {
    const DVec3 from = corners[std::size_t(i)], to = corners[std::size_t(i + 1) % 3];
    const auto a = Saved(0).Texel(from), b = Saved(0).Texel(to);
    EXPECT_NEAR(std::hypot(a[0] - b[0], a[1] - b[1]), Length(from - to), 2 * nearest->miss + 0.01);
  }
}

// Far out and near, turned and mirrored: both ends of the face lie on ends of the texture.
TEST_F(FaceAlignmentTest, AFitCoversTheFaceSoManyTimes) {
  std::mt19937 random(7);
  int exact = 0;
  for (int i = 0; i < 300; ++i) {
    OpenBrush(i % 3 == 0 ? RAMP : i % 3 == 1 ? STEEP : CORNER);
    Select(*map, &Get("b"), false);
    const int far = i % 2 == 0 ? 0 : 3000;
    MoveSelection(*map, Vec3(float(random() % 97 + far), float(random() % 97), 8), {});
    Face& face = FaceAt(0);
    face.rotation = float(random() % 360);
    if (random() % 2 == 0) face.xscale = -0.75f;
    const FitHow how{.repeats = std::array{1, 2, 5, -2, -4}[random() % 5]};
    Do([&](EditStep& step) { FitFaces(step, std::vector{Of(0)}, how, false); });
    const double wanted = how.repeats > 0 ? how.repeats * SIZE : SIZE / -how.repeats;
    double low[2]{1e9, 1e9}, high[2]{-1e9, -1e9};
    const SavedFace saved = Saved(0);
    for (const DVec3& corner : Corners(FaceAt(0))) {
      for (std::size_t axis = 0; axis < 2; ++axis) {
        low[axis] = std::min(low[axis], saved.Texel(corner)[axis]);
        high[axis] = std::max(high[axis], saved.Texel(corner)[axis]);
      }
    }
    bool isExact = true;
    for (int axis = 0; axis < 2; ++axis) {
      EXPECT_LE(Apart(low[axis], 0), 0.51) << i;
      EXPECT_NEAR(high[axis] - low[axis], wanted, 1.01) << i;
      isExact = isExact && Apart(low[axis], 0) + std::abs(high[axis] - low[axis] - wanted) < 0.05;
    }
    exact += isExact;
    EXPECT_EQ(saved.xscale < 0, face.xscale < 0);
    EXPECT_LT(std::abs(saved.xoff), SIZE);
  }
  EXPECT_GT(exact, 100) << "far from the middle of the world a scale makes up for an offset";
}

TEST_F(FaceAlignmentTest, RepeatsGoUpDownAndIntoParts) {
  int repeats = 1;
  std::vector<int> seen;
  for (const FitChange change :
       {FitChange::More, FitChange::More, FitChange::Fewer, FitChange::Part, FitChange::Part,
        FitChange::More, FitChange::More, FitChange::Fewer}) {
    seen.push_back(repeats = NextRepeats(repeats, change));
  }
  EXPECT_EQ(seen, (std::vector{2, 3, 2, -2, -3, -2, 1, 1}));
}

TEST_F(FaceAlignmentTest, FacesThatGoTogetherAreFittedAsOne) {
  OpenBrush(Cuboid(0, 0, 0, 128, 64, 32));
  const auto second = Box("c", 128, 0, 0);
  Open(Named("b", Cuboid(0, 0, 0, 128, 64, 32)) + Block("c", 128, 0, 0, 256, 64, 32));
  const std::vector<PickedFace> faces{Of(5), {&Get("c"), 5}, Of(0)};
  Do([&](EditStep& step) { FitFaces(step, faces, {.height = false, .keepsRatio = true}, true); });
  EXPECT_EQ(faces[0].Get().xscale, 4) << "256 units of 64 texels";
  EXPECT_EQ(faces[0].Get().yscale, 4);
  EXPECT_EQ(PlacementOf(faces[1].Get()), PlacementOf(faces[0].Get()));
  EXPECT_EQ(faces[2].Get().xscale, 1) << "64 units of its own";
  Do([&](EditStep& step) { JustifyFaces(step, std::vector{Of(5)}, FaceSide::Right, false); });
  EXPECT_LE(Apart(Saved(5).Texel({128, 0, 32})[0], 0), 0.5);
  Do([&](EditStep& step) { JustifyFaces(step, std::vector{Of(5)}, FaceSide::Centre, false); });
  EXPECT_LE(Apart(Saved(5).Texel({64, 32, 32})[0], 32), 0.5);
  EXPECT_LE(Apart(Saved(5).Texel({64, 32, 32})[1], 32), 0.5);
}

// Upright and slanted columns: at every edge the texture goes on, and it keeps its size.
TEST_F(FaceAlignmentTest, ATextureGoesOnRoundAColumn) {
  const std::vector<std::array<int, 2>> rings[]{
      {{64, -27}, {64, 27}, {27, 64}, {-27, 64}, {-64, 27}, {-64, -27}, {-27, -64}, {27, -64}},
      {{1064, 973},
       {1064, 1027},
       {1027, 1064},
       {973, 1064},
       {936, 1027},
       {936, 973},
       {973, 936},
       {1027, 936}}};
  for (int i = 0; i < 4; ++i) {
    SCOPED_TRACE(i);
    OpenColumn(rings[i % 2], i / 2 * 11, 128);
    std::vector<PickedFace> sides;
    for (int side = 0; side < 8; ++side) sides.push_back(Of(side));
    Lay(sides[0], WithValue(sides[0], PlacementField::XScale, 0.75));
    Lay(sides[0], WithValue(sides[0], PlacementField::XOffset, 13));
    const std::string before = Text();
    const ChangeRecorder told(*map);
    Do([&](EditStep& step) { WrapAlong(step, sides); });
    double worst = 0, size = 0;
    for (int side = 0; side + 1 < 8; ++side) {
      worst = std::max(worst, Seam(side, side + 1));
      // Along the foot of each side: about 54 or 52.3 units, at 0.75 a texel.
      const std::vector<DVec3> corners = Corners(FaceAt(side + 1));
      for (std::size_t c = 0; c < corners.size(); ++c) {
        const DVec3 &from = corners[c], &to = corners[(c + 1) % corners.size()];
        if (from.z != 0 || to.z != 0) continue;
        const auto a = Saved(side + 1).Texel(from), b = Saved(side + 1).Texel(to);
        size = std::max(
            size, std::abs(std::hypot((a[0] - b[0]) * 0.75, a[1] - b[1]) - Length(from - to)));
      }
    }
    EXPECT_LE(worst, 0.51);
    const bool isSlanted = i >= 2;
    EXPECT_LE(size, isSlanted ? 20 : 0.5);
    EXPECT_EQ(told.changes.back().done.find("texels off") != std::string::npos, isSlanted)
        << "no face holds what shears: the edge comes first, and the rest is told";
    ExpectOneStep(before);
  }
  // Of one plane the numbers are the same.
  Open(Named("b", Cuboid(0, 0, 0, 64, 64, 64)) + Block("c", 300, 0, 0, 400, 64, 64));
  Lay(Of(5), WithValue(Of(5), PlacementField::Rotation, 33));
  const auto over = WrappedFrom(FaceAt(5), Get("c").brush.face(5));
  ASSERT_TRUE(over);
  EXPECT_EQ(over->placement, PlacementOf(FaceAt(5)));
  EXPECT_FALSE(WrappedFrom(FaceAt(5), Get("c").brush.face(0)));
}

// Whatever is picked first: the sides follow each other, and each cap lies on one of them.
TEST_F(FaceAlignmentTest, CapsDoNotTurnWhatGoesRoundAColumn) {
  for (const auto& [ring, slant, height] : Cases<std::vector<std::array<int, 2>>, int, int>{
           {{{64, -64}, {64, 64}, {-64, 0}}, 0, 16},
           {{{64, -64}, {64, 64}, {-64, 64}, {-64, -64}}, 0, 256},
           {{{64, -64}, {64, 64}, {-64, 64}, {-64, -64}}, 11, 256},
           {{{64, -27},
             {64, 27},
             {27, 64},
             {-27, 64},
             {-64, 27},
             {-64, -27},
             {-27, -64},
             {27, -64}},
            11,
            128}}) {
    SCOPED_TRACE(Format("%u sides, slant %i", unsigned(ring.size()), slant));
    OpenColumn(ring, slant, height);
    const int sides = static_cast<int>(ring.size());
    std::vector<PickedFace> faces = All();
    std::ranges::rotate(faces, faces.end() - 2);
    const TexturePlacement first = PlacementOf(FaceAt(0));
    Do([&](EditStep& step) { WrapFaces(step, faces); });
    EXPECT_EQ(PlacementOf(FaceAt(0)), first) << "it begins there";
    int seams = 0, onCaps = 0;
    for (int side = 0; side < sides; ++side) {
      seams += Seam(side, (side + 1) % sides) > 0.51;
      for (const int cap : {sides, sides + 1}) onCaps += Seam(side, cap) < 0.51;
    }
    EXPECT_LE(seams, 1);
    EXPECT_GE(onCaps, 2);
  }
}

TEST_F(FaceAlignmentTest, AnEdgeCarriesTheTextureThenTheNext) {
  OpenBrush(CORNER);
  for (int edge = 0; edge < 3; ++edge) {
    const auto how = AlignedToEdge(FaceAt(0), edge);
    Lay(Of(0), how);
    const std::vector<DVec3> corners = Corners(FaceAt(0));
    int carried = 0;
    for (std::size_t c = 0; c < 3; ++c) {
      const auto a = Saved(0).Texel(corners[c]), b = Saved(0).Texel(corners[(c + 1) % 3]);
      const auto inside = Saved(0).Texel(MiddleOf(FaceAt(0)));
      const bool isOnEdge =
          Apart(a[1], 0) < 1.2 && Apart(b[1], 0) < 1.2 && std::abs(a[1] - b[1]) < 2.4;
      carried += isOnEdge && inside[1] < a[1];
    }
    EXPECT_EQ(carried, 1) << edge;
  }
}

TEST_F(FaceAlignmentTest, WhatIsHeldStaysAndAbsurdNumbersAreRefused) {
  OpenBrush(RAMP);
  for (int held = PickedFace::MIDDLE; held < 4; ++held) {
    const DVec3 at = held < 0 ? MiddleOf(FaceAt(0)) : Corners(FaceAt(0))[std::size_t(held)];
    for (const auto& [field, value] :
         Cases<PlacementField, double>{{PlacementField::Rotation, 37},
                                       {PlacementField::XScale, 1.7},
                                       {PlacementField::YScale, -0.3}}) {
      const auto before = Saved(0).Texel(at);
      Lay(Of(0), WithValue(Of(0, held), field, value));
      const auto after = Saved(0).Texel(at);
      EXPECT_LE(Apart(before[0], after[0]), 0.51);
      EXPECT_LE(Apart(before[1], after[1]), 0.51);
    }
    Lay(Of(0), Mirrored(Of(0, held), TextureAxis::Across));
  }
  for (const double absurd : {0.0, 1e-7, 1e9, -1e9, double(NAN), double(INFINITY)}) {
    EXPECT_FALSE(IsSensible(PlacementField::XScale, absurd)) << absurd;
    EXPECT_EQ(IsSensible(PlacementField::XOffset, absurd), std::abs(absurd) < 1) << absurd;
  }
  Lay(Of(0), WithValue(Of(0), PlacementField::XScale, 0.25));
  EXPECT_FALSE(WithMore(Of(0), PlacementField::XScale, -0.25));
  EXPECT_FALSE(WithMore(Of(0), PlacementField::XScale, -0.5));
  Lay(Of(0), WithValue(Of(0), PlacementField::XOffset, -200));
  EXPECT_EQ(FaceAt(0).xoff, -200 + 3 * 64);
}

// What lies under the eye goes the way of the key, whichever way the texture lies.
TEST_F(FaceAlignmentTest, TexturesMoveAndTurnAsTheyAreSeen) {
  OpenBrush(Cuboid(0, 0, 0, 64, 64, 64));
  for (int face = 0; face < 6; ++face) {
    for (const int turn : {0, 90, 180, 270}) {
      SCOPED_TRACE(Format("%i %i", face, turn));
      const DVec3 normal = FaceAt(face).plane.normal;
      const DVec3 up = std::abs(normal.z) > 0.5 ? DVec3(0, 1, 0) : DVec3(0, 0, 1);
      const DVec3 right = Cross(-normal, up);
      Lay(Of(face), WithValue(Of(face), PlacementField::Rotation, turn));
      const DVec3 at = MiddleOf(FaceAt(face));
      const auto before = Saved(face).Texel(at);
      Lay(Of(face), Moved(Of(face), right, up, 5, 3));
      const auto after = Saved(face).Texel(at + right * 5 + up * 3);
      EXPECT_LE(Apart(before[0], after[0]) + Apart(before[1], after[1]), 1e-4);
      Lay(Of(face), Turned(Of(face), 90));
      const auto turned = Saved(face).Texel(at + up * 7);
      const auto was = [&] {
        Lay(Of(face), Turned(Of(face), -90));
        return Saved(face).Texel(at + right * 7);
      }();
      EXPECT_LE(Apart(turned[0], was[0]) + Apart(turned[1], was[1]), 1.01);
    }
  }
}

TEST_F(FaceAlignmentTest, WhatIsDoneBitByBitIsOneStep) {
  OpenBrush(Cuboid(0, 0, 0, 64, 64, 64));
  const std::string before = Text();
  LiveStep live(*map);
  const auto turn = [&](double degrees) {
    live.Do([&](EditStep& step) {
      ChangeFaces(step, All(), [=](const PickedFace& face) {
        return WithValue(face, PlacementField::Rotation, degrees);
      });
    });
  };
  for (const double degrees : {1, 12, 0, 123}) turn(degrees);
  EXPECT_EQ(FaceAt(3).rotation, 123);
  EXPECT_EQ(map->undo.StepCount(), 1u);
  ExpectOneStep(before);
  map->undo.Undo();
  EXPECT_FALSE(live.IsNewest());
  turn(5);
  EXPECT_EQ(map->undo.StepCount(), 1u);
  live.Cancel();
  EXPECT_EQ(Text(), before);
  EXPECT_FALSE(map->undo.CanUndo());
  EXPECT_FALSE(map->modified());
}

// Whatever is done to a brush whose textures go along, a save keeps to the letter.
TEST_F(FaceAlignmentTest, LockedTexturesAreWhatASaveWrites) {
  std::mt19937 random(3);
  for (int i = 0; i < 200; ++i) {
    OpenBrush(std::array{RAMP, STEEP, CORNER}[random() % 3]);
    for (const PickedFace& face : All()) {
      Lay(face, WithValue(face, PlacementField::Rotation, double(random() % 360)));
      Lay(face, WithValue(face, PlacementField::XScale, 0.3 + double(random() % 100) / 50));
    }
    Select(*map, &Get("b"), false);
    const std::string before = Text();
    const TextureLock lock(Get("b"));
    std::vector<std::array<double, 2>> texels;
    for (const DVec3& p : Corners(FaceAt(0))) texels.push_back(Saved(0).Texel(p));
    const bool moves = random() % 2 == 0;
    const Vec3 by(float(random() % 61), float(random() % 61), float(random() % 61));
    const int quarter = int(random() % 3 + 1) * 90;
    const EditResult result =
        moves ? MoveSelection(*map, by, {}) : RotateSelection(*map, 0, 1, quarter, {8, 8, 0}, {});
    ASSERT_EQ(result, EditResult::Done);
    for (const Face& face : Brush0().Faces()) {
      EXPECT_EQ(PlacementOf(face),
                (TexturePlacement{face.xoff, face.yoff, face.rotation, face.xscale, face.yscale}));
    }
    const std::vector<DVec3> moved = Corners(FaceAt(0));
    for (std::size_t c = 0; moves && c < moved.size(); ++c) {
      EXPECT_LE(Apart(Saved(0).Texel(moved[c])[0], texels[c][0]), 0.51) << i;
      EXPECT_LE(Apart(Saved(0).Texel(moved[c])[1], texels[c][1]), 0.51) << i;
    }
    if (Text() != before) ExpectOneStep(before);
  }
}

}  // namespace
}  // namespace ferrowand
