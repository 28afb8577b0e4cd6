#include "shell/system/hidden_picture.h"

namespace ferrowand {

// Some versions of Wine leave such a window blank, the others keep what is drawn from GDI, which
// paints the windows beside it.
bool DrawsIntoChildren() {
  return !GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version");
}

HWND MakeHiddenWindow() {
  return CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, 0, 1, 1,
                         nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
}

void ShowPicture(HWND window, const PictureRows& picture, PixelSize size) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = picture.stride;
  info.bmiHeader.biHeight = picture.order == RowOrder::FromTop ? -size.height : size.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  const HDC screen = GetDC(window);
  SetDIBitsToDevice(screen, 0, 0, static_cast<DWORD>(size.width), static_cast<DWORD>(size.height),
                    0, 0, 0, static_cast<UINT>(size.height), picture.pixels, &info, DIB_RGB_COLORS);
  ReleaseDC(window, screen);
}

}  // namespace ferrowand
