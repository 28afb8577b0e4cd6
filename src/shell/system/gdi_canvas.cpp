#include "shell/system/gdi_canvas.h"

#include <algorithm>
#include <cmath>

#include "shell/system/display_scale.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

// The system's own limit: coordinates beyond it wrap.
constexpr int FARTHEST = 1 << 26;

POINT ToPoint(Pixel p) {
  return {std::clamp(p.x, -FARTHEST, FARTHEST), std::clamp(p.y, -FARTHEST, FARTHEST)};
}

bool IsNear(Pixel p) {
  return std::abs(static_cast<double>(p.x)) < FARTHEST &&
         std::abs(static_cast<double>(p.y)) < FARTHEST;
}

// The end of the line that lies beyond the limit, brought back along the line.
Pixel BringNear(Pixel end, Pixel other) {
  const double dx = static_cast<double>(end.x) - other.x;
  const double dy = static_cast<double>(end.y) - other.y;
  const double reach = std::max(std::abs(dx), std::abs(dy));
  const double part = reach > FARTHEST ? FARTHEST / reach : 1.0;
  return {static_cast<int>(other.x + dx * part), static_cast<int>(other.y + dy * part)};
}

// When it is first asked for. Of that height on a screen of the usual size of letters.
HFONT Made(OwnedFont& font, const char* name, int height, int weight, bool italic) {
  if (!font) {
    font.reset(CreateFontA(Scaled(height), 0, 0, 0, weight, italic, FALSE, FALSE, DEFAULT_CHARSET,
                           OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                           DEFAULT_PITCH | FF_DONTCARE, name));
  }
  return font.get();
}

OwnedPen MakePen(const Pen& pen) {
  if (pen.width > 1) {
    const LOGBRUSH brush{BS_SOLID, ToColorRef(pen.colour), 0};
    return OwnedPen(
        ExtCreatePen(PS_GEOMETRIC | PS_SOLID, static_cast<DWORD>(pen.width), &brush, 0, nullptr));
  }
  const int style = pen.style == PenStyle::Dash  ? PS_DASH
                    : pen.style == PenStyle::Dot ? PS_DOT
                                                 : PS_SOLID;
  return OwnedPen(CreatePen(style, 1, ToColorRef(pen.colour)));
}

template <typename Key, typename OwnedHandle, typename Make>
auto Cached(std::vector<std::pair<Key, OwnedHandle>>& cache, const Key& key, Make make) {
  const auto found =
      std::ranges::find(cache, key, [](const auto& entry) -> const Key& { return entry.first; });
  if (found != cache.end()) return found->second.get();
  return cache.emplace_back(key, make(key)).second.get();
}

}  // namespace

HPEN GdiObjects::Get(const Pen& pen) {
  return Cached(pens_, pen, MakePen);
}

HBRUSH GdiObjects::Get(Colour colour) {
  return Cached(brushes_, colour,
                [](Colour c) { return OwnedBrush(CreateSolidBrush(ToColorRef(c))); });
}

HFONT GdiObjects::Get(FontFace face) {
  if (face == FontFace::Caption) return Made(caption_, "Courier New", 14, FW_NORMAL, false);
  if (options_.largeness) return Made(largeLabel_, "Times New Roman", 16, FW_BOLD, true);
  return Made(label_, "Arial", 13, FW_NORMAL, false);
}

HFONT GdiObjects::HeadingFont() {
  return Made(heading_, "Arial", 20, FW_BOLD, true);
}

bool BackBuffer::Prepare(HDC screen, PixelSize size) {
  if (dc_ && size.width <= size_.width && size.height <= size_.height) return true;
  size = {std::max({size.width, size_.width, 1}), std::max({size.height, size_.height, 1})};
  OwnedBitmap bitmap(CreateCompatibleBitmap(screen, size.width, size.height));
  if (!dc_) dc_.reset(CreateCompatibleDC(screen));
  if (!bitmap || !dc_) return false;
  SelectObject(dc_.get(), bitmap.get());
  bitmap_ = std::move(bitmap);
  size_ = size;
  return true;
}

GdiCanvas::GdiCanvas(HDC dc, GdiObjects& objects) : dc_(dc), objects_(objects), saved_(SaveDC(dc)) {
  SetBkMode(dc_, TRANSPARENT);
  SetPolyFillMode(dc_, WINDING);
}

GdiCanvas::~GdiCanvas() {
  RestoreDC(dc_, saved_);
}

void GdiCanvas::Select(const Pen& pen) {
  SelectObject(dc_, objects_.Get(pen));
}

void GdiCanvas::SelectFill(std::optional<Colour> fill) {
  SelectObject(
      dc_, fill && !xor_ ? objects_.Get(*fill) : static_cast<HBRUSH>(GetStockObject(NULL_BRUSH)));
}

void GdiCanvas::FillRect(const PixelRect& rect, Colour colour) {
  const RECT area{rect.left, rect.top, rect.right, rect.bottom};
  ::FillRect(dc_, &area, objects_.Get(colour));
}

