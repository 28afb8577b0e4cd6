#include "platform/display.h"

namespace ferrowand {

int ScreenDpi() {
  return 96;
}

int Scaled(int pixels) {
  return pixels;
}

}  // namespace ferrowand
