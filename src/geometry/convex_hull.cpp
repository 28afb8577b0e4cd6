#include "geometry/convex_hull.h"

#include <algorithm>
#include <cstddef>

namespace ferrowand {
namespace {

using Points = std::vector<WholePoint>;

// Walks round the outside of points in one plane whose normal looks out of the solid.
HullFace Outline(const Points& flat, const WholePoint& normal) {
  HullFace outline;
  const auto inOrder = [](const WholePoint& a, const WholePoint& b) {
    if (a.x != b.x) return a.x < b.x;
    return a.y != b.y ? a.y < b.y : a.z < b.z;
  };
  const WholePoint first = *std::ranges::min_element(flat, inOrder);
  WholePoint at = first;
  do {
    outline.push_back(at);
    WholePoint next = at == flat[0] ? flat[1] : flat[0];
    for (const WholePoint& p : flat) {
      const WholePoint candidate = p - at;
      const WholePoint best = next - at;
      // Clockwise, nothing lies to the left of an edge; of those in line the farthest is a corner.
      const std::int64_t left = Dot(Cross(best, candidate), normal);
      if (left > 0 || (left == 0 && Dot(candidate, candidate) > Dot(best, best))) next = p;
    }
    at = next;
  } while (at != first && outline.size() <= flat.size());
  return outline;
}

// The points on the plane through `origin`, or none when there are points in front of it.
Points OnPlane(const Points& points, const WholePoint& origin, const WholePoint& normal) {
  Points flat;
  for (const WholePoint& p : points) {
    const std::int64_t distance = Dot(p - origin, normal);
    if (distance > 0) return {};
    if (distance == 0) flat.push_back(p);
  }
  return flat;
}

}  // namespace

std::vector<HullFace> ConvexHull(std::span<const WholePoint> given) {
  Points points;
  for (const WholePoint& p : given) {
    if (std::ranges::find(points, p) == points.end()) points.push_back(p);
  }
  std::vector<HullFace> faces;
  const auto index = [&](const WholePoint& p) { return std::ranges::find(points, p); };
  for (auto a = points.begin(); a != points.end(); ++a) {
    for (auto b = a + 1; b != points.end(); ++b) {
      for (auto c = b + 1; c != points.end(); ++c) {
        const WholePoint normal = Cross(*b - *a, *c - *a);
        if (normal == WholePoint()) continue;
        for (const WholePoint& outwards : {normal, -normal}) {
          const Points flat = OnPlane(points, *a, outwards);
          // Each plane is met once for every three of its points: the first three count.
          if (flat.empty() || flat.size() == points.size()) continue;
          const auto third = std::ranges::find_if(
              flat, [&](const WholePoint& p) { return Cross(*b - *a, p - *a) != WholePoint(); });
          if (index(flat[0]) == a && index(flat[1]) == b && *third == *c) {
            faces.push_back(Outline(flat, outwards));
          }
        }
      }
    }
  }
  return faces;
}

}  // namespace ferrowand
