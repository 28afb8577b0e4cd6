#include "geometry/winding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "geometry/convex_hull.h"
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

TEST_F(WindingTest, ABaseSquareStartsAtTheUpperLeft) {
  const std::pair<Plane, std::vector<Vec3>> cases[] = {
      {{{0, 0, 1}, 64},
       {{8192, 8192, 64}, {8192, -8192, 64}, {-8192, -8192, 64}, {-8192, 8192, 64}}},
      {{{1, 0, 0}, 5}, {{5, -8192, 8192}, {5, 8192, 8192}, {5, 8192, -8192}, {5, -8192, -8192}}},
      {{{0, -1, 0}, 5},
       {{-8192, -5, 8192}, {8192, -5, 8192}, {8192, -5, -8192}, {-8192, -5, -8192}}},
  };
  for (const auto& [plane, points] : cases) {
    EXPECT_EQ(Positions(*BasePolyForPlane(plane, reporter)), points);
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
  const std::pair<const char*, Plane> cases[] = {
      {"in front", {{1, 0, 0}, -50}},
      {"touching from the front", {{1, 0, 0}, -10}},
      {"behind by no more than the tolerance", {{1, 0, 0}, -9.9}},
      {"on the plane", {{0, 0, 1}, 5}},
      {"within the tolerance of the plane", {{0, 0, -1}, -4.95}},
      {"a plane without normal", {{NONE, NONE, NONE}, NONE}},
  };
  for (const auto& [what, split] : cases) {
    WindingPtr in = Square();
    const winding* before = in.get();
    const WindingPtr out = ClipWinding(std::move(in), split, reporter);
    ASSERT_EQ(out.get(), before) << what;
    EXPECT_EQ(out->numpoints, 4) << what;
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
  EXPECT_EQ(Positions(*ClipWinding(Square(), {{0, 1, 0}, 5}, reporter)),
            (std::vector<Vec3>{{-10, 10, 5}, {10, 10, 5}, {10, 5, 5}, {-10, 5, 5}}));
}

TEST_F(WindingTest, MorePointsThanACutHasRoomForAreReportedAndLeftOut) {
  std::vector<WindingPoint> zigzag;
  for (int i = 0; i < 20; ++i) zigzag.push_back({i % 2 ? 10.0f : -10.0f, i * 1.0f, 0});
  const WindingPtr w = ClipWinding(Make(zigzag), {{1, 0, 0}, 0}, reporter);
  EXPECT_EQ(sink.OnlyText(), "ClipWinding: points exceeded estimate");
  EXPECT_EQ(w->numpoints, 24);
}

TEST_F(WindingTest, ClippingNothingIsAFailedAssertion) {
  EXPECT_EQ(ClipWinding(nullptr, {{1, 0, 0}, 0}, reporter), nullptr);
  EXPECT_NE(sink.OnlyText().find("in file brush.cpp: \"in\""), std::string::npos);
}

TEST_F(WindingTest, CoordinatesNearAWholeUnitSnapToIt) {
  const std::vector<Plane> planes = {{{1, 0, 0}, 31.995},
                                     {{-1, 0, 0}, 31.995},
                                     {{0, 1, 0}, 31.98},
                                     {{0, -1, 0}, 31.98},
                                     {{0, 0, 1}, 64}};
  const std::vector<Vec3> snapped = {
      {-32, -31.98f, 64}, {-32, 31.98f, 64}, {32, 31.98f, 64}, {32, -31.98f, 64}};
  EXPECT_EQ(Positions(*FaceWinding(planes, 4, reporter)), snapped);
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

// The corners of a face, from its least one on, so that two ways to walk round it can be compared.
std::vector<std::array<float, 3>> FromTheLeast(const std::vector<Vec3>& corners) {
  std::vector<std::array<float, 3>> all;
  for (const Vec3& p : corners) all.push_back({p.x, p.y, p.z});
  std::ranges::rotate(all, std::ranges::min_element(all));
  return all;
}

// The hull counts in whole numbers, without any tolerance.
TEST_F(WindingTest, TheWindingsOfASolidAreTheFacesOfTheHullOfItsCorners) {
  constexpr int STEP = 32, REACH = 4;  // nothing lies within the tolerance of a plane but on it
  std::mt19937 random(20);
  int exact = 0, all = 0;
  for (int solid = 0; solid < 400; ++solid) {
    const auto whole = [&](int reach) {
      return static_cast<int>(random() % (2 * reach + 1)) - reach;
    };
    const WholePoint centre{whole(3000), whole(3000), whole(3000)};
    std::vector<WholePoint> points;
    for (int i = 0; i < 4 + solid % 9; ++i) {
      points.push_back(centre +
                       WholePoint{STEP * whole(REACH), STEP * whole(REACH), STEP * whole(REACH)});
    }
    const std::vector<HullFace> faces = ConvexHull(points);
    std::vector<Plane> planes;
    for (const HullFace& face : faces) {
      planes.push_back(
          PlaneFromPoints(DVec3(Vec3(face[0])), DVec3(Vec3(face[1])), DVec3(Vec3(face[2]))));
    }
    for (std::size_t i = 0; i < faces.size(); ++i) {
      const std::vector<Vec3> corners(faces[i].begin(), faces[i].end());
      const WindingPtr w = FaceWinding(planes, i, reporter);
      ASSERT_NE(w, nullptr);
      exact += FromTheLeast(Positions(*w)) == FromTheLeast(corners);
      ++all;
    }
  }
  EXPECT_GT(all, 2000);
  EXPECT_GT(exact, all * 99 / 100);
  EXPECT_TRUE(sink.messages.empty());
}

}  // namespace
}  // namespace ferrowand
