#include "shell/windows/child_window.h"

#include "shell/frame/frame.h"
#include "shell/system/handles.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"

namespace ferrowand {

ChildWindow::ChildWindow(ChildWindows& windows) : windows_(windows), frame_(windows.GetFrame()) {}

ChildWindow::~ChildWindow() {
  if (window_) SetObject(window_, nullptr);
}

void ChildWindow::Create(const char* windowClass, const char* title, const ChildPlace& place,
                         DWORD style, DWORD extendedStyle) {
  CreateWindowExA(WS_EX_MDICHILD | extendedStyle, windowClass, title, WS_VISIBLE | WS_CHILD | style,
                  place.left, place.top, place.width, place.height, frame_.Client(), nullptr,
                  frame_.Instance(), this);
}

void ChildWindow::MoveTo(const PixelRect& place) const {
  if (IsIconic(window_) || IsZoomed(window_)) {
    SendMessageA(frame_.Client(), WM_MDIRESTORE, reinterpret_cast<WPARAM>(window_), 0);
  }
  // Nothing is carried along: what stood there may have belonged to a window above.
  SetWindowPos(window_, nullptr, place.left, place.top, place.Width(), place.Height(),
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

void ChildWindow::ShowTitle(const std::string& title) {
  if (title == title_) return;
  title_ = title;
  SetWindowTextA(window_, AsUtf8(title).c_str());
  // Not every system takes a new title into the Window menu's list by itself.
  SendMessageA(frame_.Client(), WM_MDIREFRESHMENU, 0, 0);
}

LRESULT ChildWindow::Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
    const auto* mdi = static_cast<const MDICREATESTRUCTA*>(create->lpCreateParams);
    auto* created = reinterpret_cast<ChildWindow*>(mdi->lParam);
    created->window_ = window;
    SetObject(window, created);
  }
  auto* child = ObjectOf<ChildWindow>(window);
  if (child && message != WM_NCDESTROY) return child->OnMessage(message, wParam, lParam);
  if (child) {
    SetObject(window, nullptr);
    child->window_ = nullptr;
    child->windows_.Forget(*child);
  }
  return DefMDIChildProcA(window, message, wParam, lParam);
}

}  // namespace ferrowand
