#include "geometry/winding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/recorder.h"

namespace ferrowand {
namespace {

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();

class WindingTest : public testing::Test {
 protected:
  WindingPtr Make(const std::vector<WindingPoint>& points) {
    WindingPtr w = newWinding(static_cast<unsigned>(points.size()), reporter);
    std::copy(points.begin(), points.end(), w->Points().begin());
    sink.messages.clear();
    return w;
  }
  // 20 units wide around the Z axis, s and t running with x and y.
  WindingPtr Square() {
    return Make({{-10, 10, 5, 0, 1}, {10, 10, 5, 1, 1}, {10, -10, 5, 1, 0}, {-10, -10, 5, 0, 0}});
  }

  MessageRecorder sink;
  Reporter reporter{sink};
};

std::vector<Vec3> Positions(const winding& w) {
  std::vector<Vec3> positions;
  for (const WindingPoint& p : w.Points()) positions.push_back(p.Position());
  return positions;
}

std::vector<Plane> Box(const DVec3& mins, const DVec3& maxs) {
  return {{{1, 0, 0}, maxs.x},   {{-1, 0, 0}, -mins.x}, {{0, 1, 0}, maxs.y},
          {{0, -1, 0}, -mins.y}, {{0, 0, 1}, maxs.z},   {{0, 0, -1}, -mins.z}};
}

TEST_F(WindingTest, APlaneLooksToTheSideFromWhichItsPointsRunClockwise) {
  const Plane plane = PlaneFromPoints({0, 0, 64}, {0, 9, 64}, {5, 9, 64});
  EXPECT_EQ(plane.normal, DVec3(0, 0, 1));
  EXPECT_EQ(plane.dist, 64);
  EXPECT_TRUE(std::isnan(PlaneFromPoints({0, 0, 0}, {1, 1, 1}, {3, 3, 3}).normal.x));
}

TEST_F(WindingTest, ABaseSquareStartsAtTheUpperLeft) {
  const struct {
    Plane plane;
    std::vector<Vec3> points;
  } cases[] = {
      {{{0, 0, 1}, 64},
       {{8192, 8192, 64}, {8192, -8192, 64}, {-8192, -8192, 64}, {-8192, 8192, 64}}},
      {{{1, 0, 0}, 5}, {{5, -8192, 8192}, {5, 8192, 8192}, {5, 8192, -8192}, {5, -8192, -8192}}},
      {{{0, -1, 0}, 5},
       {{-8192, -5, 8192}, {8192, -5, 8192}, {8192, -5, -8192}, {-8192, -5, -8192}}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Positions(*BasePolyForPlane(c.plane, reporter)), c.points);
  }
}

TEST_F(WindingTest, APlaneWithoutNormalIsReportedAndGivesPointsThatAreNoNumbers) {
  const WindingPtr w = BasePolyForPlane({{NONE, NONE, NONE}, NONE}, reporter);
  EXPECT_EQ(sink.OnlyText(), "BasePolyForPlane: no axis found");
  EXPECT_EQ(sink.messages.at(0).title, "Error! Quit?");
  ASSERT_EQ(w->numpoints, 4);
  for (const WindingPoint& p : w->Points()) EXPECT_TRUE(std::isnan(p.x + p.y + p.z));
}

TEST_F(WindingTest, AnEstimateAbove64IsReportedAndGivenAllTheSame) {
  EXPECT_EQ(newWinding(64, reporter)->numpoints, 64);
  EXPECT_TRUE(sink.messages.empty());
  const WindingPtr w = newWinding(65, reporter);
  EXPECT_EQ(sink.OnlyText(), "newWinding: too many points");
  ASSERT_EQ(w->numpoints, 65);
  EXPECT_EQ(w->Points()[64].Position(), Vec3(0, 0, 0));
}

TEST_F(WindingTest, AWindingThatNothingIsCutFromComesBackItself) {
  const struct {
    const char* what;
    Plane split;
  } cases[] = {
      {"in front", {{1, 0, 0}, -50}},
      {"touching from the front", {{1, 0, 0}, -10}},
      {"behind by no more than the tolerance", {{1, 0, 0}, -9.9}},
      {"on the plane", {{0, 0, 1}, 5}},
      {"within the tolerance of the plane", {{0, 0, -1}, -4.95}},
      {"a plane without normal", {{NONE, NONE, NONE}, NONE}},
  };
  for (const auto& c : cases) {
    WindingPtr in = Square();
    const winding* before = in.get();
    const WindingPtr out = ClipWinding(std::move(in), c.split, reporter);
    ASSERT_EQ(out.get(), before) << c.what;
    EXPECT_EQ(out->numpoints, 4) << c.what;
  }
}

TEST_F(WindingTest, AWindingBehindThePlaneIsGone) {
  EXPECT_EQ(ClipWinding(Square(), {{1, 0, 0}, 50}, reporter), nullptr);
  // Touching it from behind is not being in front.
  EXPECT_EQ(ClipWinding(Square(), {{1, 0, 0}, 9.95}, reporter), nullptr);
}

TEST_F(WindingTest, ACutAddsOnePointACrossingWithItsSurfaceValues) {
  const WindingPtr w = ClipWinding(Square(), {{1, 0, 0}, 5}, reporter);
  ASSERT_EQ(Positions(*w), (std::vector<Vec3>{{5, 10, 5}, {10, 10, 5}, {10, -10, 5}, {5, -10, 5}}));
  EXPECT_EQ(w->Points()[0].s, 0.75f);
  EXPECT_EQ(w->Points()[0].t, 1);
  EXPECT_EQ(w->Points()[3].s, 0.75f);
  EXPECT_EQ(w->Points()[3].t, 0);
}

TEST_F(WindingTest, PointsOnThePlaneAreKeptOnce) {
  const double half = std::sqrt(0.5);
  const WindingPtr w = ClipWinding(Square(), {{half, half, 0}, 0}, reporter);
  EXPECT_EQ(Positions(*w), (std::vector<Vec3>{{-10, 10, 5}, {10, 10, 5}, {10, -10, 5}}));
}

TEST_F(WindingTest, MorePointsThanACutHasRoomForAreReportedAndLeftOut) {
  std::vector<WindingPoint> zigzag;
  for (int i = 0; i < 20; ++i) zigzag.push_back({i % 2 ? 10.0f : -10.0f, i * 1.0f, 0});
  const WindingPtr w = ClipWinding(Make(zigzag), {{1, 0, 0}, 0}, reporter);
  EXPECT_EQ(sink.OnlyText(), "ClipWinding: points exceeded estimate");
  EXPECT_EQ(w->numpoints, 24);

  std::vector<WindingPoint> many(61, {10, 0, 0});
  many[0].x = -10;
  sink.messages.clear();
  EXPECT_EQ(ClipWinding(Make(many), {{1, 0, 0}, 0}, reporter)->numpoints, 62);
  EXPECT_EQ(sink.OnlyText(), "newWinding: too many points");
}

TEST_F(WindingTest, ClippingNothingIsAFailedAssertion) {
  EXPECT_EQ(ClipWinding(nullptr, {{1, 0, 0}, 0}, reporter), nullptr);
  EXPECT_NE(sink.OnlyText().find("in file brush.cpp: \"in\""), std::string::npos);
}

TEST_F(WindingTest, CoordinatesNearAWholeUnitSnapToIt) {
  const auto planes = Box({-31.995, -31.98, 0}, {31.995, 31.98, 64});
  const std::vector<Vec3> snapped = {
      {-32, -31.98f, 64}, {-32, 31.98f, 64}, {32, 31.98f, 64}, {32, -31.98f, 64}};
  EXPECT_EQ(Positions(*FaceWinding(planes, 4, reporter)), snapped);
}

TEST_F(WindingTest, APlaneOutsideTheSolidHasNoWinding) {
  auto planes = Box({0, 0, 0}, {64, 64, 64});
  planes.push_back({{1, 0, 0}, 65});
  EXPECT_EQ(FaceWinding(planes, 6, reporter), nullptr);
  EXPECT_NE(FaceWinding(planes, 0, reporter), nullptr);
}

TEST_F(WindingTest, APlaneWithoutNormalLeavesTheOtherFacesWhole) {
  auto planes = Box({0, 0, 0}, {64, 64, 64});
  const auto whole = Positions(*FaceWinding(planes, 0, reporter));
  planes.insert(planes.begin(), Plane{{NONE, NONE, NONE}, NONE});
  EXPECT_EQ(Positions(*FaceWinding(planes, 1, reporter)), whole);
  EXPECT_TRUE(sink.messages.empty());
  EXPECT_EQ(FaceWinding(planes, 0, reporter)->numpoints, 4);
  EXPECT_EQ(sink.OnlyText(), "BasePolyForPlane: no axis found");
}

TEST_F(WindingTest, PlanesOfAnySizeAndNumberGiveNumbersWithinTheLimit) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    const int bits = 3 + round % 29;
    const auto coordinate = [&] {
      return static_cast<double>(static_cast<std::int32_t>(random()) >> (32 - bits));
    };
    const auto point = [&] { return DVec3{coordinate(), coordinate(), coordinate()}; };
    std::vector<Plane> planes;
    for (int i = 0; i < (round % 5 ? MAXFACES : 200); ++i) {
      planes.push_back(PlaneFromPoints(point(), point(), point()));
    }
    for (std::size_t i = 0; i < planes.size(); ++i) {
      const WindingPtr w = FaceWinding(planes, i, reporter);
      if (!w || std::isnan(planes[i].dist)) continue;
      EXPECT_GE(w->numpoints, 3);
      EXPECT_LE(w->numpoints, MAXWINDINGPOINTS);
      for (const WindingPoint& p : w->Points()) EXPECT_TRUE(std::isfinite(p.x + p.y + p.z));
    }
  }
}

