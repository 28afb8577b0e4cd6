#include "shell/windows/child_window.h"

#include "shell/app/app.h"

namespace ferrowand {

ChildWindow::~ChildWindow() {
  if (window_) SetObject(window_, nullptr);
}

void ChildWindow::Create(const char* windowClass, const char* title, const ChildPlace& place,
                         DWORD style, DWORD extendedStyle) {
  CreateWindowExA(WS_EX_MDICHILD | extendedStyle, windowClass, title, WS_VISIBLE | WS_CHILD | style,
                  place.left, place.top, place.width, place.height, app_.frame.Client(), nullptr,
                  app_.instance, this);
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
    child->app_.Forget(*child);
  }
  return DefMDIChildProcA(window, message, wParam, lParam);
}

}  // namespace ferrowand
