// A window to draw a camera in, in one of the ways that the system has of drawing.
#pragma once

#include <memory>

#include "views/camera/camera_renderer.h"

namespace ferrowand {

class Palette;

class CameraSurface {
 public:
  virtual ~CameraSurface() = default;

  // Otherwise the user has been told, and the window stays as it is.
  virtual bool IsUsable() const = 0;
  // What draws there; it goes before the surface.
  virtual std::unique_ptr<CameraRenderer> MakeRenderer(const Palette& palette) = 0;
  // What has been drawn, to the screen.
  virtual void Present() = 0;
  // On displays of 256 colours: whether the window is to be painted anew.
  virtual bool RealisePalette() { return false; }
};

}  // namespace ferrowand
