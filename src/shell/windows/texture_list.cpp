#include "shell/windows/texture_list.h"

#include <windowsx.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "base/report.h"
#include "operations/texture_use.h"
#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

// Pixels at the usual size of letters.
constexpr int GAP = 6, CAPTION = 15, HEADING = 18, LEAST_WIDTH = 64, FRAME = 3, STAR = 9;
constexpr PixelSize MISSING_SIZE{64, 64};
constexpr int WHEEL_STEP = 72;
constexpr UINT HOVER_TIME = 400;  // milliseconds

constexpr COLORREF WALL = RGB(48, 48, 48), HEADING_BACK = RGB(72, 72, 72),
                   HEADING_TEXT = RGB(255, 255, 255), USED_TEXT = RGB(255, 255, 255),
                   UNUSED_TEXT = RGB(170, 170, 170), MISSING_TEXT = RGB(255, 150, 150),
                   CHOSEN_IDLE = RGB(120, 120, 120), STAR_FILL = RGB(255, 210, 40);

void Fill(HDC dc, const RECT& place, COLORREF colour) {
  SetBkColor(dc, colour);
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &place, L"", 0, nullptr);
}

RECT ToRect(const PixelRect& place, int top) {
  return {place.left, place.top - top, place.right, place.bottom - top};
}

void DrawStar(HDC dc, LONG right, LONG top) {
  // Of ten corners, on a square of 18 units.
  constexpr std::array<POINT, 10> CORNERS{
      {{9, 0}, {11, 6}, {18, 7}, {13, 11}, {15, 18}, {9, 14}, {3, 18}, {5, 11}, {0, 7}, {7, 6}}};
  const int side = Scaled(STAR) * 2;
  std::array<POINT, CORNERS.size()> points = CORNERS;
  for (POINT& p : points) p = {right - side + p.x * side / 18, top + p.y * side / 18};
  const OwnedBrush fill(CreateSolidBrush(STAR_FILL));
  const HGDIOBJ brush = SelectObject(dc, fill.get());
  const HGDIOBJ pen = SelectObject(dc, GetStockObject(BLACK_PEN));
  Polygon(dc, points.data(), static_cast<int>(points.size()));
  SelectObject(dc, pen);
  SelectObject(dc, brush);
}

std::optional<WallStep> StepOf(WPARAM key) {
  switch (key) {
    case VK_LEFT:
      return WallStep::Left;
    case VK_RIGHT:
      return WallStep::Right;
    case VK_UP:
      return WallStep::Up;
    case VK_DOWN:
      return WallStep::Down;
    case VK_PRIOR:
      return WallStep::PageUp;
    case VK_NEXT:
      return WallStep::PageDown;
    case VK_HOME:
      return WallStep::First;
    case VK_END:
      return WallStep::Last;
    default:
      return std::nullopt;
  }
}

}  // namespace

LRESULT CALLBACK TextureListFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    auto* list =
        static_cast<TextureList*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
    list->window_ = window;
    SetObject(window, list);
  }
  auto* list = ObjectOf<TextureList>(window);
  return list ? list->OnMessage(message, wParam, lParam)
              : DefWindowProcA(window, message, wParam, lParam);
}

TextureList::TextureList(HWND parent, int id, const TextureWall& wall, const Palette& palette,
                         TextureListHost& host)
    : wall_(wall), palette_(palette), host_(host) {
  CreateWindowExA(WS_EX_CLIENTEDGE, TEXTURE_LIST_CLASS, "Textures",
                  WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL, 0, 0, 0, 0, parent,
                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr),
                  this);
  tip_ = std::make_unique<TextureTip>(window_, palette);
}

TextureList::~TextureList() {
  if (window_) SetObject(window_, nullptr);
}

// --- what stands where

