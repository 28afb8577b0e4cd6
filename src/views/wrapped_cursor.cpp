#include "views/wrapped_cursor.h"

namespace ferrowand {
namespace {

constexpr int MARGIN = 5, RIGHT_MARGIN = 20;  // pixels

}  // namespace

Pixel WrappedCursor(Pixel cursor, const PixelRect& frame, PixelSize area) {
  Pixel to = cursor;
  if (cursor.x <= frame.left + MARGIN || cursor.x >= frame.right - RIGHT_MARGIN) {
    to.x = area.width / 2;
  }
  if (cursor.y <= frame.top + MARGIN || cursor.y >= frame.bottom - MARGIN) to.y = area.height / 2;
  return to;
}

}  // namespace ferrowand
