#include "platform/display.h"

#include <windows.h>

namespace ferrowand {
namespace {

constexpr int USUAL_DPI = 96;

int AskedDpi() {
  const HDC screen = CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  if (!screen) return USUAL_DPI;
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  DeleteDC(screen);
  return dpi > 0 ? dpi : USUAL_DPI;
}

}  // namespace

int ScreenDpi() {
  static const int dpi = AskedDpi();
  return dpi;
}

int Scaled(int pixels) {
  return MulDiv(pixels, ScreenDpi(), USUAL_DPI);
}

}  // namespace ferrowand
