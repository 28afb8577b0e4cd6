#include "views/camera/camera_frustum.h"

#include <cmath>
#include <numbers>

namespace ferrowand {
namespace {

// A place of the picture, in pixels from its middle, and how far that is from the eye in pixels.
struct PictureScale {
  explicit PictureScale(const CameraPicture& picture)
      : right(picture.size.width / 2.0),
        bottom(picture.size.height / 2.0),
        depth(bottom / std::tan(FIELD_OF_VIEW / 2 * (std::numbers::pi / 180))) {}

  DVec3 Way(const CameraPose& pose, double x, double y) const {
    return pose.direction * depth + pose.Right() * x - pose.up * y;
  }

  double right, bottom, depth;
};

Plane Through(const DVec3& eye, const DVec3& a, const DVec3& b) {
  const DVec3 normal = Normalise(Cross(b, a));
  return {normal, Dot(normal, eye)};
}

Frustum FrustumBetween(const CameraPicture& picture, double left, double top, double right,
                       double bottom) {
  const PictureScale scale(picture);
  const CameraPose& pose = picture.pose;
  const DVec3 topLeft = scale.Way(pose, left, top), topRight = scale.Way(pose, right, top);
  const DVec3 bottomLeft = scale.Way(pose, left, bottom);
  const DVec3 bottomRight = scale.Way(pose, right, bottom);
  const double ahead = Dot(pose.direction, pose.eye);
  return {{Through(pose.eye, topLeft, bottomLeft),
           Through(pose.eye, bottomRight, topRight),
           Through(pose.eye, topRight, topLeft),
           Through(pose.eye, bottomLeft, bottomRight),
           {pose.direction, ahead + NEAR_CLIP},
           {-pose.direction, -(ahead + picture.backClip)}}};
}

}  // namespace

Frustum FrustumOf(const CameraPicture& picture) {
  const PictureScale scale(picture);
  return FrustumBetween(picture, -scale.right, -scale.bottom, scale.right, scale.bottom);
}

Frustum FrustumAround(const CameraPicture& picture, Pixel at, double reach) {
  const PictureScale scale(picture);
  const double x = at.x - scale.right, y = at.y - scale.bottom;
  return FrustumBetween(picture, x - reach, y - reach, x + reach, y + reach);
}

DVec3 DirectionThrough(const CameraPicture& picture, Pixel at) {
  const PictureScale scale(picture);
  return Normalise(scale.Way(picture.pose, at.x + 0.5 - scale.right, at.y + 0.5 - scale.bottom));
}

}  // namespace ferrowand
