#include "views/tools/click_point.h"

#include "views/map_view.h"

namespace ferrowand {
namespace {

int MiddleAlong(const MapView& map, bool across) {
  const ViewTransform& seen = map.transform;
  const PixelSize area = map.DrawingArea();
  const double from = across ? seen.ToWorldU(0) : seen.ToWorldV(0);
  const double to = across ? seen.ToWorldU(area.width) : seen.ToWorldV(area.height);
  return RoundToInt((from + to) / 2);
}

}  // namespace

Vec3 PointAt(const MapView& view, const ViewList& views, Pixel at) {
  const ViewTransform& seen = view.transform;
  Vec3 point;
  point[seen.orienu] = static_cast<float>(seen.ToWorldU(at.x));
  point[seen.orienv] = static_cast<float>(seen.ToWorldV(at.y));
  const int depth = seen.DepthAxis();
  for (const MapView* other : views.ViewsOf(view.map)) {
    const bool across = other->transform.orienu == depth;
    if (!across && other->transform.orienv != depth) continue;
    point[depth] = static_cast<float>(MiddleAlong(*other, across));
    break;
  }
  return point;
}

}  // namespace ferrowand
