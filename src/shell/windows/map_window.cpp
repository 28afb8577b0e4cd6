// The MDI child: its creation, its status bar and what the view asks of it.
#include "shell/windows/map_window.h"

#include <commctrl.h>

#include "base/command_table.h"
#include "base/report.h"
#include "shell/frame/command_target.h"
#include "shell/frame/frame.h"
#include "shell/resources/resource.h"
#include "shell/system/controls.h"
#include "shell/system/display_scale.h"
#include "shell/system/gdi_canvas.h"
#include "shell/system/wide_text.h"
#include "shell/windows/child_windows.h"
#include "views/tools/tool_set.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int STATUS_HEIGHT = 27, SMALL_STATUS_HEIGHT = 20;
constexpr int GAP = 2;
constexpr int CONTROL_HEIGHT = 16;
constexpr int COORDINATES_LEFT = 18, COORDINATES_WIDTH = 70;
constexpr int MESSAGE_LEFT = 90;
constexpr int ZOOM_WIDTH = 80;
constexpr int BUTTON_WIDTH = 8;
constexpr COLORREF REFUSAL_COLOUR = RGB(192, 0, 0);
constexpr UINT REFUSAL_TIME = 4000;  // milliseconds
constexpr UINT_PTR REFUSAL_TIMER = 1;

int ControlOf(ViewText which) {
  switch (which) {
    case ViewText::Message:
      return ID_MESSAGE_TEXT;
    case ViewText::Coordinates:
      return ID_COORDINATES_TEXT;
    case ViewText::ZoomAndGrid:
      return ID_ZOOM_TEXT;
  }
  return 0;
}

RECT ToRect(const PixelRect& r) {
  return {r.left, r.top, r.right, r.bottom};
}

void DrawDot(HDC dc, LONG left, LONG top) {
  const RECT dot{left, top, left + Scaled(1), top + Scaled(1)};
  FillRect(dc, &dot, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
}

void FillTriangle(HDC dc, POINT a, POINT b, POINT c) {
  const POINT corners[] = {a, b, c};
  SelectObject(dc, GetStockObject(BLACK_BRUSH));
  Polygon(dc, corners, 3);
}

}  // namespace

LRESULT CALLBACK ClientWindowFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return ChildWindow::Dispatch(window, message, wParam, lParam);
}

MapWindow::MapWindow(ChildWindows& windows, const MapWindowContext& context, Map& map,
                     Orientation orientation)
    : PanelWindow(windows), context_(context), map_(map) {
  // A quarter of the room: a view that begins larger begins zoomed in, to stay inside the world.
  const PixelSize room = frame_.ClientSize();
  Create(CLIENT_CLASS, "", {.width = room.width / 2, .height = room.height / 2},
         WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME |
             WS_MINIMIZEBOX | WS_MAXIMIZEBOX);
  if (view_) view_->SetOrientation(orientation);
}

void MapWindow::OptionsChanged() {
  ChildWindow::OptionsChanged();
  Layout();
  view_->rotationStep = context_.options.rotationStep;
}

MapWindow::~MapWindow() {
  if (Handle()) SetObject(drawing_, nullptr);
}

void MapWindow::OnCreate() {
  drawing_ = CreateWindowExA(
      WS_EX_CLIENTEDGE, MAP_CLASS, "",
      WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL, 0, 0, 0, 0, Handle(),
      reinterpret_cast<HMENU>(static_cast<INT_PTR>(ID_DRAWING)), frame_.Instance(), this);
  constexpr DWORD TEXT = WS_CLIPSIBLINGS | SS_LEFTNOWORDWRAP | SS_NOPREFIX;
  constexpr DWORD BUTTON = WS_CLIPSIBLINGS | BS_OWNERDRAW;
  AddControl(Handle(), L"BUTTON", L"Controls", BUTTON, ID_CONTROLS);
  AddControl(Handle(), L"STATIC", L"", TEXT, ID_COORDINATES_TEXT);
  AddControl(Handle(), L"STATIC", L"", TEXT, ID_MESSAGE_TEXT);
  AddControl(Handle(), L"STATIC", L"", TEXT, ID_ZOOM_TEXT);
  AddControl(Handle(), L"BUTTON", L"2D map mode", BUTTON, ID_MAP_MODE_BUTTON);
  AddControl(Handle(), L"BUTTON", L"Grid and snap", BUTTON, ID_GRID_SNAP_BUTTON);
  AddToolTips();
  SetText(ViewText::Message, "Ready");

  const HMENU menu = GetSystemMenu(Handle(), FALSE);
  AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
  AppendMenuA(menu, MF_STRING | MF_CHECKED, ID_CONTROLS, "Controls");

  view_ = std::make_unique<MapView>(map_, *this, windows_.Views(), context_.options,
                                    context_.tools.Current());
  Layout();
  view_->CentreOn({0, 0, 0});
}

