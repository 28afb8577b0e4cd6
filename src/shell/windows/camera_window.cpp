#include "shell/windows/camera_window.h"

#include "shell/dialogs/dialogs.h"
#include "shell/dialogs/popup_menus.h"
#include "shell/direct3d/d3d_surface.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/gl_surface.h"
#include "shell/windows/child_windows.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

constexpr unsigned FIRST_MODE = 1000;  // of the popup's items, in the order of the modes
constexpr unsigned MODES = 6;
constexpr unsigned TINT_ENTITIES = FIRST_MODE + MODES;

}  // namespace

LRESULT CALLBACK View3DWindowFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return ChildWindow::Dispatch(window, message, wParam, lParam);
}

CameraWindow::CameraWindow(ChildWindows& windows, const CameraWindowContext& context, Map& map,
                           CameraKind kind)
    : ChildWindow(windows),
      context_(context),
      map_(map),
      kind_(kind),
      faces_(context.tools.Host()) {
  const PixelSize room = frame_.ClientSize();
  Create(CAMERA_CLASS, "", {.width = room.width / 2, .height = room.height / 2},
         WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME |
             WS_MINIMIZEBOX | WS_MAXIMIZEBOX);
}

std::unique_ptr<CameraSurface> CameraWindow::MakeSurface() {
  if (kind_ == CameraKind::Direct3d) {
    return std::make_unique<D3dSurface>(Handle(), context_.direct3d);
  }
  return std::make_unique<GlSurface>(Handle(), context_.reporter);
}

void CameraWindow::OnCreate() {
  surface_ = MakeSurface();
  camera_ = std::make_unique<Camera>(map_, *this, context_.options,
                                     surface_->MakeRenderer(map_.Data().palette));
  windows_.Views().Add(*camera_);
  FollowJoystick();
}

// While there is a window to draw in: what is drawn with goes before it.
void CameraWindow::OnDestroy() {
  if (camera_) windows_.Views().Remove(*camera_);
  camera_.reset();
  surface_.reset();
}

void CameraWindow::StandAs(ChildWindow& other) {
  MoveOnto(other);
  camera_->SetMode(other.GetCamera()->Mode());
  camera_->SetPose(other.GetCamera()->Pose());
}

void CameraWindow::OfferModes() {
  const HMENU menu = context_.popups.Get(ID_POPUP_RENDER_MODE);
  CheckMenuRadioItem(menu, FIRST_MODE, FIRST_MODE + MODES - 1,
                     FIRST_MODE + static_cast<unsigned>(camera_->Mode()), MF_BYCOMMAND);
  CheckMenuItem(menu, TINT_ENTITIES, camera_->TintsEntities() ? MF_CHECKED : MF_UNCHECKED);
  const unsigned chosen = context_.dialogs.TrackAtCursor(Handle(), menu);
  if (chosen >= FIRST_MODE && chosen < FIRST_MODE + MODES) {
    camera_->SetMode(static_cast<RenderMode>(chosen - FIRST_MODE));
  } else if (chosen == TINT_ENTITIES) {
    camera_->SetTintsEntities(!camera_->TintsEntities());
  }
}

PixelSize CameraWindow::DrawingArea() const {
  RECT area{};
  GetClientRect(Handle(), &area);
  return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

void CameraWindow::Repaint() {
  InvalidateRect(Handle(), nullptr, FALSE);
}

void CameraWindow::SetCaption(const std::string& caption) {
  ShowTitle(caption);
}

void CameraWindow::OnPaint() {
  PAINTSTRUCT paint;
  BeginPaint(Handle(), &paint);
  camera_->Paint();
  surface_->Present();
  EndPaint(Handle(), &paint);
}

LRESULT CameraWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const bool isOfMouse = message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
  if (camera_ && (isOfMouse || message == WM_MDIACTIVATE || message == WM_KEYDOWN)) {
    camera_->Restore();
  }
  if (camera_ && OnNavigation(message, wParam, lParam)) return 0;
  if (camera_ && OnFaceMessage(message, wParam, lParam)) return 0;
  if (camera_ && OnMouse(message, wParam, lParam)) return 0;
  switch (message) {
    case WM_CREATE:
      OnCreate();
      break;
    case WM_DESTROY:
      OnDestroy();
      break;
    case WM_PAINT:
      if (!camera_ || !surface_->IsUsable() || IsIconic(Handle())) break;
      OnPaint();
      return 0;
    case WM_ERASEBKGND:
      if (!surface_ || !surface_->IsUsable()) break;
      return 1;
    case WM_SIZE:
      if (camera_) Repaint();
      break;  // the system's own child procedure must see it too
    case WM_QUERYNEWPALETTE:
    case WM_PALETTECHANGED:
      if (reinterpret_cast<HWND>(wParam) == Handle() || !surface_) break;
      if (surface_->RealisePalette()) Repaint();
      return 0;
  }
  return DefMDIChildProcA(Handle(), message, wParam, lParam);
}

}  // namespace ferrowand
