#include "views/scrolled_part.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "document/picking.h"
#include "platform/display.h"
#include "views/entity_parts.h"
#include "views/painted_part.h"
#include "views/tools/box_handles.h"

namespace ferrowand {
namespace {

// Pixels that the columns and rows next to what is uncovered may differ in: a step aside, the axes,
// broad pens and what a tool draws at a corner.
int Edge() {
  return HandleReach() + 2;
}
constexpr int PEN_REACH = 2;  // pixels

// From this scale on, world units a pixel, a whole unit may lie halfway between two pixels.
constexpr float HALVES_FROM = 2;

class StrayWalk {
 public:
  explicit StrayWalk(const PictureScroll& scroll) : scroll_(scroll) {
    const ViewTransform &a = scroll.before, &b = scroll.after;
    crossed_[0] = {scroll.by.x != 0, a.orienu, a.originu, b.originu, a.scaleu};
    crossed_[1] = {scroll.by.y != 0, a.orienv, a.originv, b.originv, a.scalev};
  }

  // False when all of the view is to be painted.
  bool Visit(const entity& e) {
    if (MayStray(e.brush.Box())) VisitEdges(e.brush);
    if (e.HasOrigin() && !VisitPoint(e)) return false;
    if (IsLinked(e)) {
      const std::optional<Vec3> end = ArrowPoint(e);
      if (end && Strays(*end)) return false;
    }
    return VisitExpansion(e) && std::ranges::all_of(e.getEntityList(), [this](const auto& child) {
             return Visit(*child);
           });
  }
  void VisitSelection(const Bounds& box) {
    if (!box.IsEmpty() && (Strays(box.mins) || Strays(box.maxs))) {
      Add(part_, HandledPart(box, scroll_.after));
    }
  }
  const PixelRect& Part() const { return part_; }

 private:
  // World units on one axis that the first column or row has passed, and a pixel to either side.
  struct Crossed {
    Crossed() = default;
    Crossed(bool moves, int axis, int from, int to, float scale)
        : moves(moves),
          axis(axis),
          low(static_cast<float>(std::min(from, to)) - std::abs(scale)),
          high(static_cast<float>(std::max(from, to)) + std::abs(scale)) {}

    bool moves = false;
    int axis = 0;
    float low = 0, high = 0;
  };

  bool MayStray(const Bounds& box) const {
    if (box.IsEmpty()) return false;
    return !IsMapped(box) || std::ranges::any_of(crossed_, [&](const Crossed& c) {
      return c.moves && box.mins[c.axis] <= c.high && box.maxs[c.axis] >= c.low;
    });
  }

  // By how much the point comes out beside where the scroll puts it.
  Pixel Aside(const Vec3& point) const {
    const Pixel was = scroll_.before.ToScreen(point), is = scroll_.after.ToScreen(point);
    return {is.x - was.x - scroll_.by.x, is.y - was.y - scroll_.by.y};
  }
  bool Strays(const Vec3& point) const { return Aside(point) != Pixel{}; }

  // A line along an axis strays only next to what is uncovered.
  void VisitEdges(const Brush& brush) {
    for (const Face& face : brush.Faces()) {
      if (!face.w || face.w->numpoints == 0) continue;
      Vec3 from = std::as_const(*face.w).Points().back().Position();
      for (const WindingPoint& point : std::as_const(*face.w).Points()) {
        const Vec3 to = point.Position();
        const PixelRect seen = scroll_.after.ToScreen(from, to);
        const bool slants = seen.left != seen.right && seen.top != seen.bottom;
        if (slants && Aside(from) != Aside(to)) Add(part_, Grown(seen, Scaled(PEN_REACH)));
        from = to;
      }
    }
  }

  bool VisitPoint(const entity& e) {
    const Vec3 reach(MARKER_REACH, MARKER_REACH, MARKER_REACH);
    Bounds near = PointBox(e);
    near.Add(e.Origin() - reach);
    near.Add(e.Origin() + reach);
    if (!MayStray(near)) return true;
    Add(part_, Grown(scroll_.after.ToScreen(near.mins, near.maxs), Scaled(PEN_REACH)));
    if (!Strays(e.Origin())) return true;
    Add(part_, LightPlace(e, scroll_.after));
    return !(scroll_.flags & DRAW_CLASSNAMES);  // which names are drawn hangs together
  }

  bool VisitExpansion(const entity& e) {
    if (!(scroll_.flags & DRAW_TEMPLATES)) return true;
    if (e.getClass()->Kind() != EntityKind::TemplateInstance) return true;
    const entity* expansion = ExpandInstance(e);
    return !expansion || Visit(*expansion);
  }

  const PictureScroll& scroll_;
  std::array<Crossed, 2> crossed_;
  PixelRect part_;
};

}  // namespace

std::optional<std::vector<PixelRect>> StrayedParts(const Map& map, const PictureScroll& scroll) {
  std::vector<PixelRect> parts;
  if (std::abs(scroll.after.scaleu) < HALVES_FROM && std::abs(scroll.after.scalev) < HALVES_FROM) {
    return parts;
  }
  StrayWalk walk(scroll);
  if (!walk.Visit(map)) return std::nullopt;
  walk.VisitSelection(SelectionBounds(map));
  const auto [width, height] = scroll.area;
  if (scroll.by.x != 0) parts.push_back({0, 0, std::max(scroll.by.x, 0) + Edge(), height});
  if (scroll.by.y != 0) parts.push_back({0, 0, width, std::max(scroll.by.y, 0) + Edge()});
  if (!walk.Part().Empty()) parts.push_back(walk.Part());
  return parts;
}

}  // namespace ferrowand