PixelSize TextureList::Area() const {
  RECT area;
  GetClientRect(window_, &area);
  return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

void TextureList::PlaceAll() {
  layout_ = WallLayout(wall_, Area().width,
                       {.zoom = look_.zoom,
                        .gap = Scaled(GAP),
                        .caption = look_.hasNames ? Scaled(CAPTION) : 0,
                        .heading = Scaled(HEADING),
                        .leastWidth = look_.hasNames ? Scaled(LEAST_WIDTH) : 1,
                        .missing = MISSING_SIZE});
  top_ = std::clamp(top_, 0, std::max(layout_.Height() - Area().height, 0));
  ShowScroll();
  DrawAnew();
}

void TextureList::Refresh(const Look& look) {
  tip_->Hide();
  // The chosen one, if it is seen, stays at its height.
  const bool isOther = look != look_;
  const bool keeps = isOther && chosen_ < wall_.items.size();
  const int before = keeps ? layout_.Cell(chosen_).top - top_ : 0;
  look_ = look;
  PlaceAll();
  if (!keeps || before < 0 || before >= Area().height) return;
  ScrollTo(layout_.Cell(chosen_).top - before);
}

void TextureList::DrawAnew() {
  isDrawn_ = false;
  InvalidateRect(window_, nullptr, FALSE);
}

void TextureList::ShowScroll() const {
  SCROLLINFO scroll{};
  scroll.cbSize = sizeof scroll;
  scroll.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
  scroll.nMax = std::max(layout_.Height() - 1, 0);
  scroll.nPage = static_cast<UINT>(std::max(Area().height, 0));
  scroll.nPos = top_;
  SetScrollInfo(window_, SB_VERT, &scroll, TRUE);
}

void TextureList::ScrollTo(int top) {
  top = std::clamp(top, 0, std::max(layout_.Height() - Area().height, 0));
  if (top == top_) return;
  tip_->Hide();
  top_ = top;
  ShowScroll();
  InvalidateRect(window_, nullptr, FALSE);
}

void TextureList::OnScroll(int code) {
  SCROLLINFO scroll{};
  scroll.cbSize = sizeof scroll;
  scroll.fMask = SIF_TRACKPOS;
  GetScrollInfo(window_, SB_VERT, &scroll);
  const int line = Scaled(WHEEL_STEP) / 2, page = std::max(Area().height - line, line);
  switch (code) {
    case SB_LINEUP:
      return ScrollTo(top_ - line);
    case SB_LINEDOWN:
      return ScrollTo(top_ + line);
    case SB_PAGEUP:
      return ScrollTo(top_ - page);
    case SB_PAGEDOWN:
      return ScrollTo(top_ + page);
    case SB_TOP:
      return ScrollTo(0);
    case SB_BOTTOM:
      return ScrollTo(layout_.Height());
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      return ScrollTo(scroll.nTrackPos);
  }
}

void TextureList::OnWheel(int turned, bool zooms) {
  if (!zooms) return ScrollTo(top_ - turned * Scaled(WHEEL_STEP) / WHEEL_DELTA);
  wheelRest_ += turned;
  const int notches = wheelRest_ / WHEEL_DELTA;
  wheelRest_ -= notches * WHEEL_DELTA;
  if (notches != 0) host_.Zoom(notches);
}

void TextureList::Reveal(std::size_t item) {
  const PixelRect& cell = layout_.Cell(item);
  const int gap = Scaled(GAP), height = Area().height;
  if (cell.top - gap < top_ || cell.Height() + 2 * gap > height) return ScrollTo(cell.top - gap);
  if (cell.bottom + gap > top_ + height) ScrollTo(cell.bottom + gap - height);
}

void TextureList::SetChosen(std::size_t item, bool reveal) {
  if (item >= wall_.items.size()) item = NONE;
  const std::size_t before = std::exchange(chosen_, item);
  if (before != item) {
    RedrawItem(before);
    RedrawItem(item);
  }
  if (item != NONE && reveal) Reveal(item);
}

void TextureList::Move(WallStep step) {
  if (wall_.items.empty()) return;
  host_.Choose(layout_.Beside(chosen_, step, Area().height));
}

// --- drawing

void TextureList::OnPaint() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(window_, &paint);
  Draw(dc);
  const RECT& part = paint.rcPaint;
  BitBlt(dc, part.left, part.top, part.right - part.left, part.bottom - part.top, buffer_.Dc(),
         part.left, part.top, SRCCOPY);
  EndPaint(window_, &paint);
}

// What has been drawn goes along when the wall scrolls: only what comes into sight is drawn.
void TextureList::Draw(HDC screen) {
  const PixelSize area = Area();
  if (!buffer_.Prepare(screen, area)) return;
  const int by = top_ - drawnTop_;
  if (!isDrawn_ || std::abs(by) >= area.height) {
    DrawStripe(0, area.height);
  } else if (by != 0) {
    BitBlt(buffer_.Dc(), 0, -by, area.width, area.height, buffer_.Dc(), 0, 0, SRCCOPY);
    DrawStripe(by > 0 ? area.height - by : 0, by > 0 ? area.height : -by);
  }
  isDrawn_ = true;
  drawnTop_ = top_;
}

