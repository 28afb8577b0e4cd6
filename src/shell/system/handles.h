// Owners for the system's handles.
#pragma once

#include "shell/system/win32.h"

#include <memory>
#include <type_traits>

namespace ferrowand {

struct GdiDelete {
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
struct DcDelete {
  void operator()(HDC dc) const { DeleteDC(dc); }
};
struct MenuDelete {
  void operator()(HMENU menu) const { DestroyMenu(menu); }
};

template <typename Handle, typename Delete>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, Delete>;

using OwnedPen = Owned<HPEN, GdiDelete>;
using OwnedBrush = Owned<HBRUSH, GdiDelete>;
using OwnedFont = Owned<HFONT, GdiDelete>;
using OwnedBitmap = Owned<HBITMAP, GdiDelete>;
using OwnedDc = Owned<HDC, DcDelete>;
using OwnedMenu = Owned<HMENU, MenuDelete>;

// The object behind a window: given to CreateWindow as its last argument, stored by the window's
// procedure at WM_NCCREATE.
template <typename T>
T* ObjectOf(HWND window) {
  return reinterpret_cast<T*>(GetWindowLongPtrA(window, GWLP_USERDATA));
}
inline void SetObject(HWND window, void* object) {
  SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
}

}  // namespace ferrowand
