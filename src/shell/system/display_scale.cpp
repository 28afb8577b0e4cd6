#include "shell/system/display_scale.h"

#include "shell/system/handles.h"

namespace ferrowand {
namespace {

constexpr int POINTS_PER_INCH = 72;
constexpr int LETTER_POINTS = 8;  // as the dialogs of the resource script

OwnedFont MadeFont(const char* name) {
  return OwnedFont(CreateFontA(-MulDiv(LETTER_POINTS, ScreenDpi(), POINTS_PER_INCH), 0, 0, 0,
                               FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                               CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE,
                               name));
}

}  // namespace

HFONT InterfaceFont() {
  static const OwnedFont font = MadeFont("MS Shell Dlg");
  return font.get();
}

HFONT FixedFont() {
  static const OwnedFont font = MadeFont("Courier New");
  return font.get();
}

}  // namespace ferrowand
