// OpenGL in a window: the context that a camera draws with, and the way of the picture to the
// screen.
#pragma once

#include "shell/system/win32.h"

#include <cstdint>
#include <vector>

#include "platform/pixel.h"
#include "shell/system/camera_surface.h"
#include "shell/system/handles.h"
#include "views/gl/gl_context.h"

namespace ferrowand {

class Reporter;

class GlSurface : public CameraSurface, public GlContext {
 public:
  // Says so when the system has no pixel format for the window or no context; it is not usable
  // then. The window outlives it.
  GlSurface(HWND window, Reporter& reporter);
  ~GlSurface() override;
  GlSurface(const GlSurface&) = delete;
  GlSurface& operator=(const GlSurface&) = delete;

  bool IsUsable() const override { return context_ != nullptr; }
  std::unique_ptr<CameraRenderer> MakeRenderer(const Palette& palette) override;
  void Present() override;
  bool RealisePalette() override;

  bool MakeCurrent() override;

 private:
  bool SetUp(Reporter& reporter);
  void MakePalette(const PIXELFORMATDESCRIPTOR& format);
  void FitHidden() const;

  HWND window_;
  HWND hidden_ = nullptr;  // what is drawn on where the window itself would stay blank
  HDC dc_ = nullptr;       // of the one that is drawn on
  HGLRC context_ = nullptr;
  Owned<HPALETTE, GdiDelete> palette_;  // null on displays that need none
  std::vector<std::uint8_t> picture_;
};

}  // namespace ferrowand
