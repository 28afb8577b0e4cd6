#include "views/tools/preview.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "geometry/vec.h"
#include "platform/display.h"
#include "views/map_view.h"
#include "views/tools/tool_host.h"

namespace ferrowand {
namespace {

constexpr int SQUARE = 4;         // pixels
constexpr int DASH = 4;           // pixels, and as many between two
constexpr int MAX_DASHES = 4096;  // of a line; a longer one has longer dashes

// Made of lines, not of a pen: those come out the same however a repaint cuts them.
void AddDashes(Pixel from, Pixel to, std::vector<PixelLine>& dashes) {
  const double dx = static_cast<double>(to.x) - from.x, dy = static_cast<double>(to.y) - from.y;
  const double length = std::max(std::abs(dx), std::abs(dy));
  const double step = std::max<double>(2 * Scaled(DASH), length / MAX_DASHES);
  const auto at = [&](double along) {
    const double part = length > 0 ? along / length : 0;
    return Pixel{from.x + RoundToInt(dx * part), from.y + RoundToInt(dy * part)};
  };
  const int count = static_cast<int>(length / step) + 1;
  for (int i = 0; i < count; ++i) {
    dashes.push_back({at(i * step), at(std::min((i + 0.5) * step - 1, length))});
  }
}

void DrawDashed(std::span<const Pixel> points, const Pen& pen, Canvas& canvas) {
  std::vector<PixelLine> dashes;
  for (std::size_t i = 1; i < points.size(); ++i) AddDashes(points[i - 1], points[i], dashes);
  canvas.Lines(pen, dashes);
}

void DrawShape(const PreviewShape& shape, const Pen& pen, Canvas& canvas) {
  if (shape.broken) {
    DrawDashed(shape.points, pen, canvas);
  } else if (shape.points.size() > 1) {
    canvas.Polyline(pen, shape.points);
  }
  if (!shape.words.empty()) {
    canvas.Text(FontFace::Label, pen.colour, shape.points.front(), shape.words);
  }
  if (!shape.squares) return;
  const int size = Scaled(SQUARE);
  for (const Pixel p : shape.points) {
    const Pixel corner{p.x - size / 2, p.y - size / 2};
    canvas.Rectangle(pen, std::nullopt, {corner.x, corner.y, corner.x + size, corner.y + size});
  }
}

}  // namespace

PreviewShape ClosedShape(std::vector<Pixel> corners) {
  if (!corners.empty()) corners.push_back(corners.front());
  return {std::move(corners), false};
}

PreviewShape RectangleShape(const PixelRect& closed) {
  return ClosedShape({{closed.left, closed.top},
                      {closed.right, closed.top},
                      {closed.right, closed.bottom},
                      {closed.left, closed.bottom}});
}

void Preview::Show(MapView& view, std::vector<PreviewShape> shapes) {
  Invert();
  view_ = &view;
  shapes_ = std::move(shapes);
  Invert();
}

void Preview::Clear() {
  Invert();
  view_ = nullptr;
  shapes_.clear();
}

void Preview::Draw(const MapView& view, Canvas& canvas) const {
  if (&view != view_) return;
  const Pen pen{{255, 255, 255}};
  canvas.SetXor(true);
  for (const PreviewShape& shape : shapes_) DrawShape(shape, pen, canvas);
  canvas.SetXor(false);
}

void Preview::Invert() {
  if (!view_) return;
  // The view may have been closed in the middle of a drag.
  if (std::ranges::find(views_.Views(), view_) == views_.Views().end()) return;
  host_.DrawNow(*view_, [this](Canvas& canvas) { Draw(*view_, canvas); });
}

}  // namespace ferrowand