// --- Solids against an independent computation of their corners.

struct Corner {
  DVec3 position;
  std::set<std::size_t> planes;
};

std::optional<DVec3> Meeting(const Plane& a, const Plane& b, const Plane& c) {
  const double det = Dot(a.normal, Cross(b.normal, c.normal));
  if (std::fabs(det) < 0.05) return std::nullopt;
  const DVec3 sum = Cross(b.normal, c.normal) * a.dist + Cross(c.normal, a.normal) * b.dist +
                    Cross(a.normal, b.normal) * c.dist;
  return sum * (1 / det);
}

// The corners of the solid, three planes each; nothing when one is so near to another plane or two
// planes are so nearly parallel that the tolerances have a say.
std::optional<std::vector<Corner>> Corners(const std::vector<Plane>& planes) {
  std::vector<Corner> corners;
  for (std::size_t a = 0; a < planes.size(); ++a) {
    for (std::size_t b = a + 1; b < planes.size(); ++b) {
      const double alike = Dot(planes[a].normal, planes[b].normal);
      if (alike > 0.95 || (alike < -0.95 && alike > -0.9999)) return std::nullopt;
      for (std::size_t c = b + 1; c < planes.size(); ++c) {
        const auto corner = Meeting(planes[a], planes[b], planes[c]);
        if (!corner) continue;
        double farthest = -BASE_SIZE;
        for (std::size_t d = 0; d < planes.size(); ++d) {
          if (d == a || d == b || d == c) continue;
          farthest = std::max(farthest, planes[d].DistanceTo(*corner));
        }
        if (std::fabs(farthest) < 2) return std::nullopt;
        if (farthest < 0) corners.push_back({*corner, {a, b, c}});
      }
    }
  }
  return corners;
}

