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

// The normal of the steepest plane through an edge: if that has all points behind it, it looks out.
WholePoint SteepestNormal(const Points& points, const WholePoint& from, const WholePoint& to) {
  WholePoint normal;
  for (const WholePoint& p : points) {
    if (normal == WholePoint() || Dot(p - from, normal) > 0) normal = Cross(p - from, to - from);
  }
  return normal;
}

}  // namespace

std::vector<HullFace> ConvexHull(std::span<const WholePoint> given) {
  Points points;
  for (const WholePoint& p : given) {
    if (std::ranges::find(points, p) == points.end()) points.push_back(p);
  }
  std::vector<HullFace> faces;
  for (const WholePoint& a : points) {
    for (const WholePoint& b : points) {
      const WholePoint normal = SteepestNormal(points, a, b);
      if (normal == WholePoint()) continue;
      const Points flat = OnPlane(points, a, normal);
      if (flat.empty() || flat.size() == points.size()) continue;
      // A face is met at each of its edges; the first one counts.
      const HullFace outline = Outline(flat, normal);
      if (outline[0] == a && outline[1] == b) faces.push_back(outline);
    }
  }
  return faces;
}

}  // namespace ferrowand