void MapWindow::AddToolTips() const {
  const HWND tips = CreateWindowExA(0, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_ALWAYSTIP,
                                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                                    Handle(), nullptr, frame_.Instance(), nullptr);
  struct Tip {
    int id;
    const char* text;
  };
  constexpr Tip TIPS[] = {{ID_CONTROLS, "Hide the controls (the window's menu brings them back)"},
                          {ID_MAP_MODE_BUTTON, "2D Map Mode"},
                          {ID_GRID_SNAP_BUTTON, "Grid and snap (g)"}};
  for (const Tip& tip : TIPS) {
    TOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V1_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = Handle();
    tool.uId = reinterpret_cast<UINT_PTR>(GetDlgItem(Handle(), tip.id));
    tool.lpszText = const_cast<char*>(tip.text);
    SendMessageA(tips, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
  }
}

void MapWindow::Layout() const {
  RECT area;
  GetClientRect(Handle(), &area);
  const int width = area.right;
  const int status = Scaled(context_.options.smallCaptions ? SMALL_STATUS_HEIGHT : STATUS_HEIGHT);
  const int gap = Scaled(GAP), height = Scaled(CONTROL_HEIGHT), button = Scaled(BUTTON_WIDTH);
  const int drawingHeight = controlsShown_ ? area.bottom - status - gap : area.bottom;
  PlaceControl(Handle(), ID_DRAWING, 0, 0, width, drawingHeight);

  const int top = area.bottom - status + (status - height) / 2;
  const int zoomLeft = width - 2 * button - gap - Scaled(ZOOM_WIDTH);
  const int messageLeft = Scaled(MESSAGE_LEFT);
  const auto place = [&](int id, int left, int controlWidth) {
    PlaceControl(Handle(), id, left, top, controlWidth, height);
    ShowWindow(GetDlgItem(Handle(), id), controlsShown_ ? SW_SHOWNA : SW_HIDE);
  };
  place(ID_CONTROLS, 0, height);
  place(ID_COORDINATES_TEXT, Scaled(COORDINATES_LEFT), Scaled(COORDINATES_WIDTH));
  place(ID_MESSAGE_TEXT, messageLeft, zoomLeft - gap - messageLeft);
  place(ID_ZOOM_TEXT, zoomLeft, Scaled(ZOOM_WIDTH));
  place(ID_MAP_MODE_BUTTON, width - 2 * button, button);
  place(ID_GRID_SNAP_BUTTON, width - button, button);
}

void MapWindow::ToggleControls() {
  controlsShown_ = !controlsShown_;
  ShowScrollBar(drawing_, SB_BOTH, controlsShown_);
  CheckMenuItem(GetSystemMenu(Handle(), FALSE), ID_CONTROLS,
                MF_BYCOMMAND | (controlsShown_ ? MF_CHECKED : MF_UNCHECKED));
  Layout();
  SetFocus(drawing_);
}

void MapWindow::OnCommand(int id, int notification) {
  if (notification != BN_CLICKED) return;
  switch (id) {
    case ID_CONTROLS:
      return ToggleControls();
    case ID_GRID_SNAP_BUTTON:
      view_->ToggleGridAndSnap();
      break;
    case ID_MAP_MODE_BUTTON:
      context_.commands.Execute(Id(Command::ToolMapMode));
      break;
  }
  SetFocus(drawing_);
}

void MapWindow::OnDrawButton(const DRAWITEMSTRUCT& item) {
  RECT face = item.rcItem;
  const UINT pushed = item.itemState & ODS_SELECTED ? DFCS_PUSHED : 0;
  DrawFrameControl(item.hDC, &face, DFC_BUTTON, DFCS_BUTTONPUSH | pushed);
  const LONG x = (face.left + face.right) / 2, y = (face.top + face.bottom) / 2;
  const LONG dot = Scaled(2);
  const int saved = SaveDC(item.hDC);
  switch (item.CtlID) {
    case ID_CONTROLS:  // down and out of the way
      FillTriangle(item.hDC, {x - 2 * dot, y - dot}, {x + 2 * dot - 1, y - dot}, {x, y + dot});
      break;
    case ID_MAP_MODE_BUTTON:  // a list drops down
      FillTriangle(item.hDC, {x - dot, y - dot / 2}, {x + dot, y - dot / 2}, {x, y + dot / 2});
      break;
    case ID_GRID_SNAP_BUTTON:
      for (const LONG dy : {-3, 0, 3}) {
        for (const LONG dx : {-2, 1}) DrawDot(item.hDC, x + Scaled(dx), y + Scaled(dy));
      }
      break;
  }
  RestoreDC(item.hDC, saved);
}

LRESULT MapWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SYSCOMMAND:
      if ((wParam & 0xFFF0) != ID_CONTROLS) break;
      ToggleControls();
      return 0;
    case WM_DRAWITEM:
      OnDrawButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
      return TRUE;
    case WM_CTLCOLORSTATIC:
      if (refusing_ && reinterpret_cast<HWND>(lParam) == GetDlgItem(Handle(), ID_MESSAGE_TEXT)) {
        SetTextColor(reinterpret_cast<HDC>(wParam), REFUSAL_COLOUR);
      }
      break;
    case WM_MDIACTIVATE:
      if (reinterpret_cast<HWND>(lParam) == Handle()) {
        view_->OnActivate();
        SetFocus(drawing_);
      }
      break;
    case WM_DESTROY:
      context_.tools.Current()->Cancel();
      break;
  }
  return PanelWindow::OnMessage(message, wParam, lParam);
}

