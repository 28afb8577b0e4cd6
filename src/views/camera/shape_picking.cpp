#include "views/camera/shape_picking.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <utility>

#include "views/camera/camera_frustum.h"

namespace ferrowand {
namespace {

constexpr double PICK_REACH = 2;  // pixels

class Picker {
 public:
  Picker(const CameraPicture& picture, Pixel at)
      : pose_(picture.pose), room_(FrustumAround(picture, at, PICK_REACH)) {}

  // How far before the eye the nearest point of it is that lies under the place.
  std::optional<double> Nearest(const Shape& shape, bool byEdges) {
    double nearest = std::numeric_limits<double>::infinity();
    for (const ShapePolygon& polygon : shape.polygons) {
      if (!(PlaneOf(shape, polygon).DistanceTo(pose_.eye) > 0)) continue;
      if (byEdges) {
        LookAtEdges(shape, polygon, nearest);
      } else {
        LookAtFace(shape, polygon, nearest);
      }
    }
    if (nearest == std::numeric_limits<double>::infinity()) return std::nullopt;
    return nearest;
  }

 private:
  double DepthOf(const DVec3& point) const { return Dot(point - pose_.eye, pose_.direction); }

  void LookAtEdges(const Shape& shape, const ShapePolygon& polygon, double& nearest) {
    DVec3 from(shape.points[polygon.end - 1].at);
    for (std::uint32_t i = polygon.begin; i < polygon.end; ++i) {
      const DVec3 to(shape.points[i].at);
      LookAtEdge(from, to, nearest);
      from = to;
    }
  }

  void LookAtEdge(const DVec3& from, const DVec3& to, double& nearest) const {
    double enters = 0, leaves = 1;
    for (const Plane& plane : room_) {
      const double a = plane.DistanceTo(from), b = plane.DistanceTo(to);
      if (a < 0 && b < 0) return;
      if (a < 0) enters = std::max(enters, a / (a - b));
      if (b < 0) leaves = std::min(leaves, a / (a - b));
    }
    if (enters > leaves) return;
    const DVec3 way = to - from;
    nearest = std::min({nearest, DepthOf(from + way * enters), DepthOf(from + way * leaves)});
  }

  void LookAtFace(const Shape& shape, const ShapePolygon& polygon, double& nearest) {
    left_.clear();
    for (std::uint32_t i = polygon.begin; i < polygon.end; ++i) {
      left_.emplace_back(shape.points[i].at);
    }
    for (const Plane& plane : room_) Cut(plane);
    for (const DVec3& point : left_) nearest = std::min(nearest, DepthOf(point));
  }

  // What is left in front of the plane.
  void Cut(const Plane& plane) {
    if (left_.empty()) return;
    kept_.clear();
    DVec3 from = left_.back();
    double distance = plane.DistanceTo(from);
    for (const DVec3& to : left_) {
      const double next = plane.DistanceTo(to);
      if ((distance < 0) != (next < 0)) {
        kept_.push_back(from + (to - from) * (distance / (distance - next)));
      }
      if (next >= 0) kept_.push_back(to);
      from = to;
      distance = next;
    }
    std::swap(left_, kept_);
  }

  const CameraPose& pose_;
  const Frustum room_;
  std::vector<DVec3> left_, kept_;  // kept for their memory
};

}  // namespace

Plane PlaneOf(const Shape& shape, const ShapePolygon& polygon) {
  // The sum over all corners: three of them may lie on one line.
  const DVec3 first(shape.points[polygon.begin].at);
  DVec3 sum;
  for (std::uint32_t i = polygon.begin + 1; i + 1 < polygon.end; ++i) {
    sum = sum + Cross(DVec3(shape.points[i].at) - first, DVec3(shape.points[i + 1].at) - first);
  }
  const DVec3 normal = Normalise(sum);
  return {normal, Dot(normal, first)};
}

std::vector<ShapeName> PickShapes(const CameraPicture& picture, Pixel at,
                                  std::span<const Shape> shapes) {
  Picker picker(picture, at);
  std::vector<std::pair<double, ShapeName>> hits;
  const auto collect = [&](bool byEdges) {
    for (const ShapeName name : picture.seen) {
      if (const auto depth = picker.Nearest(shapes[name], byEdges)) hits.emplace_back(*depth, name);
    }
  };
  collect(IsOfLines(picture.mode));
  if (hits.empty() && IsOfLines(picture.mode)) collect(false);
  std::ranges::stable_sort(hits, std::less<>(), &std::pair<double, ShapeName>::first);
  std::vector<ShapeName> names;
  names.reserve(hits.size());
  for (const auto& [depth, name] : hits) names.push_back(name);
  return names;
}

}  // namespace ferrowand
