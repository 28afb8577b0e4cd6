#include "views/camera/face_place.h"

#include <algorithm>
#include <cmath>

#include "document/map.h"
#include "views/camera/camera_frustum.h"
#include "views/map_view.h"

namespace ferrowand {
namespace {

// Less than that beyond a whole unit is no reason for the next one.
constexpr double SLIP = 0.01;

float OutwardWhole(double coordinate, double direction) {
  return static_cast<float>(direction > 0 ? std::ceil(coordinate - SLIP)
                                          : std::floor(coordinate + SLIP));
}

}  // namespace

int FacePlace::Across() const {
  int most = 0;
  for (int axis = 1; axis < 3; ++axis) {
    if (std::abs(normal_[axis]) > std::abs(normal_[most])) most = axis;
  }
  return most;
}

float FacePlace::OnGrid(double coordinate) const {
  const int whole = RoundToInt(coordinate);
  return static_cast<float>(rules_.snap ? SnapToGrid(whole, rules_.grid) : whole);
}

Vec3 FacePlace::WayFor(const Bounds& box) const {
  const int across = Across();
  Vec3 way(0, 0, 0);
  double distance = 0;  // along the normal, of the corner that comes to lie lowest
  for (int axis = 0; axis < 3; ++axis) {
    const double middle = (double{box.mins[axis]} + double{box.maxs[axis]}) / 2;
    if (axis != across) way[axis] = OnGrid(point_[axis] - middle);
    const double lowest = normal_[axis] > 0 ? box.mins[axis] : box.maxs[axis];
    distance += normal_[axis] * (lowest + way[axis] - point_[axis]);
  }
  way[across] = OutwardWhole(-distance / normal_[across], normal_[across]);
  return way;
}

Bounds FacePlace::BoxTo(Pixel at, const CameraPicture& picture, int height) const {
  const int across = Across();
  const DVec3 ray = DirectionThrough(picture, at);
  const DVec3& eye = picture.pose.eye;
  const double along = ray[across] == 0 ? -1 : (point_[across] - eye[across]) / ray[across];
  // Beyond the horizon of the floor it goes as far as a drag does.
  const double farthest = Length(point_ - eye) + LONGEST_WAY;
  const DVec3 to = eye + ray * (along > 0 ? std::min(along, farthest) : farthest);
  Bounds box{{0, 0, 0}, {0, 0, 0}};
  for (int axis = 0; axis < 3; ++axis) {
    const bool rises = axis == across;
    const float from = rises ? OutwardWhole(point_[axis], normal_[axis]) : OnGrid(point_[axis]);
    const float end =
        rises ? from + static_cast<float>(normal_[axis] > 0 ? height : -height) : OnGrid(to[axis]);
    box.mins[axis] = std::min(from, end);
    box.maxs[axis] = std::max(from, end);
  }
  return box;
}

}  // namespace ferrowand
