// The window of a camera for tests: a size, and what the camera asked for.
#pragma once

#include <string>

#include "views/camera/camera.h"

namespace ferrowand {

class FakeCameraHost : public CameraHost {
 public:
  explicit FakeCameraHost(PixelSize size = {200, 150}) : area(size) {}

  PixelSize area;
  int repaints = 0;
  std::string caption;
  double now = 100;  // seconds

  PixelSize DrawingArea() const override { return area; }
  void Repaint() override { ++repaints; }
  void SetCaption(const std::string& text) override { caption = text; }
  double Now() const override { return now; }
};

}  // namespace ferrowand
