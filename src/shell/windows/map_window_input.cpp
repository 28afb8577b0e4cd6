// The drawing area of a 2D view: painting, scrolling, mouse and keys.
#include <windowsx.h>

#include <cmath>
#include <utility>

#include "document/action.h"
#include "operations/transform_selection.h"
#include "shell/dialogs/refusal.h"
#include "shell/frame/command_target.h"
#include "shell/system/gdi_canvas.h"
#include "shell/windows/child_windows.h"
#include "shell/windows/map_window.h"
#include "shell/windows/window_tool_host.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr int WHEEL_LINES = 3;  // of ScrollLines, a notch

bool IsDown(int key) {
  return GetKeyState(key) < 0;
}

Pixel ToPixel(LPARAM lParam) {
  return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

int HeldButtons(WPARAM keys) {
  if (keys & MK_LBUTTON) return BUTTON_LEFT;
  return keys & (MK_RBUTTON | MK_MBUTTON) ? BUTTON_RIGHT : 0;
}

}  // namespace

LRESULT CALLBACK MapFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
    auto* object = static_cast<MapWindow*>(create->lpCreateParams);
    object->drawing_ = window;
    SetObject(window, object);
  }
  auto* object = ObjectOf<MapWindow>(window);
  // The first messages come before there is a view.
  if (object && object->view_) return object->OnMapMessage(message, wParam, lParam);
  return DefWindowProcA(window, message, wParam, lParam);
}

LRESULT MapWindow::OnMapMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT:
      OnPaint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SIZE:
      view_->OnResize();
      return 0;
    case WM_HSCROLL:
    case WM_VSCROLL:
      OnScroll(message == WM_VSCROLL, LOWORD(wParam));
      return 0;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
      OnWheel(wParam, lParam, message == WM_MOUSEHWHEEL);
      return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      OnButtonDown(BUTTON_LEFT, lParam, message == WM_LBUTTONDBLCLK);
      return 0;
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDBLCLK:
      OnButtonDown(BUTTON_RIGHT, lParam,
                   message == WM_RBUTTONDBLCLK || message == WM_MBUTTONDBLCLK);
      return 0;
    case WM_LBUTTONUP:
      OnButtonUp(BUTTON_LEFT, wParam, lParam);
      return 0;
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
      OnButtonUp(BUTTON_RIGHT, wParam, lParam);
      return 0;
    case WM_MOUSEMOVE:
      OnMouseMove(wParam, lParam);
      return 0;
    case WM_CAPTURECHANGED:
      if (reinterpret_cast<HWND>(lParam) == drawing_) return 0;
      view_->EndPan();
      context_.toolHost.OnCaptureLost(drawing_);
      return 0;
    case WM_MOUSELEAVE:
      view_->OnMouseLeave();
      return 0;
    case WM_SETCURSOR:
      if (LOWORD(lParam) != HTCLIENT) break;
      SetMouseCursor();
      return TRUE;
    case WM_KEYDOWN:
      if (OnKeyDown(wParam, (HIWORD(lParam) & KF_REPEAT) != 0) || InsertBound(wParam, lParam))
        return 0;
      break;
    case WM_SYSKEYUP:
      if (wParam != VK_MENU || !std::exchange(altIsForWheel_, false)) break;
      return 0;
    case WM_KEYUP:
      if (wParam == VK_SPACE) view_->EndPan();
      if (wParam == VK_SPACE || wParam == 'D') SetMouseCursor();
      break;
    case WM_KILLFOCUS:
      view_->EndPan();
      break;
    case WM_CHAR:
      if (view_->OnCharacter(static_cast<char>(wParam), IsDown(VK_SHIFT))) return 0;
      break;
  }
  return DefWindowProcA(drawing_, message, wParam, lParam);
}

void MapWindow::OnPaint() {
  PAINTSTRUCT paint;
  const HDC screen = BeginPaint(drawing_, &paint);
  const RECT& r = paint.rcPaint;
  const PixelRect update{r.left, r.top, r.right, r.bottom};
  if (!update.Empty() && context_.backBuffer.Prepare(screen, DrawingArea())) {
    GdiCanvas canvas(context_.backBuffer.Dc(), context_.objects);
    canvas.SetClip(update);
    view_->Paint(canvas, update);
    BitBlt(screen, r.left, r.top, update.Width(), update.Height(), context_.backBuffer.Dc(), r.left,
           r.top, SRCCOPY);
  }
  EndPaint(drawing_, &paint);
}

void MapWindow::OnScroll(bool vertical, int request) {
  switch (request) {
    case SB_LINEUP:
    case SB_LINEDOWN:
      return view_->ScrollLines(vertical, request == SB_LINEUP ? -1 : 1);
    case SB_PAGEUP:
    case SB_PAGEDOWN:
      return view_->ScrollPages(vertical, request == SB_PAGEUP ? -1 : 1);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: {
      SCROLLINFO info{};
      info.cbSize = sizeof info;
      info.fMask = SIF_TRACKPOS;
      GetScrollInfo(drawing_, vertical ? SB_VERT : SB_HORZ, &info);
      return view_->ScrollToThumb(vertical, info.nTrackPos);
    }
  }
}

