// The way of the picture to where the camera stands: it follows each step within a moment, so that
// flying in steps looks smooth.
#pragma once

#include "views/camera/camera_pose.h"

namespace ferrowand {

class CameraGlide {
 public:
  // Times in seconds, of one clock.
  void Start(const CameraPose& from, double now, double seconds);
  void Stop() { ends_ = begun_; }
  // Seconds.
  double Left(double now) const { return IsUnderWay(now) ? ends_ - now : 0; }
  bool IsUnderWay(double now) const { return now >= begun_ && now < ends_; }
  // What is shown on the way to where the camera stands.
  CameraPose At(double now, const CameraPose& to) const;

 private:
  CameraPose from_;
  double begun_ = 0, ends_ = 0;
};

}  // namespace ferrowand
