#include "views/camera/camera_glide.h"

namespace ferrowand {
namespace {

constexpr double LEAST_LENGTH = 0.1;  // between directions that are nearly opposite

DVec3 Between(const DVec3& from, const DVec3& to, double part) {
  return from + (to - from) * part;
}

}  // namespace

void CameraGlide::Start(const CameraPose& from, double now, double seconds) {
  from_ = from;
  begun_ = now;
  ends_ = now + seconds;
}

CameraPose CameraGlide::At(double now, const CameraPose& to) const {
  if (!IsUnderWay(now)) return to;
  const double part = (now - begun_) / (ends_ - begun_);
  CameraPose pose = to;
  pose.eye = Between(from_.eye, to.eye, part);
  const DVec3 direction = Between(from_.direction, to.direction, part);
  const DVec3 up = Between(from_.up, to.up, part);
  if (Length(direction) < LEAST_LENGTH || Length(up) < LEAST_LENGTH) return pose;
  pose.direction = Normalise(direction);
  pose.up = Normalise(up - pose.direction * Dot(up, pose.direction));
  return pose;
}

}  // namespace ferrowand
