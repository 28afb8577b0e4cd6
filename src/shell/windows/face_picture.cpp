#include "shell/windows/face_picture.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "shell/system/display_scale.h"
#include "shell/system/handles.h"
#include "views/map_marks.h"

namespace ferrowand {
namespace {

constexpr int SNAP_REACH = 5, CORNER_REACH = 6, HELD_REACH = 3;  // pixels

Pixel ToPixel(LPARAM lParam) {
  return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

COLORREF ToColorRef(Colour colour) {
  return RGB(colour.red, colour.green, colour.blue);
}

void DrawPixels(HDC dc, const std::vector<std::uint32_t>& pixels, const PixelSize& area) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = area.width;
  info.bmiHeader.biHeight = -area.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  const auto rows = static_cast<UINT>(area.height);
  SetDIBitsToDevice(dc, 0, 0, static_cast<DWORD>(area.width), rows, 0, 0, 0, rows, pixels.data(),
                    &info, DIB_RGB_COLORS);
}

void DrawOutline(HDC dc, const std::vector<Pixel>& outline, COLORREF colour, int width) {
  const OwnedPen pen(CreatePen(PS_SOLID, width, colour));
  const HGDIOBJ before = SelectObject(dc, pen.get());
  MoveToEx(dc, outline.back().x, outline.back().y, nullptr);
  for (const Pixel& p : outline) LineTo(dc, p.x, p.y);
  SelectObject(dc, before);
}

}  // namespace

FacePicture::FacePicture(HWND control, Answers answers)
    : control_(control), answers_(std::move(answers)) {
  SetWindowSubclass(control_, Func, 0, reinterpret_cast<DWORD_PTR>(this));
}

FacePicture::~FacePicture() {
  RemoveWindowSubclass(control_, Func, 0);
}

void FacePicture::Repaint() const {
  InvalidateRect(control_, nullptr, FALSE);
}

PixelSize FacePicture::Area() const {
  RECT area{};
  GetClientRect(control_, &area);
  return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

// Each outline is drawn dark and wide below itself, to be seen on every texture.
void FacePicture::Draw(const DRAWITEMSTRUCT& draw) const {
  const std::vector<PickedFace> faces = answers_.faces();
  const FaceSheet sheet(faces, Area());
  if (sheet.IsEmpty()) {
    FillRect(draw.hDC, &draw.rcItem, GetSysColorBrush(COLOR_BTNFACE));
  } else {
    DrawPixels(draw.hDC, sheet.Pixels(), Area());
  }
  const auto& outlines = sheet.Outlines();
  for (auto outline = outlines.rbegin(); outline != outlines.rend(); ++outline) {
    DrawOutline(draw.hDC, *outline, RGB(0, 0, 0), Scaled(4));
    const bool isFirst = outline + 1 == outlines.rend();
    DrawOutline(draw.hDC, *outline, isFirst ? ToColorRef(PICKED_FACE_COLOUR) : RGB(200, 200, 200),
                Scaled(2));
  }
  if (sheet.IsEmpty() || faces.front().held < 0) return;
  const auto held = static_cast<std::size_t>(faces.front().held);
  if (held >= outlines.front().size()) return;
  const Pixel p = outlines.front()[held];
  const int reach = Scaled(HELD_REACH);
  const RECT square{p.x - reach, p.y - reach, p.x + reach + 1, p.y + reach + 1};
  const OwnedBrush brush(CreateSolidBrush(ToColorRef(PICKED_FACE_COLOUR)));
  FillRect(draw.hDC, &square, brush.get());
}

void FacePicture::OnMove(Pixel at, bool freely) {
  isDragged_ = isDragged_ || std::abs(at.x - press_.x) > GetSystemMetrics(SM_CXDRAG) ||
               std::abs(at.y - press_.y) > GetSystemMetrics(SM_CYDRAG);
  if (!isDragged_) return;
  answers_.drag(pressed_->OffsetsOf(press_, at, freely ? 0 : Scaled(SNAP_REACH)));
}

void FacePicture::OnRelease(Pixel at) {
  const std::optional<FaceSheet> pressed = std::exchange(pressed_, std::nullopt);
  if (isDragged_) return answers_.end(false);
  answers_.hold(pressed->CornerAt(at, Scaled(CORNER_REACH)));
}

bool FacePicture::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_LBUTTONDOWN:
      pressed_.emplace(answers_.faces(), Area());
      if (pressed_->IsEmpty()) pressed_.reset();
      if (!pressed_) return true;
      SetCapture(control_);
      press_ = ToPixel(lParam);
      isDragged_ = false;
      return true;
    case WM_MOUSEMOVE:
      if (pressed_) OnMove(ToPixel(lParam), (wParam & MK_SHIFT) != 0);
      return pressed_.has_value();
    case WM_LBUTTONUP:
      if (!pressed_) return false;
      OnRelease(ToPixel(lParam));
      ReleaseCapture();
      return true;
    case WM_CAPTURECHANGED:
      if (pressed_ && isDragged_) answers_.end(true);
      pressed_.reset();
      return false;
    default:
      return false;
  }
}

LRESULT CALLBACK FacePicture::Func(HWND control, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR, DWORD_PTR picture) {
  if (reinterpret_cast<FacePicture*>(picture)->OnMessage(message, wParam, lParam)) return 0;
  return DefSubclassProc(control, message, wParam, lParam);
}

}  // namespace ferrowand
