// What the mouse does in a camera's window.
#include <windowsx.h>

#include <cstdlib>

#include "shell/windows/camera_window.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

Pixel ToPixel(LPARAM lParam) {
  return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

// What a click takes while that tool is in use.
PickLevel LevelOf(const Tool* tool) {
  const auto* selector = dynamic_cast<const Selector*>(tool);
  return selector ? selector->Level() : PickLevel::Objects;
}

}  // namespace

bool CameraWindow::OnMouse(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      OnLeftPress(ToPixel(lParam));
      return true;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
      OnRightPress(ToPixel(lParam));
      return true;
    case WM_MOUSEMOVE:
      if ((wParam & MK_RBUTTON) != 0) OnRightMove(ToPixel(lParam));
      return true;
    case WM_RBUTTONUP:
      OnRightRelease();
      return true;
  }
  return false;
}

void CameraWindow::OnLeftPress(Pixel at) {
  SetFocus(Handle());
  camera_->Click(at, LevelOf(context_.tools.Current()), GetKeyState(VK_CONTROL) < 0);
}

void CameraWindow::OnRightPress(Pixel at) {
  SetFocus(Handle());
  SetCapture(Handle());
  press_ = at;
  mouse_.Press(at);
  drags_ = false;
}

void CameraWindow::OnRightMove(Pixel at) {
  const bool isFar = std::abs(at.x - press_.x) > GetSystemMetrics(SM_CXDRAG) ||
                     std::abs(at.y - press_.y) > GetSystemMetrics(SM_CYDRAG);
  if (isFar) drags_ = true;
  if (drags_) FollowMouse(at, BUTTON_RIGHT);
}

void CameraWindow::OnRightRelease() {
  if (GetCapture() != Handle()) return;
  ReleaseCapture();
  if (!drags_) OfferModes();
}

}  // namespace ferrowand
