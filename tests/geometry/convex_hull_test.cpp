#include "geometry/convex_hull.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

namespace ferrowand {
namespace {

TEST(ConvexHullTest, FlatFacesAreWholeAndHaveOnlyTheirCorners) {
  // Inside a cube, on a face, on an edge, a corner; then all its corners.
  std::vector<WholePoint> points{{1, 2, 3}, {8, 1, 2}, {8, 8, 4}, {8, 8, 8}};
  for (int i = 0; i < 8; ++i) points.push_back({i & 1 ? 8 : 0, i & 2 ? 8 : 0, i & 4 ? 8 : 0});
  const auto faces = ConvexHull(points);
  ASSERT_EQ(faces.size(), 6u);
  for (const HullFace& face : faces) EXPECT_EQ(face.size(), 4u);
}

TEST(ConvexHullTest, PointsInOnePlaneHaveNoSolid) {
  EXPECT_TRUE(ConvexHull({}).empty());
  const std::vector<WholePoint> line = {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {5, 5, 5}};
  EXPECT_TRUE(ConvexHull(line).empty());
  const std::vector<WholePoint> flat = {{0, 0, 0}, {8, 0, 3}, {0, 8, 5}, {8, 8, 8}, {4, 4, 4}};
  EXPECT_TRUE(ConvexHull(flat).empty());
}

TEST(ConvexHullTest, EveryPointLiesBehindEveryFaceAndEveryEdgeHasTwo) {
  std::mt19937 random(4);
  for (int round = 0; round < 200; ++round) {
    const int range = round % 2 ? 8 : 8192;  // many in one plane; far apart
    std::uniform_int_distribution<int> coordinate(-range, range);
    std::vector<WholePoint> points;
    for (int i = 0; i < 4 + round % 20; ++i) {
      points.push_back({coordinate(random), coordinate(random), coordinate(random)});
    }
    std::vector<std::pair<WholePoint, WholePoint>> edges;
    for (const HullFace& face : ConvexHull(points)) {
      const WholePoint out = Cross(face[0] - face[1], face[2] - face[1]);
      for (const WholePoint& p : points) EXPECT_LE(Dot(p - face[1], out), 0);
      for (std::size_t i = 0; i < face.size(); ++i) {
        const WholePoint& at = face[i];
        const WholePoint& next = face[(i + 1) % face.size()];
        const WholePoint& after = face[(i + 2) % face.size()];
        EXPECT_LT(Dot(Cross(next - at, after - next), out), 0);
        edges.emplace_back(at, next);
      }
    }
    for (const auto& [from, to] : edges) {
      EXPECT_EQ(std::ranges::count(edges, std::pair(to, from)), 1);
      EXPECT_EQ(std::ranges::count(edges, std::pair(from, to)), 1);
    }
  }
}

}  // namespace
}  // namespace ferrowand
