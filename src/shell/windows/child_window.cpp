#include "shell/windows/child_window.h"

#include "base/options.h"
#include "shell/frame/frame.h"
#include "shell/system/handles.h"
#include "shell/system/text_box.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"

namespace ferrowand {

ChildWindow::ChildWindow(ChildWindows& windows) : windows_(windows), frame_(windows.GetFrame()) {}

ChildWindow::~ChildWindow() {
  if (window_) SetObject(window_, nullptr);
}

void ChildWindow::Create(const char* windowClass, const char* title, const ChildPlace& place,
                         DWORD style) {
  const DWORD caption = windows_.GetOptions().smallCaptions ? WS_EX_TOOLWINDOW : 0;
  CreateWindowExA(WS_EX_MDICHILD | caption, windowClass, title, WS_VISIBLE | WS_CHILD | style,
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

void ChildWindow::MoveOnto(const ChildWindow& other) const {
  RECT place;
  GetWindowRect(other.window_, &place);
  MapWindowPoints(nullptr, frame_.Client(), reinterpret_cast<POINT*>(&place), 2);
  MoveTo({place.left, place.top, place.right, place.bottom});
}

void ChildWindow::OnMouseOver(HWND inside, POINT mouse) {
  ClientToScreen(inside, &mouse);
  // The system tells of the mouse also when a window comes up under it. Then the user has chosen
  // that window's sister, or is about to.
  if (!windows_.MouseHasMoved(mouse) || !windows_.GetOptions().trackMouse) return;
  const HWND focus = GetFocus();
  if (focus == inside || !focus || GetCapture() || GetActiveWindow() != frame_.Handle()) return;
  for (const auto& window : windows_.All()) {
    const bool isThere = window->Handle() == focus || IsChild(window->Handle(), focus);
    if (!isThere || IsTextBox(focus)) continue;
    SendMessageA(frame_.Client(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(window_), 0);
    SetFocus(inside);
    return;
  }
}

PixelRect ChildWindow::FrameAround(HWND inside) const {
  RECT place;
  GetWindowRect(frame_.Handle(), &place);
  MapWindowPoints(nullptr, inside, reinterpret_cast<POINT*>(&place), 2);
  return {place.left, place.top, place.right, place.bottom};
}

// The caption changes its height.
void ChildWindow::OptionsChanged() {
  const bool small = windows_.GetOptions().smallCaptions != 0;
  const LONG style = GetWindowLongA(window_, GWL_EXSTYLE);
  const LONG wanted = small ? style | WS_EX_TOOLWINDOW : style & ~WS_EX_TOOLWINDOW;
  if (wanted == style) return;
  SetWindowLongA(window_, GWL_EXSTYLE, wanted);
  SetWindowPos(window_, nullptr, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void ChildWindow::ShowTitle(const std::string& title) {
  if (title == title_) return;
  title_ = title;
  SetWindowTextA(window_, AsUtf8(title).c_str());
  // Not every system takes a new title into the Window menu's list by itself.
  SendMessageA(frame_.Client(), WM_MDIREFRESHMENU, 0, 0);
}

LRESULT CALLBACK ChildWindow::Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
    const auto* mdi = static_cast<const MDICREATESTRUCTA*>(create->lpCreateParams);
    auto* created = reinterpret_cast<ChildWindow*>(mdi->lParam);
    created->window_ = window;
    SetObject(window, created);
  }
  auto* child = ObjectOf<ChildWindow>(window);
  if (child && message == WM_CLOSE) {
    child->windows_.Close(*child);
    return 0;
  }
  if (child && message != WM_NCDESTROY) return child->OnMessage(message, wParam, lParam);
  if (child) {
    SetObject(window, nullptr);
    child->window_ = nullptr;
    child->windows_.Forget(*child);
  }
  return DefMDIChildProcA(window, message, wParam, lParam);
}

}  // namespace ferrowand
