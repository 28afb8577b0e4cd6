#include "geometry/whole_plane.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "geometry/tolerance.h"

namespace ferrowand {
namespace {

// Four corners of a plane about a place, as floats hold them.
std::vector<WindingPoint> Corners(const Plane& plane, const DVec3& about, double reach) {
  const DVec3 aside = std::fabs(plane.normal.x) < 0.6 ? DVec3{1, 0, 0} : DVec3{0, 1, 0};
  const DVec3 u = Normalise(Cross(plane.normal, aside)), v = Cross(u, plane.normal);
  const DVec3 on = about - plane.normal * plane.DistanceTo(about);
  std::vector<WindingPoint> corners;
  for (const DVec3& p : {on + u * reach, on + v * reach, on - u * reach, on - v * reach}) {
    const Vec3 stored(p);
    corners.push_back({stored.x, stored.y, stored.z});
  }
  return corners;
}

TEST(WholePlaneTest, APlaneHasTheSameBitsWhicheverPointsItIsKnownBy) {
  std::mt19937 random(3);
  const auto any = [&](int reach) {
    const auto part = [&] { return static_cast<int>(random() % (2u * reach + 1)) - reach; };
    return WholePoint{part(), part(), part()};
  };
  for (int round = 0; round < 1000; ++round) {
    const WholePoint at = any(8192), u = any(40), v = any(40);
    const auto on = [&](int a, int b) { return at + u * a + v * b; };
    const WholePoints points = {on(1, 0), on(0, 0), on(0, 1)};
    const WholePoints others = {on(7, 3), on(2, -9), on(-8, 5)};
    if (WholeNormal(points) == WholePoint()) continue;
    const Plane plane = PlaneOf(points), same = PlaneOf(others);
    const bool isSameSide = Dot(WholeNormal(points), WholeNormal(others)) > 0;
    ASSERT_TRUE(isSameSide == HavePlane(others, points));
    ASSERT_TRUE(isSameSide != HavePlane({others[2], others[1], others[0]}, points));
    ASSERT_EQ(plane.normal, isSameSide ? same.normal : -same.normal);
    ASSERT_EQ(plane.dist, isSameSide ? same.dist : -same.dist);

    WholePoints off = points;
    off[random() % 3][static_cast<int>(random() % 3)] += 1;
    ASSERT_TRUE(!HavePlane(off, points) || PlaneOf(off).dist == plane.dist);
    off = points;
    off[0] = points[1];
    EXPECT_FALSE(HavePlane(off, points)) << "points on one line";
  }
  const WholePoints level = {WholePoint{1, 0, 0}, WholePoint{0, 0, 0}, WholePoint{0, 1, 0}};
  EXPECT_FALSE(HavePlane({WholePoint{1 << 30, 0, 0}, level[1], level[2]}, level)) << "too far";
}

TEST(WholePlaneTest, WholePointsAreFoundOnPlanesOfEverySlope) {
  std::mt19937 random(5);
  const auto unit = [&] { return std::uniform_real_distribution<double>(-1, 1)(random); };
  int carried = 0;
  for (int round = 0; round < 3000; ++round) {
    // A third of them upright.
    const DVec3 normal = Normalise({unit(), unit(), round % 3 ? unit() : 0});
    const DVec3 about = DVec3(unit(), unit(), unit()) * 4096;
    const Plane plane{normal, Dot(normal, about)};
    const double reach = std::exp2(2 + 7 * std::fabs(unit()));
    const auto corners = Corners(plane, about, reach);
    const auto points = FindWholePoints(plane, corners);
    ASSERT_TRUE(points);
    const double difference = Difference(PlaneOf(*points), plane, corners);
    carried += difference <= CARRIED + 1e-6;
    EXPECT_LE(difference, MOVED) << normal.x << " " << normal.y << " " << normal.z;
    for (std::size_t i = 0; i < 3; ++i) {
      const DVec3 p((*points)[i]), next((*points)[(i + 1) % 3]);
      EXPECT_GE(Length(p - next), reach) << "as wide as the face";
      EXPECT_LT(Length(p - about), 8 * reach + 4096) << "and near it";
    }
  }
  EXPECT_GT(carried, 2970);  // but for some next to simple slopes between whole units
}

TEST(WholePlaneTest, BetweenWholeUnitsTheNearestPlaneIsFound) {
  const double half = std::sqrt(0.5);
  const struct {
    Plane plane;
    double least, most;  // difference at the corners
  } cases[] = {
      {{{0, 0, 1}, 15.3}, 0.3, 0.3},
      {{{-1, 0, 0}, 7.5}, 0.5, 0.5},
      // Nothing but a tilt brings whole points near.
      {{{half, half, 0}, 10.3}, 0.001, 0.1},
      {{{half, 0, -half}, 900.1}, 0.001, 0.1},
  };
  for (const auto& c : cases) {
    const auto corners = Corners(c.plane, {5, 5, 5}, 32);
    const auto points = FindWholePoints(c.plane, corners);
    ASSERT_TRUE(points);
    const double difference = Difference(PlaneOf(*points), c.plane, corners);
    EXPECT_GE(difference, c.least - 1e-6);
    EXPECT_LE(difference, c.most + 1e-6);
  }
}

}  // namespace
}  // namespace ferrowand