// A box with corners and edges cut off by planes through whole points, anywhere in the world.
std::vector<Plane> RandomSolid(std::mt19937& random) {
  const auto whole = [&random](int from, int to) {
    return std::uniform_int_distribution<int>(from, to)(random);
  };
  const auto round = [](const DVec3& p) {
    return DVec3{std::round(p.x), std::round(p.y), std::round(p.z)};
  };
  const DVec3 centre(whole(-3000, 3000), whole(-3000, 3000), whole(-3000, 3000));
  const DVec3 half(whole(20, 300), whole(20, 300), whole(20, 300));
  auto planes = Box(centre - half, centre + half);
  for (int extra = whole(0, 8); extra > 0; --extra) {
    const DVec3 out = Normalise(DVec3(whole(-99, 99), whole(-99, 99), whole(-99, 99) + 0.5));
    const DVec3 across = Normalise(Cross(out, DVec3(0.3, 0.2, 0.9)));
    const DVec3 on = centre + out * whole(15, 300);
    const Plane plane =
        PlaneFromPoints(round(on + Cross(across, out) * 200), round(on), round(on + across * 200));
    planes.push_back(plane.DistanceTo(centre) < 0 ? plane : plane.Flipped());
  }
  std::shuffle(planes.begin(), planes.end(), random);
  return planes;
}

