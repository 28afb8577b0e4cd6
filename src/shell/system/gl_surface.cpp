#include "shell/system/gl_surface.h"

#include <algorithm>
#include <cstdlib>

#include "base/report.h"
#include "views/gl/gl_renderer.h"

namespace ferrowand {
namespace {

constexpr int FIRST_WINE_WITH_CHILDREN = 9;

PixelSize ClientSize(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

// Earlier versions of Wine leave a child window blank when its buffers are exchanged.
bool DrawsIntoChildren() {
  using GetVersion = const char*(CDECL*)();
  const HMODULE system = GetModuleHandleA("ntdll.dll");
  const auto getVersion = reinterpret_cast<GetVersion>(
      reinterpret_cast<void*>(GetProcAddress(system, "wine_get_version")));
  return !getVersion || std::atoi(getVersion()) >= FIRST_WINE_WITH_CHILDREN;
}

// Of that many bits, as a part of 255.
BYTE Spread(int value, int bits) {
  const int most = (1 << bits) - 1;
  return static_cast<BYTE>(most > 0 ? value * 255 / most : 0);
}

}  // namespace

GlSurface::GlSurface(HWND window, Reporter& reporter) : window_(window) {
  if (!DrawsIntoChildren()) {
    hidden_ = CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, 0,
                              1, 1, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
  }
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
  RealisePalette();
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
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size.width;
  info.bmiHeader.biHeight = size.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  const HDC screen = GetDC(window_);
  SetDIBitsToDevice(screen, 0, 0, static_cast<DWORD>(size.width), static_cast<DWORD>(size.height),
                    0, 0, 0, static_cast<UINT>(size.height), picture_.data(), &info,
                    DIB_RGB_COLORS);
  ReleaseDC(window_, screen);
}

}  // namespace ferrowand