void GdiCanvas::Lines(const Pen& pen, std::span<const PixelLine> lines) {
  if (lines.empty()) return;
  Select(pen);
  // The system leaves out a line's last pixel. A step of one pixel behind it draws it; a broad pen
  // has round ends of its own.
  const bool step = pen.width <= 1;
  points_.clear();
  for (const PixelLine& line : lines) {
    const bool isNear = IsNear(line.from) && IsNear(line.to);
    const Pixel from = isNear ? line.from : BringNear(line.from, line.to);
    const Pixel to = isNear ? line.to : BringNear(line.to, from);
    points_.push_back(ToPoint(from));
    points_.push_back(ToPoint(to));
    if (step) points_.push_back({points_.back().x + 1, points_.back().y});
  }
  counts_.assign(lines.size(), step ? 3 : 2);
  PolyPolyline(dc_, points_.data(), counts_.data(), static_cast<DWORD>(lines.size()));
}

void GdiCanvas::Polyline(const Pen& pen, std::span<const Pixel> points) {
  if (points.empty()) return;
  Select(pen);
  points_.clear();
  for (const Pixel p : points) points_.push_back(ToPoint(p));
  const bool closed = points.size() > 1 && points.front() == points.back();
  if (!closed && pen.width <= 1) points_.push_back({points_.back().x + 1, points_.back().y});
  ::Polyline(dc_, points_.data(), static_cast<int>(points_.size()));
}

void GdiCanvas::Polygon(const Pen& pen, std::optional<Colour> fill, std::span<const Pixel> points) {
  if (points.size() < 2) return Polyline(pen, points);
  Select(pen);
  SelectFill(fill);
  points_.clear();
  for (const Pixel p : points) points_.push_back(ToPoint(p));
  ::Polygon(dc_, points_.data(), static_cast<int>(points_.size()));
}

void GdiCanvas::Rectangle(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) {
  Select(pen);
  SelectFill(fill);
  const POINT first = ToPoint({rect.left, rect.top}), last = ToPoint({rect.right, rect.bottom});
  ::Rectangle(dc_, first.x, first.y, last.x, last.y);
}

void GdiCanvas::Ellipse(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) {
  Select(pen);
  SelectFill(fill);
  const POINT first = ToPoint({rect.left, rect.top}), last = ToPoint({rect.right, rect.bottom});
  ::Ellipse(dc_, first.x, first.y, last.x, last.y);
}

PixelSize GdiCanvas::MeasureText(FontFace font, std::string_view text) {
  SelectObject(dc_, objects_.Get(font));
  SIZE size{};
  const std::wstring wide = ToWide(text);
  GetTextExtentPoint32W(dc_, wide.data(), static_cast<int>(wide.size()), &size);
  return {static_cast<int>(size.cx), static_cast<int>(size.cy)};
}

void GdiCanvas::Text(FontFace font, Colour colour, Pixel topLeft, std::string_view text) {
  const POINT at = ToPoint(topLeft);
  if (xor_) return InvertText(font, at, text);
  SelectObject(dc_, objects_.Get(font));
  SetTextColor(dc_, ToColorRef(colour));
  const std::wstring wide = ToWide(text);
  TextOutW(dc_, at.x, at.y, wide.data(), static_cast<int>(wide.size()));
}

// The system inverts no letters: white ones on a black bitmap do it.
void GdiCanvas::InvertText(FontFace font, POINT at, std::string_view text) {
  const auto [width, height] = MeasureText(font, text);
  const OwnedBitmap bitmap(CreateCompatibleBitmap(dc_, width, height));
  const OwnedDc letters(CreateCompatibleDC(dc_));  // goes before the bitmap, which it holds
  SelectObject(letters.get(), bitmap.get());
  PatBlt(letters.get(), 0, 0, width, height, BLACKNESS);
  SelectObject(letters.get(), objects_.Get(font));
  SetBkMode(letters.get(), TRANSPARENT);
  SetTextColor(letters.get(), RGB(255, 255, 255));
  const std::wstring wide = ToWide(text);
  TextOutW(letters.get(), 0, 0, wide.data(), static_cast<int>(wide.size()));
  BitBlt(dc_, at.x, at.y, width, height, letters.get(), 0, 0, SRCINVERT);
}

void GdiCanvas::SetXor(bool on) {
  xor_ = on;
  SetROP2(dc_, on ? R2_NOT : R2_COPYPEN);
}

void GdiCanvas::SetClip(const PixelRect& rect) {
  SelectClipRgn(dc_, nullptr);
  IntersectClipRect(dc_, rect.left, rect.top, rect.right, rect.bottom);
}

PixelRect GdiCanvas::ClipBox() const {
  RECT box{};
  GetClipBox(dc_, &box);
  return {box.left, box.top, box.right, box.bottom};
}

}  // namespace ferrowand
