#include "shell/windows/angle_panel.h"

#include <commctrl.h>
#include <windowsx.h>

#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include "base/number_text.h"
#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/handles.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int BUTTON = 24, DIAL = 44, GAP = 6, SIDE = 52, ROW = 22, LABEL = 15;
constexpr int AROUND = 2 * BUTTON + DIAL;

constexpr int DIRECTIONS = 8, STEP = 45;
constexpr int DIAL_STEP = 15;  // degrees that the mouse turns by, unless Ctrl is held

double Radians(int degrees) {
  return degrees * std::numbers::pi / 180;
}

}  // namespace

AnglePanel::AnglePanel(HWND parent, std::function<void(const std::string&)> choose)
    : parent_(parent), choose_(std::move(choose)) {
  AddControl(parent, L"STATIC", L"Ang&le:", 0, ID_ANGLE_LABEL);
  AddControl(parent, L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, ID_ANGLE_TEXT, WS_EX_CLIENTEDGE);
  AddControl(parent, L"BUTTON", L"&Up", WS_TABSTOP, ID_ANGLE_UP);
  AddControl(parent, L"BUTTON", L"Do&wn", WS_TABSTOP, ID_ANGLE_DOWN);
  for (int i = 0; i < DIRECTIONS; ++i) {
    AddControl(parent, L"BUTTON", std::to_wstring(i * STEP).c_str(),
               i == 0 ? WS_TABSTOP | WS_GROUP : 0, ID_ANGLE_DIRECTION + i);
  }
  const HWND dial =
      AddControl(parent, L"STATIC", L"Angle", SS_OWNERDRAW | SS_NOTIFY | WS_GROUP, ID_ANGLE_DIAL);
  SetWindowSubclass(dial, DialFunc, 0, reinterpret_cast<DWORD_PTR>(this));
}

void AnglePanel::Show(const std::optional<std::string>& angle) {
  shown_ = angle.value_or("");
  angle_.reset();
  if (!shown_.empty()) angle_ = ParseInt(shown_);
  SetDlgItemTextW(parent_, ID_ANGLE_TEXT, ToWide(shown_).c_str());
  InvalidateRect(GetDlgItem(parent_, ID_ANGLE_DIAL), nullptr, TRUE);
}

void AnglePanel::SetVisible(bool visible) const {
  for (int id = ID_ANGLE_LABEL; id < ID_ANGLE_DIRECTION + DIRECTIONS; ++id) {
    ShowWindow(GetDlgItem(parent_, id), visible ? SW_SHOWNA : SW_HIDE);
  }
}

SIZE AnglePanel::Size() {
  return {Scaled(AROUND + GAP + SIDE), Scaled(AROUND)};
}

void AnglePanel::Place(int left, int top) const {
  const auto place = [&](int id, int x, int y, int width, int height) {
    MoveWindow(GetDlgItem(parent_, id), left + Scaled(x), top + Scaled(y), Scaled(width),
               Scaled(height), TRUE);
  };
  constexpr int MIDDLE = (AROUND - BUTTON) / 2, FAR_END = AROUND - BUTTON;
  constexpr std::array<POINT, DIRECTIONS> PLACES{{{FAR_END, MIDDLE},
                                                  {FAR_END, 0},
                                                  {MIDDLE, 0},
                                                  {0, 0},
                                                  {0, MIDDLE},
                                                  {0, FAR_END},
                                                  {MIDDLE, FAR_END},
                                                  {FAR_END, FAR_END}}};
  for (int i = 0; i < DIRECTIONS; ++i) {
    const POINT& at = PLACES[static_cast<std::size_t>(i)];
    place(ID_ANGLE_DIRECTION + i, at.x, at.y, BUTTON, BUTTON);
  }
  place(ID_ANGLE_DIAL, BUTTON, BUTTON, DIAL, DIAL);
  constexpr int BESIDE = AROUND + GAP;
  place(ID_ANGLE_LABEL, BESIDE, 0, SIDE, LABEL);
  place(ID_ANGLE_TEXT, BESIDE, LABEL, SIDE, ROW);
  place(ID_ANGLE_UP, BESIDE, LABEL + ROW + GAP, SIDE, ROW);
  place(ID_ANGLE_DOWN, BESIDE, LABEL + 2 * ROW + GAP + 2, SIDE, ROW);
}

