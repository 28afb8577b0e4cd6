#include "views/tools/preview.h"

#include <algorithm>
#include <utility>

#include "views/map_view.h"
#include "views/tools/tool_host.h"

namespace ferrowand {
namespace {

constexpr int SQUARE = 4;  // pixels

void DrawShape(const PreviewShape& shape, const Pen& pen, Canvas& canvas) {
  if (shape.points.size() > 1) canvas.Polyline(pen, shape.points);
  if (!shape.squares) return;
  for (const Pixel p : shape.points) {
    const Pixel corner{p.x - SQUARE / 2, p.y - SQUARE / 2};
    canvas.Rectangle(pen, std::nullopt, {corner.x, corner.y, corner.x + SQUARE, corner.y + SQUARE});
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
