#include "views/painted_part.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "document/classes/entity_class.h"
#include "document/entity.h"
#include "views/entity_parts.h"
#include "views/tools/box_handles.h"

namespace ferrowand {
namespace {

// Objects from which on it costs more to look at each than to paint all.
constexpr std::size_t MANY = 2000;

class PartWalk {
 public:
  explicit PartWalk(const PaintRules& rules) : rules_(rules) {}

  // False as soon as all of the view is to be painted.
  bool VisitTree(const entity& e) {
    for (const entity* above = e.Parent(); above; above = above->Parent()) {
      if (!IsLocal(*above)) return false;
    }
    return VisitBelow(e);
  }
  bool Visit(const entity& e) {
    if (++visited_ > MANY || !IsLocal(e)) return false;
    if (e.getClass()->Kind() == EntityKind::TemplateInstance && (rules_.flags & BEYOND_BOUNDS)) {
      return false;  // all that its template holds may reach beyond
    }
    if (!e.HasOrigin()) return true;
    if (rules_.flags & DRAW_LIGHT_RADIUS) Add(part_, LightPlace(e, rules_.transform));
    // Which names are drawn hangs together.
    return !(rules_.flags & DRAW_CLASSNAMES) || !e.GetKey("classname");
  }
  const PixelRect& Part() const { return part_; }

 private:
  static constexpr unsigned BEYOND_BOUNDS = DRAW_CLASSNAMES | DRAW_LIGHT_RADIUS;

  bool VisitBelow(const entity& e) {
    return Visit(e) && std::ranges::all_of(e.getEntityList(), [this](const auto& child) {
             return VisitBelow(*child);
           });
  }

  // A link is drawn from and to wherever its other end is, a template wherever its instances are.
  static bool IsLocal(const entity& e) {
    return !IsLinked(e) && e.getClass()->Kind() != EntityKind::TemplateClass;
  }

  const PaintRules& rules_;
  std::size_t visited_ = 0;
  PixelRect part_;
};

}  // namespace

bool IsMapped(const Bounds& box) {
  constexpr float LIMIT = 32000;
  for (int axis = 0; axis < 3; ++axis) {
    if (!box.IsEmpty() && !(box.mins[axis] > -LIMIT && box.maxs[axis] < LIMIT)) return false;
  }
  return true;
}

bool IsLinked(const entity& e) {
  return e.GetKey("target") || e.GetKey("targetname");
}

void Add(PixelRect& rect, const PixelRect& other) {
  if (other.Empty()) return;
  if (rect.Empty()) {
    rect = other;
    return;
  }
  rect = {std::min(rect.left, other.left), std::min(rect.top, other.top),
          std::max(rect.right, other.right), std::max(rect.bottom, other.bottom)};
}

PixelRect Grown(const PixelRect& closed, int by) {
  return {closed.left - by, closed.top - by, closed.right + by + 1, closed.bottom + by + 1};
}

PixelRect HandledPart(const Bounds& box, const ViewTransform& transform) {
  if (box.IsEmpty()) return {};
  const PixelRect rect = transform.ToScreen(box.mins, box.maxs);
  const double scale = std::abs(static_cast<double>(transform.scaleu));
  return Grown(rect, HandleReach() + RoundToInt(MARKER_REACH / scale));
}

std::optional<PixelRect> PaintedPart(const MapChange& change, const PaintRules& rules) {
  if (change.everything || !IsMapped(change.box)) return std::nullopt;
  PartWalk walk(rules);
  for (const auto* objects : {&change.changed, &change.came, &change.went, &change.moved}) {
    for (const entity* e : *objects) {
      if (!walk.VisitTree(*e)) return std::nullopt;
    }
  }
  for (const entity* e : change.before) {
    if (!walk.Visit(*e)) return std::nullopt;
  }
  PixelRect part = HandledPart(change.box, rules.transform);
  Add(part, walk.Part());
  return part;
}

}  // namespace ferrowand