void TextureList::DrawStripe(int top, int bottom) const {
  const HDC dc = buffer_.Dc();
  const int saved = SaveDC(dc);
  const RECT stripe{0, top, Area().width, bottom};
  SelectClipRgn(dc, nullptr);
  IntersectClipRect(dc, stripe.left, stripe.top, stripe.right, stripe.bottom);
  SelectObject(dc, InterfaceFont());
  Fill(dc, stripe, WALL);
  SetBkMode(dc, TRANSPARENT);
  for (std::size_t group = 0; group < wall_.groups.size(); ++group) {
    RECT place = ToRect(layout_.Heading(group), top_);
    if (place.bottom <= top || place.top >= bottom) continue;
    Fill(dc, place, HEADING_BACK);
    SetTextColor(dc, HEADING_TEXT);
    place.left += Scaled(GAP);
    const std::wstring title = ToWide(wall_.groups[group].title);
    DrawTextW(dc, title.c_str(), -1, &place,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  }
  const auto [begin, end] = layout_.Within(top + top_, bottom + top_);
  for (std::size_t item = begin; item < end; ++item) DrawItem(dc, item);
  RestoreDC(dc, saved);
}

void TextureList::DrawItem(HDC dc, std::size_t index) const {
  const WallItem& item = wall_.items[index];
  const RECT cell = ToRect(layout_.Cell(index), top_);
  const RECT picture = ToRect(layout_.Picture(index), top_);
  if (index == chosen_) {
    RECT frame = cell;
    InflateRect(&frame, Scaled(FRAME), Scaled(FRAME));
    Fill(dc, frame, GetFocus() == window_ ? GetSysColor(COLOR_HIGHLIGHT) : CHOSEN_IDLE);
  }
  DrawTexture(dc, picture, item.texture, palette_);
  if (item.isFavourite) DrawStar(dc, picture.right, picture.top);
  if (!look_.hasNames) return;
  SetTextColor(dc, !item.texture                        ? MISSING_TEXT
                   : item.faces > 0 || index == chosen_ ? USED_TEXT
                                                        : UNUSED_TEXT);
  DrawCaption(dc, item, {cell.left, picture.bottom, cell.right, cell.bottom});
}

void TextureList::DrawCaption(HDC dc, const WallItem& item, RECT place) const {
  std::string text = ShownTextureName(item.name);
  if (item.frames.size() > 1) {
    text += Format(" (%u)", static_cast<unsigned>(item.frames.size()));
  }
  DrawTextW(dc, ToWide(text).c_str(), -1, &place,
            DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

// If it is in the buffer.
void TextureList::RedrawItem(std::size_t item) const {
  if (item >= wall_.items.size() || !isDrawn_ || drawnTop_ != top_) {
    InvalidateRect(window_, nullptr, FALSE);
    return;
  }
  RECT place = ToRect(layout_.Cell(item), top_);
  InflateRect(&place, Scaled(FRAME), Scaled(FRAME));
  DrawStripe(static_cast<int>(std::max(place.top, LONG{0})),
             std::min(static_cast<int>(place.bottom), Area().height));
  InvalidateRect(window_, &place, FALSE);
}

// --- the mouse

std::optional<std::size_t> TextureList::ItemAt(Pixel at) const {
  return layout_.At({at.x, at.y + top_});
}

POINT TextureList::ToScreen(Pixel at) const {
  POINT screen{at.x, at.y};
  ClientToScreen(window_, &screen);
  return screen;
}

void TextureList::OnPress(Pixel at, bool selectsUsers) {
  tip_->Hide();
  SetFocus(window_);
  const auto item = ItemAt(at);
  if (!item) return;
  host_.Choose(*item);
  if (selectsUsers) return host_.SelectUsers(*item);
  press_ = at;
  SetCapture(window_);
}

void TextureList::OnMove(Pixel at, bool isHeld) {
  if (press_ && isHeld) {
    drags_ = drags_ || std::abs(at.x - press_->x) > GetSystemMetrics(SM_CXDRAG) ||
             std::abs(at.y - press_->y) > GetSystemMetrics(SM_CYDRAG);
    if (drags_) {
      SetCursor(LoadCursorA(nullptr, host_.MayDrop(ToScreen(at)) ? IDC_HAND : IDC_NO));
    }
    return;
  }
  if (ItemAt(at).value_or(NONE) != hovered_) {
    hovered_ = ItemAt(at).value_or(NONE);
    tip_->Hide();
    isTracked_ = false;
  }
  if (std::exchange(isTracked_, true)) return;
  TRACKMOUSEEVENT track{sizeof track, TME_HOVER | TME_LEAVE, window_, HOVER_TIME};
  TrackMouseEvent(&track);
}

void TextureList::OnHover(Pixel at) {
  const auto item = ItemAt(at);
  if (!item || press_) return;
  tip_->Show(ToScreen(at), wall_.items[*item].texture, host_.Describe(*item));
}

std::optional<std::size_t> TextureList::HeadingUnder(POINT screen) const {
  if (WindowFromPoint(screen) != window_) return std::nullopt;
  ScreenToClient(window_, &screen);
  for (std::size_t group = 0; group < wall_.groups.size(); ++group) {
    const RECT place = ToRect(layout_.Heading(group), top_);
    if (PtInRect(&place, screen)) return group;
  }
  return std::nullopt;
}

void TextureList::ForgetDrag() {
  press_.reset();
  if (std::exchange(drags_, false)) host_.DragEnded();
}

void TextureList::EndDrag() {
  ForgetDrag();
  if (GetCapture() == window_) ReleaseCapture();
}

void TextureList::OnContextMenu(POINT screen) {
  tip_->Hide();
  if (screen.x == -1 && screen.y == -1) {
    if (chosen_ == NONE) return;
    Reveal(chosen_);
    const PixelRect& cell = layout_.Cell(chosen_);
    return host_.ShowPopup(ToScreen({cell.left, cell.bottom - top_}));
  }
  POINT at = screen;
  ScreenToClient(window_, &at);
  if (const auto item = ItemAt({static_cast<int>(at.x), static_cast<int>(at.y)})) {
    host_.Choose(*item);
  }
  host_.ShowPopup(screen);
}

bool TextureList::OnMouse(UINT message, WPARAM wParam, LPARAM lParam) {
  const Pixel at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  switch (message) {
    case WM_LBUTTONDOWN:
      OnPress(at, (wParam & MK_SHIFT) != 0);
      return true;
    case WM_LBUTTONDBLCLK:
      if (ItemAt(at)) host_.Apply();
      return true;
    case WM_MOUSEMOVE:
      OnMove(at, (wParam & MK_LBUTTON) != 0);
      return true;
    case WM_LBUTTONUP: {
      const bool drops = drags_;
      EndDrag();
      if (drops) host_.Drop(ToScreen(at));
      return true;
    }
    case WM_RBUTTONDOWN:
      SetFocus(window_);
      EndDrag();
      return false;  // its release asks for the popup
    case WM_MOUSEHOVER:
      OnHover(at);
      return true;
    case WM_MOUSELEAVE:
      isTracked_ = false;
      hovered_ = NONE;
      tip_->Hide();
      return true;
    case WM_CAPTURECHANGED:
      if (reinterpret_cast<HWND>(lParam) != window_) ForgetDrag();
      return true;
    case WM_MOUSEWHEEL:
      OnWheel(GET_WHEEL_DELTA_WPARAM(wParam), (GET_KEYSTATE_WPARAM(wParam) & MK_CONTROL) != 0);
      return true;
  }
  return false;
}

// --- messages

bool TextureList::OnKey(WPARAM key) {
  const auto step = StepOf(key);
  if (step) Move(*step);
  return step.has_value();
}

LRESULT TextureList::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (tip_ && OnMouse(message, wParam, lParam)) return 0;
  switch (message) {
    case WM_SIZE:
      if (tip_) PlaceAll();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      OnPaint();
      return 0;
    case WM_VSCROLL:
      OnScroll(LOWORD(wParam));
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      RedrawItem(chosen_);
      if (tip_) tip_->Hide();
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_KEYDOWN:
      if (OnKey(wParam)) return 0;
      break;
    case WM_CHAR:
      host_.Type(static_cast<wchar_t>(wParam));
      return 0;
    case WM_CONTEXTMENU:
      OnContextMenu({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      return 0;
    case WM_NCDESTROY: {
      const HWND window = window_;
      SetObject(window, nullptr);
      window_ = nullptr;
      tip_.reset();
      return DefWindowProcA(window, message, wParam, lParam);
    }
  }
  return DefWindowProcA(window_, message, wParam, lParam);
}

}  // namespace ferrowand
