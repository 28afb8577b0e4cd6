#include "views/tools/box_handles.h"

#include <utility>
#include <vector>

namespace ferrowand {
namespace {

constexpr Colour WHITE{255, 255, 255};

// A row of cells along an axis, each as wide as a handle.
int CellAt(int pixel) {
  const int width = 2 * HandleSize();
  return (pixel >= 0 ? pixel : pixel - width + 1) / width;
}

// Both edges in pixels; -1 for the one at the smaller coordinate, 1 for the other. Offset by the
// gap of the frame, the press in the middle of a handle falls into the cell of its edge.
int GrabbedSide(int low, int high, int pressed) {
  const int cell = CellAt(pressed + HandleGap());
  if (cell == CellAt(high + 2 * HandleGap())) return 1;
  return cell == CellAt(low) ? -1 : 0;
}

bool IsNear(const PixelRect& box, Pixel at) {
  const int reach = HandleGap() + HandleSize();
  return at.x >= box.left - reach && at.x <= box.right + reach && at.y >= box.top - reach &&
         at.y <= box.bottom + reach;
}

struct Place {
  Pixel at;
  Pixel outward;  // -1, 0 or 1 on each axis
};

// Corners first, from the top left one clockwise; then the middles of the edges from the top one.
std::vector<Place> PlacesOf(const PixelRect& frame) {
  const int midx = frame.left + frame.Width() / 2;
  const int midy = frame.top + frame.Height() / 2;
  return {{{frame.left, frame.top}, {-1, -1}},   {{frame.right, frame.top}, {1, -1}},
          {{frame.right, frame.bottom}, {1, 1}}, {{frame.left, frame.bottom}, {-1, 1}},
          {{midx, frame.top}, {0, -1}},          {{frame.right, midy}, {1, 0}},
          {{midx, frame.bottom}, {0, 1}},        {{frame.left, midy}, {-1, 0}}};
}

PixelRect Around(Pixel p) {
  return {p.x - HandleSize(), p.y - HandleSize(), p.x + HandleSize() + 1, p.y + HandleSize() + 1};
}

void DrawDiamond(Pixel p, const Pen& pen, Canvas& canvas) {
  const std::array points{Pixel{p.x, p.y - HandleSize()}, Pixel{p.x + HandleSize(), p.y},
                          Pixel{p.x, p.y + HandleSize()}, Pixel{p.x - HandleSize(), p.y}};
  canvas.Polygon(pen, WHITE, points);
}

void DrawTriangle(const Place& place, const Pen& pen, Canvas& canvas) {
  const auto [p, out] = place;
  const bool isCorner = out.x != 0 && out.y != 0;
  // The base stands across the way outward.
  const Pixel side = isCorner ? Pixel{out.x, -out.y} : Pixel{out.y, out.x};
  const int half = isCorner ? HandleSize() / 2 : HandleSize();
  const std::array points{Pixel{p.x + out.x * HandleSize(), p.y + out.y * HandleSize()},
                          Pixel{p.x + side.x * half - (isCorner ? out.x * half : 0),
                                p.y + side.y * half - (isCorner ? out.y * half : 0)},
                          Pixel{p.x - side.x * half - (isCorner ? out.x * half : 0),
                                p.y - side.y * half - (isCorner ? out.y * half : 0)}};
  canvas.Polygon(pen, WHITE, points);
}

}  // namespace

GrabbedEdges GrabAt(const Bounds& box, const ViewTransform& transform, Pixel at) {
  const PixelRect rect = transform.ToScreen(box.mins, box.maxs);
  if (!IsNear(rect, at)) return {};
  const int u = GrabbedSide(rect.left, rect.right, at.x);
  const int v = GrabbedSide(rect.top, rect.bottom, at.y);
  return {{transform.scaleu < 0 ? -u : u, transform.scalev < 0 ? -v : v}};
}

void DrawHandles(const Bounds& box, const ViewTransform& transform, HandleMode mode, const Pen& pen,
                 Canvas& canvas) {
  PixelRect frame = transform.ToScreen(box.mins, box.maxs);
  frame = {frame.left - HandleGap(), frame.top - HandleGap(), frame.right + HandleGap(),
           frame.bottom + HandleGap()};
  canvas.Rectangle(pen, std::nullopt, {frame.left, frame.top, frame.right + 1, frame.bottom + 1});
  const std::vector<Place> places = PlacesOf(frame);
  for (std::size_t i = 0; i < places.size(); ++i) {
    const bool isCorner = i < 4;
    const Pixel at = places[i].at;
    if (mode == HandleMode::Skew) {
      DrawTriangle(places[i], pen, canvas);
    } else if (mode == HandleMode::Rotate) {
      if (isCorner) canvas.Ellipse(pen, WHITE, Around(at));
    } else if (isCorner) {
      DrawDiamond(at, pen, canvas);
    } else {
      canvas.Rectangle(pen, WHITE, Around(at));
    }
  }
}

}  // namespace ferrowand
