// Direct3D in a window: the device that a camera draws with, however often the system takes it
// away, and the way of the picture to the screen.
#pragma once

#include <memory>

#include "platform/pixel.h"
#include "shell/direct3d/d3d.h"
#include "shell/system/camera_surface.h"

namespace ferrowand {

class Direct3D;

class D3dSurface : public CameraSurface {
 public:
  // Direct3D is ready, and outlives it, as the window does.
  D3dSurface(HWND window, Direct3D& direct3d);
  ~D3dSurface() override;
  D3dSurface(const D3dSurface&) = delete;
  D3dSurface& operator=(const D3dSurface&) = delete;

  bool IsUsable() const override { return isUsable_; }
  std::unique_ptr<CameraRenderer> MakeRenderer(const Palette& palette) override;
  void Present() override;

  // Ready for a picture of that size. Null while the system keeps the device away; the window is
  // painted anew when it may have come back.
  IDirect3DDevice9* Prepare(PixelSize size);
  // Another one for every device. What was made with an earlier one is good for nothing.
  unsigned Generation() const { return generation_; }

 private:
  bool MakeDevice(PixelSize size);
  bool Fit(PixelSize size);
  void GiveUpDevice();
  void AskAgain() const;
  void Copy();

  HWND window_;
  Direct3D& direct3d_;
  HWND hidden_ = nullptr;  // what is drawn on where the window itself would stay blank
  bool isUsable_ = false;
  D3DPRESENT_PARAMETERS parameters_{};
  OwnedD3d<IDirect3DDevice9> device_;
  unsigned generation_ = 0;
  OwnedD3d<IDirect3DSurface9> copy_;  // in memory, of what was drawn
  PixelSize drawn_;
};

}  // namespace ferrowand