bool AnglePanel::OnCommand(int id) {
  if (id == ID_ANGLE_UP || id == ID_ANGLE_DOWN) {
    choose_(std::to_string(id == ID_ANGLE_UP ? ANGLE_UP : ANGLE_DOWN));
    return true;
  }
  if (id < ID_ANGLE_DIRECTION || id >= ID_ANGLE_DIRECTION + DIRECTIONS) return false;
  choose_(std::to_string((id - ID_ANGLE_DIRECTION) * STEP));
  return true;
}

std::string AnglePanel::Typed() const {
  return FromWide(WindowText(GetDlgItem(parent_, ID_ANGLE_TEXT)));
}

bool AnglePanel::IsTyped() const {
  return Typed() != shown_;
}

bool AnglePanel::Commit() {
  if (!IsTyped()) return false;
  shown_ = Typed();
  choose_(shown_);
  return true;
}

void AnglePanel::Drop() {
  SetDlgItemTextW(parent_, ID_ANGLE_TEXT, ToWide(shown_).c_str());
}

// A needle, or a point in the middle for up and a cross for down.
void AnglePanel::Draw(const DRAWITEMSTRUCT& draw) const {
  const HDC dc = draw.hDC;
  const RECT& area = draw.rcItem;
  FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH)));
  const int x = (area.left + area.right) / 2, y = (area.top + area.bottom) / 2;
  const int radius = (area.right - area.left) / 2 - 3;
  const OwnedPen pen(CreatePen(PS_SOLID, Scaled(2), GetSysColor(COLOR_WINDOWTEXT)));
  const HGDIOBJ before = SelectObject(dc, pen.get());
  SelectObject(dc, GetSysColorBrush(COLOR_WINDOW));
  Ellipse(dc, x - radius, y - radius, x + radius + 1, y + radius + 1);
  const auto line = [&](int fromX, int fromY, int toX, int toY) {
    MoveToEx(dc, fromX, fromY, nullptr);
    LineTo(dc, toX, toY);
  };
  const int small = radius / 3;
  if (angle_ == ANGLE_UP) {
    SelectObject(dc, GetSysColorBrush(COLOR_WINDOWTEXT));
    Ellipse(dc, x - small, y - small, x + small + 1, y + small + 1);
  } else if (angle_ == ANGLE_DOWN) {
    line(x - small, y - small, x + small + 1, y + small + 1);
    line(x - small, y + small, x + small + 1, y - small - 1);
  } else if (angle_) {
    const double turn = Radians(*angle_);
    line(x, y, x + static_cast<int>(std::lround(radius * std::cos(turn))),
         y - static_cast<int>(std::lround(radius * std::sin(turn))));
  }
  SelectObject(dc, before);
}

void AnglePanel::Turn(LPARAM to, bool exactly) {
  RECT area;
  GetClientRect(GetDlgItem(parent_, ID_ANGLE_DIAL), &area);
  const double across = GET_X_LPARAM(to) - area.right / 2.0;
  const double down = GET_Y_LPARAM(to) - area.bottom / 2.0;
  const int degrees =
      static_cast<int>(std::lround(std::atan2(-down, across) * 180 / std::numbers::pi));
  const int step = exactly ? 1 : DIAL_STEP;
  const int turned = static_cast<int>(std::lround(static_cast<double>(degrees) / step)) * step;
  angle_ = (turned + 360) % 360;
  InvalidateRect(GetDlgItem(parent_, ID_ANGLE_DIAL), nullptr, FALSE);
}

LRESULT CALLBACK AnglePanel::DialFunc(HWND dial, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR, DWORD_PTR data) {
  auto& panel = *reinterpret_cast<AnglePanel*>(data);
  const bool exactly = (wParam & MK_CONTROL) != 0;
  switch (message) {
    case WM_LBUTTONDOWN:
      SetCapture(dial);
      panel.isTurning_ = true;
      panel.Turn(lParam, exactly);
      return 0;
    case WM_MOUSEMOVE:
      if (panel.isTurning_) panel.Turn(lParam, exactly);
      return 0;
    case WM_LBUTTONUP:
      if (!panel.isTurning_) break;
      panel.isTurning_ = false;
      ReleaseCapture();
      panel.choose_(std::to_string(*panel.angle_));
      return 0;
    case WM_CAPTURECHANGED:
      if (!std::exchange(panel.isTurning_, false)) break;
      panel.Show(panel.shown_.empty() ? std::optional<std::string>() : panel.shown_);
      break;
    case WM_NCDESTROY:
      RemoveWindowSubclass(dial, DialFunc, 0);
      break;
    default:
      break;
  }
  return DefSubclassProc(dial, message, wParam, lParam);
}

}  // namespace ferrowand
