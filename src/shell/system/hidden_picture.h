// Pictures that are drawn on a hidden window, for systems that leave a child window blank when
// OpenGL or Direct3D draws into it, or keep GDI from what is drawn there.
#pragma once

#include "shell/system/win32.h"

#include "platform/pixel.h"

namespace ferrowand {

bool DrawsIntoChildren();
// To be destroyed by whoever asks for it.
HWND MakeHiddenWindow();

enum class RowOrder { FromTop, FromBottom };

// Blue, green, red and a byte of no meaning for each pixel.
struct PictureRows {
  const void* pixels;
  int stride;  // pixels from one row to the next
  RowOrder order;
};

// At the upper left of the window's client area; the picture has at least that size.
void ShowPicture(HWND window, const PictureRows& picture, PixelSize size);

}  // namespace ferrowand
