#include "shell/system/gl_surface.h"

#include <algorithm>

#include "base/report.h"
#include "shell/system/hidden_picture.h"
#include "views/gl/gl_renderer.h"

namespace ferrowand {
namespace {

PixelSize ClientSize(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

// Of that many bits, as a part of 255.
BYTE Spread(int value, int bits) {
  const int most = (1 << bits) - 1;
  return static_cast<BYTE>(most > 0 ? value * 255 / most : 0);
}

}  // namespace

GlSurface::GlSurface(HWND window, Reporter& reporter) : window_(window) {
  if (!DrawsIntoChildren()) hidden_ = MakeHiddenWindow();
  dc_ = GetDC(hidden_ ? hidden_ : window_);
  if (!SetUp(reporter)) reporter.Show("Cannot continue", "Cannot setup pixel format!");
}

GlSurface::~GlSurface() {
  if (context_) {
    if (wglGetCurrentContext() == context_) wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(context_);
  }
  ReleaseDC(hidden_ ? hidden_ : window_, dc_);
  if (hidden_) DestroyWindow(hidden_);
}

bool GlSurface::SetUp(Reporter& reporter) {
  PIXELFORMATDESCRIPTOR wanted{};
  wanted.nSize = sizeof wanted;
  wanted.nVersion = 1;
  wanted.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
  wanted.iPixelType = PFD_TYPE_RGBA;
  wanted.cColorBits = 24;
  wanted.cDepthBits = 16;
  const int format = ChoosePixelFormat(dc_, &wanted);
  if (format == 0) {
    reporter.Show("Error", "ChoosePixelFormat failed");
    return false;
  }
  if (!SetPixelFormat(dc_, format, &wanted)) {
    reporter.Show("Error", "SetPixelFormat failed");
    return false;
  }
  PIXELFORMATDESCRIPTOR given{};
  DescribePixelFormat(dc_, format, sizeof given, &given);
  if ((given.dwFlags & PFD_NEED_PALETTE) != 0) MakePalette(given);
  context_ = wglCreateContext(dc_);
  return context_ != nullptr;
}

// Every colour that the bits of the format can tell.
void GlSurface::MakePalette(const PIXELFORMATDESCRIPTOR& format) {
  const int count = 1 << std::min<int>(format.cColorBits, 8);
  std::vector<std::uint8_t> room(sizeof(LOGPALETTE) +
                                 static_cast<std::size_t>(count) * sizeof(PALETTEENTRY));
  auto* palette = reinterpret_cast<LOGPALETTE*>(room.data());
  palette->palVersion = 0x300;
  palette->palNumEntries = static_cast<WORD>(count);
  const auto part = [](int index, int bits, int shift) {
    return Spread(index >> shift & ((1 << bits) - 1), bits);
  };
  for (int i = 0; i < count; ++i) {
    palette->palPalEntry[i] = {part(i, format.cRedBits, format.cRedShift),
                               part(i, format.cGreenBits, format.cGreenShift),
                               part(i, format.cBlueBits, format.cBlueShift), 0};
  }
  palette_.reset(CreatePalette(palette));
  GlSurface::RealisePalette();
}

bool GlSurface::RealisePalette() {
  if (!palette_) return false;
  SelectPalette(dc_, palette_.get(), FALSE);
  const UINT changed = RealizePalette(dc_);
  return changed != GDI_ERROR && changed > 0;
}

std::unique_ptr<CameraRenderer> GlSurface::MakeRenderer(const Palette& palette) {
  return std::make_unique<GlRenderer>(*this, palette);
}

// As large as the window whose picture is drawn on it.
void GlSurface::FitHidden() const {
  const PixelSize size = ClientSize(window_);
  if (size == ClientSize(hidden_)) return;
  SetWindowPos(hidden_, nullptr, 0, 0, size.width, size.height,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool GlSurface::MakeCurrent() {
  if (!context_) return false;
  if (hidden_) FitHidden();
  return wglGetCurrentContext() == context_ || wglMakeCurrent(dc_, context_);
}

void GlSurface::Present() {
  if (!context_) return;
  if (!hidden_) {
    SwapBuffers(dc_);
    return;
  }
  const PixelSize size = ClientSize(window_);
  ReadPicture(size, picture_);
  ShowPicture(window_, {picture_.data(), size.width, RowOrder::FromBottom}, size);
}

}  // namespace ferrowand
