#include "views/camera/selection_drag.h"

#include <algorithm>
#include <cmath>

#include "document/map.h"
#include "views/camera/camera_frustum.h"
#include "views/map_view.h"

namespace ferrowand {
namespace {

// Below this slope a floor is seen so flat that a pixel means miles: then the way is taken along a
// plane of this slope, and laid down on the floor.
constexpr double LEAST_SLOPE = 0.35;
constexpr DVec3 UP{0, 0, 1};

// Where the ray meets the plane through the point; as far as a drag goes where it meets none.
DVec3 Meeting(const DVec3& eye, const DVec3& ray, const DVec3& point, const DVec3& normal) {
  const double speed = Dot(ray, normal);
  const double distance = speed == 0 ? -1 : Dot(point - eye, normal) / speed;
  const double longest = Length(point - eye) + LONGEST_WAY;
  return eye + ray * (distance > 0 ? std::min(distance, longest) : longest);
}

}  // namespace

SpaceRules SpaceRulesOf(const Map& map, const MapView* view, unsigned limitedAxes, bool shift) {
  SpaceRules rules;
  if (view) rules.grid = view->gridu;
  rules.snap = (map.optionBits() & MAP_SNAP) != 0;
  rules.ontoGrid = shift;
  rules.limitedAxes = limitedAxes;
  if (!map.selection.empty()) {
    const entity& first = *map.selection.front();
    rules.reference = first.HasOrigin() ? first.Origin() : first.GetBounds().mins;
  }
  return rules;
}

DVec3 SelectionDrag::AlongTheFloor(const DVec3& eye, const DVec3& ray) const {
  const DVec3 way = grip_ - eye;
  const double flat = std::hypot(way.x, way.y);
  const DVec3 ahead = flat > 0 ? DVec3(way.x / flat, way.y / flat, 0) : DVec3(1, 0, 0);
  const double slope = flat > 0 ? std::abs(way.z) / flat : LEAST_SLOPE;
  const double lift = std::max(LEAST_SLOPE - slope, 0.0) * (way.z > 0 ? -1 : 1);
  const DVec3 normal = Cross(Cross(UP, ahead), ahead + UP * lift);
  const DVec3 moved = Meeting(eye, ray, grip_, normal) - grip_;
  return {moved.x, moved.y, 0};
}

// On the upright plane that faces the eye.
DVec3 SelectionDrag::UpAndDown(const DVec3& eye, const DVec3& ray) const {
  const DVec3 way = grip_ - eye;
  const DVec3 moved = Meeting(eye, ray, grip_, {way.x, way.y, 0}) - grip_;
  return {0, 0, std::clamp(moved.z, -LONGEST_WAY, LONGEST_WAY)};
}

Vec3 SelectionDrag::WayTo(Pixel at, const CameraPicture& picture, bool upAndDown,
                          const SpaceRules& rules) const {
  const DVec3& eye = picture.pose.eye;
  const DVec3 ray = DirectionThrough(picture, at);
  const DVec3 way = upAndDown ? UpAndDown(eye, ray) : AlongTheFloor(eye, ray);
  Vec3 by(0, 0, 0);
  for (int axis = 0; axis < 3; ++axis) {
    const bool moves = upAndDown == (axis == 2) && (rules.limitedAxes >> axis & 1) == 0;
    if (!moves) continue;
    const int whole = RoundToInt(way[axis]);
    const float from = rules.ontoGrid ? rules.reference[axis] : 0;
    by[axis] = rules.snap
                   ? static_cast<float>(SnapToGrid(RoundToInt(from) + whole, rules.grid)) - from
                   : static_cast<float>(whole);
  }
  return by;
}

}  // namespace ferrowand