PixelSize MapWindow::DrawingArea() const {
  RECT area{};
  GetClientRect(drawing_, &area);
  return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

void MapWindow::Invalidate() {
  InvalidateRect(drawing_, nullptr, FALSE);
}

void MapWindow::Invalidate(const PixelRect& part) {
  const RECT area = ToRect(part);
  InvalidateRect(drawing_, &area, FALSE);
}

void MapWindow::ScrollPicture(Pixel by, std::span<const PixelRect> anew) {
  // What still waits to be painted would be painted at its old place.
  if (GetUpdateRect(drawing_, nullptr, FALSE)) return Invalidate();
  ScrollWindowEx(drawing_, by.x, by.y, nullptr, nullptr, nullptr, nullptr, SW_INVALIDATE);
  UpdateWindow(drawing_);
  // One after the other: a paint takes the box around all that is invalid.
  for (const PixelRect& part : anew) {
    Invalidate(part);
    UpdateWindow(drawing_);
  }
}

void MapWindow::SetScrollBars(const ScrollBar& horizontal, const ScrollBar& vertical) {
  if (!controlsShown_) return;
  const auto set = [this](int bar, const ScrollBar& values) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    info.nMax = values.range;
    info.nPage = static_cast<UINT>(values.page);
    info.nPos = values.position;
    SetScrollInfo(drawing_, bar, &info, TRUE);
  };
  set(SB_HORZ, horizontal);
  set(SB_VERT, vertical);
}

void MapWindow::SetText(ViewText which, const std::string& text) {
  std::string& shown = texts_[static_cast<std::size_t>(which)];
  if (shown == text) return;
  shown = text;
  if (refusing_ && which == ViewText::Message) return;
  SetDlgItemTextA(Handle(), ControlOf(which), AsUtf8(text).c_str());
}

void MapWindow::Refuse(const std::string& why) {
  MessageBeep(MB_ICONWARNING);
  if (!controlsShown_) {
    context_.reporter.Show("Cannot continue", why);
    return;
  }
  refusing_ = true;
  SetDlgItemTextA(Handle(), ID_MESSAGE_TEXT, why.c_str());
  SetTimer(Handle(), REFUSAL_TIMER, REFUSAL_TIME, nullptr);
}

void MapWindow::EndRefusal() {
  if (!refusing_) return;
  refusing_ = false;
  KillTimer(Handle(), REFUSAL_TIMER);
  const std::string& message = texts_[static_cast<std::size_t>(ViewText::Message)];
  SetDlgItemTextA(Handle(), ID_MESSAGE_TEXT, message.c_str());
}

void MapWindow::StandAs(ChildWindow& other) {
  MoveOnto(other);
  const MapView& shown = *other.View();
  view_->transform = shown.transform;
  view_->gridu = shown.gridu;
  view_->gridv = shown.gridv;
  view_->SetMapMode(shown.mapmode);
  view_->Refresh();
}

void MapWindow::SetCaption(const std::string& caption) {
  ShowTitle(caption);
}

PixelSize MapWindow::MeasureLabel(std::string_view text) {
  const HDC dc = GetDC(drawing_);
  const PixelSize size = GdiCanvas(dc, context_.objects).MeasureText(FontFace::Label, text);
  ReleaseDC(drawing_, dc);
  return size;
}

PixelRect MapWindow::Frame() const {
  return FrameAround(drawing_);
}

void MapWindow::CaptureMouse(bool on) {
  if (context_.tools.Current()->IsDragging()) return;
  if (on) {
    SetCapture(drawing_);
  } else if (GetCapture() == drawing_) {
    ReleaseCapture();
  }
}

void MapWindow::MoveCursor(Pixel to) {
  POINT at{to.x, to.y};
  ClientToScreen(drawing_, &at);
  SetCursorPos(at.x, at.y);
}

}  // namespace ferrowand