void MapWindow::OnWheel(WPARAM wParam, LPARAM lParam, bool sideways) {
  wheelRest_ += GET_WHEEL_DELTA_WPARAM(wParam);
  const int notches = wheelRest_ / WHEEL_DELTA;
  wheelRest_ -= notches * WHEEL_DELTA;
  const WORD keys = GET_KEYSTATE_WPARAM(wParam);
  POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  ScreenToClient(drawing_, &point);
  const Pixel at{static_cast<int>(point.x), static_cast<int>(point.y)};
  if (keys & MK_CONTROL) {
    for (int i = 0; i < std::abs(notches); ++i) view_->ZoomAt(at, notches < 0);
  } else if (IsDown(VK_MENU)) {
    OnDepthWheel(notches, at);
  } else if (sideways) {
    view_->ScrollLines(false, notches * WHEEL_LINES);
  } else {
    view_->ScrollLines(!(keys & MK_SHIFT), -notches * WHEEL_LINES);
  }
}

void MapWindow::OnDepthWheel(int notches, Pixel at) {
  altIsForWheel_ = true;
  auto* const current = dynamic_cast<Selector*>(context_.tools.Current());
  Selector& selector = current ? *current : context_.tools.brushSelector;
  for (int i = 0; i < std::abs(notches); ++i) selector.GoThrough(*view_, at, notches < 0);
}

void MapWindow::OnButtonDown(int button, LPARAM lParam, bool twice) {
  EndRefusal();
  SetFocus(drawing_);
  SetCapture(drawing_);
  if (twice && !IsDown('D')) {
    view_->OnDoubleClick(ToPixel(lParam), button);
  } else {
    view_->OnMouseDown(ToPixel(lParam), button, IsDown('D'), IsDown(VK_SHIFT));
  }
}

void MapWindow::OnButtonUp(int button, WPARAM wParam, LPARAM lParam) {
  if (HeldButtons(wParam) == 0) context_.toolHost.ReleaseMouse(drawing_);
  view_->OnMouseUp(ToPixel(lParam), button);
}

void MapWindow::OnMouseMove(WPARAM wParam, LPARAM lParam) {
  OnMouseOver(drawing_, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
  TRACKMOUSEEVENT leaving{sizeof leaving, TME_LEAVE, drawing_, 0};
  TrackMouseEvent(&leaving);
  view_->OnMouseMove(ToPixel(lParam), HeldButtons(wParam), IsDown(VK_SPACE));
}

void MapWindow::SetMouseCursor() {
  SetCursor(IsDown(VK_SPACE) ? LoadCursorA(nullptr, IDC_SIZEALL)
            : IsDown('D')    ? LoadCursorA(nullptr, IDC_CROSS)
                             : context_.toolHost.Cursor());
}

// By a step of the grid, the way that the arrow points on the screen.
void MapWindow::Nudge(WPARAM key) {
  const ViewTransform& seen = view_->transform;
  const auto step = [](int grid, float scale, bool back) {
    return std::copysign(static_cast<float>(1 << grid), back ? -scale : scale);
  };
  Vec3 by;
  if (key == VK_LEFT || key == VK_RIGHT) {
    by[seen.orienu] = step(view_->gridu, seen.scaleu, key == VK_LEFT);
  } else {
    by[seen.orienv] = step(view_->gridv, seen.scalev, key == VK_UP);
  }
  for (int axis = 0; axis < 3; ++axis) {
    if ((view_->axismask >> axis & 1) == 0) by[axis] = 0;
  }
  context_.tools.Current()->Cancel();
  const ActionScope action(map_.Data(), "Move");
  Conclude(map_, MoveSelection(map_, by, context_.tools.HowToTransform()));
}

// Their textures, the way that the arrow points.
void MapWindow::NudgeFaces(WPARAM key, bool isRepeated) {
  const ViewTransform& seen = view_->transform;
  FaceNudge::Eye eye;
  eye.right[seen.orienu] = seen.scaleu < 0 ? -1 : 1;
  eye.up[seen.orienv] = seen.scalev < 0 ? 1 : -1;
  eye.texels = IsDown(VK_SHIFT) ? 1 : 1 << view_->gridu;
  const FaceKey meaning = key == VK_LEFT    ? FaceKey::Left
                          : key == VK_RIGHT ? FaceKey::Right
                          : key == VK_UP    ? FaceKey::Up
                                            : FaceKey::Down;
  nudge_.Press(map_, meaning, eye, isRepeated);
}

bool MapWindow::OnKeyDown(WPARAM key, bool isRepeated) {
  const bool isArrow = key >= VK_LEFT && key <= VK_DOWN;
  if (isArrow && IsDown(VK_CONTROL) && !map_.pickedFaces.empty()) {
    NudgeFaces(key, isRepeated);
    return true;
  }
  if (isArrow && IsDown(VK_CONTROL) && !map_.selection.empty()) {
    Nudge(key);
    return true;
  }
  switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
      view_->ScrollLines(false, key == VK_LEFT ? -1 : 1);
      return true;
    case VK_UP:
    case VK_DOWN:
      view_->ScrollLines(true, key == VK_UP ? -1 : 1);
      return true;
    case VK_PRIOR:
    case VK_NEXT:
      view_->ScrollPages(true, key == VK_PRIOR ? -1 : 1);
      return true;
    case VK_SPACE:
    case 'D':
      SetMouseCursor();
      return false;
  }
  return false;
}

// A key that is bound to an entity says nothing else to the view: its character goes with it.
bool MapWindow::InsertBound(WPARAM key, LPARAM lParam) {
  const bool repeated = (HIWORD(lParam) & KF_REPEAT) != 0;
  if (repeated || IsDown(VK_CONTROL) || IsDown(VK_MENU)) return false;
  if (!context_.commands.InsertBoundEntity(static_cast<unsigned>(key))) return false;
  MSG character;
  PeekMessageA(&character, drawing_, WM_CHAR, WM_CHAR, PM_REMOVE);
  return true;
}

}  // namespace ferrowand
