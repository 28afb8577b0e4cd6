// What the mouse does in a camera's window.
#include <windowsx.h>

#include <cstdlib>

#include "base/report.h"
#include "document/action.h"
#include "document/map.h"
#include "operations/transform_selection.h"
#include "shell/dialogs/refusal.h"
#include "shell/windows/camera_window.h"
#include "shell/windows/child_windows.h"
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

// That a press has become a drag.
bool IsFar(Pixel press, Pixel at) {
  return std::abs(at.x - press.x) > GetSystemMetrics(SM_CXDRAG) ||
         std::abs(at.y - press.y) > GetSystemMetrics(SM_CYDRAG);
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
      if (drag_ || boxCorner_) OnLeftMove(ToPixel(lParam));
      return true;
    case WM_LBUTTONUP:
      OnLeftRelease(ToPixel(lParam));
      return true;
    case WM_CAPTURECHANGED:
      if (reinterpret_cast<HWND>(lParam) != Handle()) EndDrag();
      return true;
    case WM_CHAR:
      if (!(drag_ || boxCorner_) || wParam != VK_ESCAPE) return false;
      ReleaseCapture();
      return true;
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP:
      return drag_.has_value() && wParam == VK_MENU;  // it lifts what is dragged, and no menu
    case WM_MOUSEWHEEL: {
      POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
      ScreenToClient(Handle(), &at);
      OnDepthWheel(GET_WHEEL_DELTA_WPARAM(wParam),
                   {static_cast<int>(at.x), static_cast<int>(at.y)});
      return true;
    }
    case WM_RBUTTONUP:
      OnRightRelease();
      return true;
  }
  return false;
}

void CameraWindow::OnLeftPress(Pixel at) {
  SetFocus(Handle());
  if (context_.tools.Current() == &context_.tools.primitiveTool) return BeginBox(at);
  // What is selected can be taken wherever it lies; a mere click is for what is nearest.
  clicks_ = camera_->PickSelected(at, LevelOf(context_.tools.Current())).object != nullptr;
  if (!clicks_) Click(at);
  BeginDrag(at);
}

void CameraWindow::Click(Pixel at) {
  camera_->Click(at, LevelOf(context_.tools.Current()), GetKeyState(VK_CONTROL) < 0);
}

void CameraWindow::BeginDrag(Pixel at) {
  const CameraHit hit = camera_->PickSelected(at, LevelOf(context_.tools.Current()));
  if (!hit.object) return;
  const Bounds box = SeenBounds(*hit.object);
  const DVec3 middle = (DVec3(box.mins) + DVec3(box.maxs)) * 0.5;
  drag_.emplace(hit.face >= 0 ? hit.point : middle);
  press_ = at;
  drags_ = false;
  SetCapture(Handle());
}

SpaceRules CameraWindow::Rules() const {
  const std::vector<MapView*> views = windows_.Views().ViewsOf(map_);
  return SpaceRulesOf(map_, views.empty() ? nullptr : views.front(), context_.tools.LimitedAxes(),
                      GetKeyState(VK_SHIFT) < 0);
}

Vec3 CameraWindow::DragTo(Pixel at) const {
  return drag_->WayTo(at, camera_->Picture(), GetKeyState(VK_MENU) < 0, Rules());
}

std::optional<Pixel> CameraWindow::PixelUnder(POINT screen) const {
  const HWND shown = WindowFromPoint(screen);
  if (!camera_ || (shown != Handle() && !IsChild(Handle(), shown))) return std::nullopt;
  ScreenToClient(Handle(), &screen);
  return Pixel{static_cast<int>(screen.x), static_cast<int>(screen.y)};
}

std::optional<FacePlace> CameraWindow::FaceUnder(POINT screen) {
  const auto at = PixelUnder(screen);
  return at ? camera_->PlaceAt(*at, Rules()) : std::nullopt;
}

CameraHit CameraWindow::HitUnder(POINT screen) {
  const auto at = PixelUnder(screen);
  return at ? camera_->Pick(*at) : CameraHit{};
}

void CameraWindow::BeginBox(Pixel at) {
  boxCorner_ = camera_->PlaceAt(at, Rules());
  if (!boxCorner_) return map_.ShowStatus("A new solid is drawn on a face");
  press_ = at;
  drags_ = false;
  SetCapture(Handle());
}

Bounds CameraWindow::BoxTo(Pixel at) const {
  return boxCorner_->BoxTo(at, camera_->Picture(), PrimitiveTool::DefaultDepth(Rules().grid));
}

void CameraWindow::OnLeftMove(Pixel at) {
  drags_ = drags_ || IsFar(press_, at);
  if (!drags_) return;
  if (boxCorner_) {
    const Bounds box = BoxTo(at);
    const Vec3 size = box.maxs - box.mins;
    camera_->ShowDraft(box);
    return map_.ShowStatus(Format("%s: %ix%ix%i", NameOf(context_.tools.primitiveTool.Kind()),
                                  RoundToInt(size.x), RoundToInt(size.y), RoundToInt(size.z)));
  }
  const Vec3 by = DragTo(at);
  camera_->ShowPreview(by);
  map_.ShowStatus(
      Format("Translating: (%i, %i, %i)", RoundToInt(by.x), RoundToInt(by.y), RoundToInt(by.z)));
}

void CameraWindow::OnLeftRelease(Pixel at) {
  if (drag_ && !drags_ && clicks_) Click(at);
  const std::optional<Bounds> box = boxCorner_ && drags_ ? std::optional(BoxTo(at)) : std::nullopt;
  const bool moves = drag_ && drags_ && !map_.selection.empty();
  const Vec3 by = moves ? DragTo(at) : Vec3(0, 0, 0);
  EndDrag();
  if (GetCapture() == Handle()) ReleaseCapture();
  if (box) context_.tools.primitiveTool.Create(map_, *box);
  if (by == Vec3(0, 0, 0)) return;
  const bool copies = GetKeyState(VK_CONTROL) < 0;
  const ActionScope action(map_.Data(), copies ? "Duplicate" : "Move");
  const TransformOptions how = context_.tools.HowToTransform();
  Conclude(map_, copies ? DuplicateSelection(map_, by, how) : MoveSelection(map_, by, how));
}

void CameraWindow::EndDrag() {
  drag_.reset();
  boxCorner_.reset();
  camera_->ShowPreview(std::nullopt);
  camera_->ShowDraft(std::nullopt);
}

void CameraWindow::OnDepthWheel(int turned, Pixel at) {
  wheelRest_ += turned;
  const int notches = wheelRest_ / WHEEL_DELTA;
  wheelRest_ -= notches * WHEEL_DELTA;
  for (int i = 0; i < std::abs(notches); ++i) {
    camera_->GoThrough(at, LevelOf(context_.tools.Current()), notches < 0);
  }
}

void CameraWindow::OnRightPress(Pixel at) {
  EndDrag();
  SetFocus(Handle());
  SetCapture(Handle());
  press_ = at;
  mouse_.Press(at);
  drags_ = false;
}

void CameraWindow::OnRightMove(Pixel at) {
  drags_ = drags_ || IsFar(press_, at);
  if (drags_) FollowMouse(at, BUTTON_RIGHT);
}

void CameraWindow::OnRightRelease() {
  if (GetCapture() != Handle()) return;
  ReleaseCapture();
  if (!drags_) OfferModes();
}

}  // namespace ferrowand
