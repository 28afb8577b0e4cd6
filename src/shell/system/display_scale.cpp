#include "shell/system/display_scale.h"

#include "shell/system/handles.h"

namespace ferrowand {
namespace {

constexpr int USUAL_DPI = 96, POINTS_PER_INCH = 72;
constexpr int LETTER_POINTS = 8;  // as the dialogs of the resource script

int ScreenDpi() {
  const OwnedDc screen(CreateDCA("DISPLAY", nullptr, nullptr, nullptr));
  const int dpi = screen ? GetDeviceCaps(screen.get(), LOGPIXELSY) : 0;
  return dpi > 0 ? dpi : USUAL_DPI;
}

int Dpi() {
  static const int dpi = ScreenDpi();
  return dpi;
}

OwnedFont MadeFont(const char* name) {
  return OwnedFont(CreateFontA(-MulDiv(LETTER_POINTS, Dpi(), POINTS_PER_INCH), 0, 0, 0, FW_NORMAL,
                               FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                               CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE,
                               name));
}

}  // namespace

int Scaled(int pixels) {
  return MulDiv(pixels, Dpi(), USUAL_DPI);
}

HFONT InterfaceFont() {
  static const OwnedFont font = MadeFont("MS Shell Dlg");
  return font.get();
}

HFONT FixedFont() {
  static const OwnedFont font = MadeFont("Courier New");
  return font.get();
}

}  // namespace ferrowand