std::size_t NearestCorner(const std::vector<Corner>& corners, const Vec3& p) {
  const auto nearest = std::ranges::min_element(
      corners, {}, [&p](const Corner& corner) { return Length(corner.position - DVec3(p)); });
  return static_cast<std::size_t>(nearest - corners.begin());
}

TEST_F(WindingTest, TheWindingsOfASolidCloseItExactlyAtItsCorners) {
  std::mt19937 random(20);
  int solids = 0;
  while (solids < 400) {
    const auto planes = RandomSolid(random);
    const auto corners = Corners(planes);
    if (!corners || corners->empty()) continue;
    ++solids;

    std::set<std::pair<std::size_t, std::size_t>> edges;
    for (std::size_t i = 0; i < planes.size(); ++i) {
      const std::ptrdiff_t expected = std::ranges::count_if(
          *corners, [i](const Corner& corner) { return corner.planes.contains(i); });
      const WindingPtr w = FaceWinding(planes, i, reporter);
      ASSERT_EQ(w ? w->numpoints : 0, expected);
      if (!w) continue;
      for (int j = 0; j < w->numpoints; ++j) {
        const Vec3 p = w->Points()[j].Position();
        const Vec3 next = w->Points()[(j + 1) % w->numpoints].Position();
        const Vec3 afterNext = w->Points()[(j + 2) % w->numpoints].Position();
        const std::size_t corner = NearestCorner(*corners, p);
        EXPECT_TRUE((*corners)[corner].planes.contains(i));
        for (const std::size_t plane : (*corners)[corner].planes) {
          EXPECT_LT(std::fabs(planes[plane].DistanceTo(DVec3(p))), plane == i ? 0.02 : ON_EPSILON);
        }
        // Clockwise from outside, and convex.
        EXPECT_LT(Dot(Cross(DVec3(next - p), DVec3(afterNext - next)), planes[i].normal), 0);
        EXPECT_TRUE(edges.emplace(corner, NearestCorner(*corners, next)).second);
      }
    }
    for (const auto& [from, to] : edges) EXPECT_TRUE(edges.contains({to, from}));
  }
  EXPECT_TRUE(sink.messages.empty());
}

TEST_F(WindingTest, AFaceIsItsBaseSquareClippedByTheOtherPlanesTurnedRound) {
  std::mt19937 random(3);
  for (int solid = 0; solid < 200; ++solid) {
    const auto planes = RandomSolid(random);
    if (!Corners(planes)) continue;
    for (std::size_t i = 0; i < planes.size(); ++i) {
      WindingPtr steps = BasePolyForPlane(planes[i], reporter);
      for (std::size_t j = 0; j < planes.size() && steps; ++j) {
        if (j != i) steps = ClipWinding(std::move(steps), planes[j].Flipped(), reporter);
      }
      const WindingPtr face = FaceWinding(planes, i, reporter);
      ASSERT_EQ(steps == nullptr, face == nullptr);
      if (!face) continue;
      ASSERT_EQ(steps->numpoints, face->numpoints);
      for (int j = 0; j < face->numpoints; ++j) {
        const Vec3 apart = steps->Points()[j].Position() - face->Points()[j].Position();
        EXPECT_LT(Length(DVec3(apart)), 0.03);
      }
    }
  }
}

}  // namespace
}  // namespace ferrowand
