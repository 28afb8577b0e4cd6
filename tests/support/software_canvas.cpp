#include "support/software_canvas.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace ferrowand {
namespace {

constexpr int LETTER_WIDTH = 7, LETTER_HEIGHT = 12;

std::int64_t FloorDivide(std::int64_t a, std::int64_t b) {  // b > 0
  return a >= 0 ? a / b : -((-a + b - 1) / b);
}

// A line as y(x) = y0 + round((x - x0) * slope) along its longer axis, in the order in which that
// axis grows: the same pixels from either end and within any clip rectangle.
struct Walk {
  std::int64_t from, to;  // on the longer axis, both inside
  std::int64_t start;     // on the other, at `from`
  std::int64_t run, rise;
  bool steep;

  explicit Walk(const PixelLine& line) {
    std::int64_t ax = line.from.x, ay = line.from.y, bx = line.to.x, by = line.to.y;
    steep = std::abs(by - ay) > std::abs(bx - ax);
    if (steep) std::swap(ax, ay), std::swap(bx, by);
    if (ax > bx) std::swap(ax, bx), std::swap(ay, by);
    from = ax, to = bx, start = ay, run = bx - ax, rise = by - ay;
  }

  std::int64_t Other(std::int64_t along) const {
    return run == 0 ? start : start + FloorDivide(2 * (along - from) * rise + run, 2 * run);
  }
  // Narrows from .. to to what may come within low .. high on the other axis.
  std::pair<std::int64_t, std::int64_t> Within(std::int64_t low, std::int64_t high) const {
    if (rise == 0) return start < low || start > high ? std::pair{to + 1, to} : std::pair{from, to};
    const auto along = [&](std::int64_t other) {
      const std::int64_t distance = rise > 0 ? other - start : start - other;
      return from + FloorDivide(distance * run, std::abs(rise));
    };
    const auto [a, b] = std::minmax({along(low - 1), along(high + 1)});
    return {std::max(from, a - 1), std::min(to, b + 1)};
  }
};

}  // namespace

SoftwareCanvas::SoftwareCanvas(PixelSize size)
    : size_(size),
      pixels_(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height)),
      clip_{0, 0, size.width, size.height} {}

void SoftwareCanvas::Scroll(Pixel by) {
  const std::vector<Colour> before = pixels_;
  for (int y = std::max(by.y, 0); y < size_.height + std::min(by.y, 0); ++y) {
    for (int x = std::max(by.x, 0); x < size_.width + std::min(by.x, 0); ++x) {
      pixels_[Index(x, y)] = before[Index(x - by.x, y - by.y)];
    }
  }
}

void SoftwareCanvas::SetClip(const PixelRect& rect) {
  clip_ = {std::max(rect.left, 0), std::max(rect.top, 0), std::min(rect.right, size_.width),
           std::min(rect.bottom, size_.height)};
}

void SoftwareCanvas::Plot(int x, int y, Colour colour) {
  if (x < clip_.left || x >= clip_.right || y < clip_.top || y >= clip_.bottom) return;
  Colour& pixel = pixels_[Index(x, y)];
  if (!xor_) {
    pixel = colour;
    return;
  }
  pixel = {static_cast<std::uint8_t>(~pixel.red), static_cast<std::uint8_t>(~pixel.green),
           static_cast<std::uint8_t>(~pixel.blue)};
}

void SoftwareCanvas::Row(Span span, int y, Colour colour) {
  if (y < clip_.top || y >= clip_.bottom) return;
  const int last = std::min(span.last, clip_.right - 1);
  for (int x = std::max(span.first, clip_.left); x <= last; ++x) Plot(x, y, colour);
}

void SoftwareCanvas::Line(const Pen& pen, const PixelLine& line, std::optional<Pixel> except) {
  const Walk walk(line);
  const int before = pen.width / 2;
  const int after = pen.width - 1 - before;
  const auto [alongLow, alongHigh] =
      walk.steep ? std::pair{clip_.top, clip_.bottom - 1} : std::pair{clip_.left, clip_.right - 1};
  const auto [otherLow, otherHigh] =
      walk.steep ? std::pair{clip_.left, clip_.right - 1} : std::pair{clip_.top, clip_.bottom - 1};
  auto [first, last] = walk.Within(otherLow - pen.width, otherHigh + pen.width);
  first = std::max<std::int64_t>(first, alongLow);
  last = std::min<std::int64_t>(last, alongHigh);
  for (std::int64_t along = first; along <= last; ++along) {
    const int a = static_cast<int>(along);
    const int other = static_cast<int>(walk.Other(along));
    if (except && *except == (walk.steep ? Pixel{other, a} : Pixel{a, other})) continue;
    for (int o = other - before; o <= other + after; ++o) {
      walk.steep ? Plot(o, a, pen.colour) : Plot(a, o, pen.colour);
    }
  }
}

void SoftwareCanvas::FillRect(const PixelRect& rect, Colour colour) {
  const int bottom = std::min(rect.bottom, clip_.bottom);
  for (int y = std::max(rect.top, clip_.top); y < bottom; ++y) {
    Row({rect.left, rect.right - 1}, y, colour);
  }
}

void SoftwareCanvas::Lines(const Pen& pen, std::span<const PixelLine> lines) {
  for (const PixelLine& line : lines) Line(pen, line);
}

void SoftwareCanvas::Polyline(const Pen& pen, std::span<const Pixel> points) {
  for (std::size_t i = 1; i < points.size(); ++i) {
    const PixelLine line{points[i - 1], points[i]};
    i == 1 ? Line(pen, line) : Line(pen, line, points[i - 1]);
  }
}

void SoftwareCanvas::Polygon(const Pen& pen, std::optional<Colour> fill,
                             std::span<const Pixel> points) {
  if (points.empty()) return;
  const auto next = [&](std::size_t i) { return points[(i + 1) % points.size()]; };
  for (int y = clip_.top; fill && y < clip_.bottom; ++y) {
    std::vector<double> crossings;
    for (std::size_t i = 0; i < points.size(); ++i) {
      const Pixel a = points[i], b = next(i);
      if ((a.y <= y) == (b.y <= y)) continue;
      crossings.push_back(a.x + static_cast<double>(y - a.y) * (b.x - a.x) / (b.y - a.y));
    }
    std::sort(crossings.begin(), crossings.end());
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
      Row({static_cast<int>(std::ceil(crossings[i])),
           static_cast<int>(std::floor(crossings[i + 1]))},
          y, *fill);
    }
  }
  for (std::size_t i = 0; i < points.size(); ++i) Line(pen, {points[i], next(i)}, points[i]);
}

void SoftwareCanvas::Rectangle(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) {
  if (rect.Empty()) return;
  if (fill) FillRect({rect.left + 1, rect.top + 1, rect.right - 1, rect.bottom - 1}, *fill);
  const Pixel corners[]{{rect.left, rect.top},
                        {rect.right - 1, rect.top},
                        {rect.right - 1, rect.bottom - 1},
                        {rect.left, rect.bottom - 1}};
  Polygon(pen, std::nullopt, corners);
}

void SoftwareCanvas::Ellipse(const Pen& pen, std::optional<Colour> fill, const PixelRect& rect) {
  if (rect.Empty()) return;
  const double rx = rect.Width() / 2.0, ry = rect.Height() / 2.0;
  const auto spanAt = [&](int y) -> Span {
    if (y < rect.top || y >= rect.bottom) return {};
    const double dy = (y + 0.5 - (rect.top + ry)) / ry;
    const double half = rx * std::sqrt(std::max(0.0, 1 - dy * dy));
    return {static_cast<int>(std::ceil(rect.left + rx - half - 0.5)),
            static_cast<int>(std::floor(rect.left + rx + half - 0.5))};
  };
  const int bottom = std::min(rect.bottom, clip_.bottom);
  for (int y = std::max(rect.top, clip_.top); y < bottom; ++y) {
    const Span span = spanAt(y), above = spanAt(y - 1), below = spanAt(y + 1);
    // What is inside in both neighbouring rows as well is no outline.
    const Span inner{std::max({span.first + 1, above.first, below.first}),
                     std::min({span.last - 1, above.last, below.last})};
    if (inner.first > inner.last) {
      Row(span, y, pen.colour);
      continue;
    }
    Row({span.first, inner.first - 1}, y, pen.colour);
    if (fill) Row(inner, y, *fill);
    Row({inner.last + 1, span.last}, y, pen.colour);
  }
}

PixelSize SoftwareCanvas::MeasureText(FontFace, std::string_view text) {
  return {LETTER_WIDTH * static_cast<int>(text.size()), LETTER_HEIGHT};
}

void SoftwareCanvas::Text(FontFace, Colour colour, Pixel topLeft, std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int left = topLeft.x + LETTER_WIDTH * static_cast<int>(i);
    FillRect({left + 1, topLeft.y + 2, left + LETTER_WIDTH, topLeft.y + LETTER_HEIGHT - 2}, colour);
  }
}

}  // namespace ferrowand
