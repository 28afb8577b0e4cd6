#include "views/hit_test.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "geometry/tolerance.h"
#include "platform/display.h"

namespace ferrowand {
namespace {

constexpr int LINE_REACH = 3;  // pixels

bool IsWithin(const PixelRect& closed, Pixel at) {
  return at.x >= closed.left && at.x <= closed.right && at.y >= closed.top && at.y <= closed.bottom;
}

// Twice the area of the triangle: its sign tells on which side of a to b the point lies.
std::int64_t Orientation(Pixel a, Pixel b, Pixel point) {
  return (std::int64_t{b.x} - a.x) * (std::int64_t{point.y} - a.y) -
         (std::int64_t{b.y} - a.y) * (std::int64_t{point.x} - a.x);
}

std::int64_t SquaredLength(Pixel a, Pixel b) {
  const std::int64_t dx = std::int64_t{b.x} - a.x;
  const std::int64_t dy = std::int64_t{b.y} - a.y;
  return dx * dx + dy * dy;
}

bool IsOnEdge(Pixel a, Pixel b, Pixel point) {
  if (Orientation(a, b, point) != 0) return false;
  const std::int64_t length = SquaredLength(a, b);
  return SquaredLength(a, point) <= length && SquaredLength(b, point) <= length;
}

// Whether the ray from the point to the right crosses the edge; an end counts with the lower side.
bool Crosses(Pixel a, Pixel b, Pixel point) {
  if ((a.y > point.y) == (b.y > point.y)) return false;
  return (Orientation(a, b, point) > 0) == (b.y > a.y);
}

double DistanceToEdge(Pixel a, Pixel b, Pixel point) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const double length = dx * dx + dy * dy;
  const double along =
      length == 0 ? 0
                  : std::clamp(((point.x - a.x) * dx + (point.y - a.y) * dy) / length, 0.0, 1.0);
  return std::hypot(a.x + along * dx - point.x, a.y + along * dy - point.y);
}

std::vector<Pixel> OutlineOf(const winding& w, const ViewTransform& transform) {
  std::vector<Pixel> polygon;
  for (const WindingPoint& p : w.Points()) polygon.push_back(transform.ToScreen(p.Position()));
  return polygon;
}

// How far the lines are from the pixel by which an object that is hit is drawn.
class LineDistance {
 public:
  explicit LineDistance(const HitQuery& query) : query_(query) {}

  double Of(const Hit& hit) const {
    if (hit.face != NO_FACE) return Of(hit.object->brush);
    double least = std::numeric_limits<double>::infinity();
    if (const Bounds box = PointBox(*hit.object); !box.IsEmpty()) {
      const PixelRect seen = query_.transform.ToScreen(box.mins, box.maxs);
      const std::array<Pixel, 4> corners{Pixel{seen.left, seen.top},
                                         {seen.right, seen.top},
                                         {seen.right, seen.bottom},
                                         {seen.left, seen.bottom}};
      least = DistanceToOutline(corners, query_.at);
    }
    if (hit.object->getClass()->Kind() != EntityKind::TemplateInstance) return least;
    const Map* map = hit.object->OwningMap();
    if (!map || !map->Data().shown.templates) return least;
    const entity* expansion = ExpandInstance(*hit.object);
    return expansion ? std::min(least, OfTree(*expansion)) : least;
  }

 private:
  double Of(const Brush& brush) const {
    double least = std::numeric_limits<double>::infinity();
    for (const Face& face : brush.Faces()) {
      if (!face.w || face.w->numpoints == 0) continue;
      least = std::min(least, DistanceToOutline(OutlineOf(*face.w, query_.transform), query_.at));
    }
    return least;
  }
  double OfTree(const entity& e) const {
    double least = Of(e.brush);
    for (const EntityPtr& child : e.getEntityList()) least = std::min(least, OfTree(*child));
    return least;
  }

  const HitQuery& query_;
};

double SizeOf(const entity& e) {
  const Bounds box = SeenBounds(e);
  return box.IsEmpty() ? 0 : Length(DVec3(box.maxs - box.mins));
}

class HitWalk {
 public:
  HitWalk(const HitQuery& query, const std::function<bool(const Hit&)>& visit)
      : query_(query), visit_(visit) {
    const ViewTransform& t = query.transform;
    SetRange(0, t.orienu, t.originu, t.scaleu, query.at.x);
    SetRange(1, t.orienv, t.originv, t.scalev, query.at.y);
  }

  bool Visit(entity& e) {
    if (IsPlainBrush(e) && IsFar(e.brush.Box())) return false;
    if (!IsOpen(e)) return false;
    const Hit hit = Own(e);
    if (hit.object && visit_(hit)) return true;
    return VisitChildren(e);
  }

 private:
  bool VisitChildren(entity& e) {
    const std::vector<EntityPtr>& children = e.getEntityList();
    if (!query_.boxes || children.size() < ChildBoxes::MANY) {
      return std::ranges::any_of(children, [this](const EntityPtr& c) { return Visit(*c); });
    }
    return std::ranges::any_of(query_.boxes->Near(e, ranges_),
                               [&](std::uint32_t place) { return Visit(*children[place]); });
  }

  // What may come to the pixel: a little more than does.
  void SetRange(std::size_t which, int axis, int origin, float scale, int pixel) {
    const double a = origin + (pixel - 1.0) * scale;
    const double b = origin + (pixel + 1.0) * scale;
    const auto [low, high] = std::minmax(a, b);
    ranges_[which] = {axis, static_cast<float>(low - 1), static_cast<float>(high + 1)};
  }

  // Most brushes of a map are sorted out here, without mapping them to pixels.
  bool IsFar(const Bounds& box) const { return IsFarFrom(box, ranges_); }

  Hit Own(entity& e) const {
    if (OnlyHolds(e)) return {};
    if (const int face = FaceOf(e.brush); face != NO_FACE) return {&e, face};
    if (query_.level == PickLevel::Brushes) return {};
    const Bounds box = PointBox(e);
    const bool hit = !box.IsEmpty() && !IsFar(box) &&
                     IsWithin(query_.transform.ToScreen(box.mins, box.maxs), query_.at);
    return hit || HitsExpansion(e) ? Hit{&e, NO_FACE} : Hit{};
  }

  int FaceOf(const Brush& brush) const {
    if (brush.getNumFaces() == 0 || IsFar(brush.Box())) return NO_FACE;
    return FaceAt(brush, query_.transform, query_.at);
  }

  // An instance is hit where the brushes that it stands for are seen.
  bool HitsExpansion(const entity& e) const {
    if (e.getClass()->Kind() != EntityKind::TemplateInstance) return false;
    const Map* map = e.OwningMap();
    if (!map || !map->Data().shown.templates || IsFar(e.GetBounds())) return false;
    const entity* expansion = ExpandInstance(e);
    return expansion && HitsTree(*expansion);
  }
  bool HitsTree(const entity& e) const {
    if (!e.getClass()->IsVisible(e)) return false;
    return FaceOf(e.brush) != NO_FACE ||
           std::ranges::any_of(e.getEntityList(),
                               [this](const EntityPtr& child) { return HitsTree(*child); });
  }

  const HitQuery& query_;
  const std::function<bool(const Hit&)>& visit_;
  std::array<AxisRange, 2> ranges_;
};

}  // namespace

DVec3 TowardsEye(const ViewTransform& transform) {
  DVec3 u, v;
  u[transform.orienu] = 1;
  v[transform.orienv] = 1;
  return Cross(u, v);
}

double DistanceToOutline(std::span<const Pixel> polygon, Pixel point) {
  double least = std::numeric_limits<double>::infinity();
  Pixel from = polygon.back();
  for (const Pixel to : polygon) {
    least = std::min(least, DistanceToEdge(from, to, point));
    from = to;
  }
  return least;
}

bool MeetsOutline(const PixelRect& closed, std::span<const Pixel> polygon) {
  const std::array<Pixel, 4> corners{Pixel{closed.left, closed.top},
                                     {closed.right, closed.top},
                                     {closed.right, closed.bottom},
                                     {closed.left, closed.bottom}};
  // Beside each other along an axis, or with all corners to one side of the edge, they do not meet.
  const auto meets = [&](Pixel a, Pixel b) {
    if (std::max(a.x, b.x) < closed.left || std::min(a.x, b.x) > closed.right) return false;
    if (std::max(a.y, b.y) < closed.top || std::min(a.y, b.y) > closed.bottom) return false;
    const auto side = [&](Pixel corner) { return Orientation(a, b, corner); };
    return std::ranges::any_of(corners, [&](Pixel p) { return side(p) >= 0; }) &&
           std::ranges::any_of(corners, [&](Pixel p) { return side(p) <= 0; });
  };
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    if (meets(polygon[i], polygon[(i + 1) % polygon.size()])) return true;
  }
  return false;
}

bool IsInside(Pixel point, std::span<const Pixel> polygon) {
  if (polygon.empty()) return false;
  bool odd = false;
  Pixel from = polygon.back();
  for (const Pixel to : polygon) {
    if (IsOnEdge(from, to, point)) return true;
    if (Crosses(from, to, point)) odd = !odd;
    from = to;
  }
  return odd;
}

int FaceAt(const Brush& brush, const ViewTransform& transform, Pixel at) {
  if (brush.Box().IsEmpty()) return NO_FACE;
  if (!IsWithin(transform.ToScreen(brush.Box().mins, brush.Box().maxs), at)) return NO_FACE;
  const DVec3 eye = TowardsEye(transform);
  for (int i = 0; i < brush.getNumFaces(); ++i) {
    const Face& face = brush.face(i);
    if (!face.w || !(Dot(face.plane.normal, eye) >= EDGE_ON)) continue;
    if (IsInside(at, OutlineOf(*face.w, transform))) return i;
  }
  return NO_FACE;
}

bool ForEachHit(entity& object, const HitQuery& query,
                const std::function<bool(const Hit&)>& visit) {
  return HitWalk(query, visit).Visit(object);
}

Hit HitTest(entity& object, const HitQuery& query) {
  entity* const objects[] = {&object};
  return HitTest(objects, query);
}

Hit HitTest(std::span<entity* const> objects, const HitQuery& query) {
  Hit first;
  const std::function<bool(const Hit&)> take = [&](const Hit& hit) {
    first = hit;
    return true;
  };
  HitWalk walk(query, take);
  for (entity* object : objects) {
    if (walk.Visit(*object)) break;
  }
  return first;
}

Hit ClickTest(entity& object, const HitQuery& query) {
  const LineDistance distance(query);
  Hit first, nearest;
  double least = Scaled(LINE_REACH);
  ForEachHit(object, query, [&](const Hit& hit) {
    if (!first.object) first = hit;
    const double here = distance.Of(hit);
    const bool isSmaller =
        here == least && (!nearest.object || SizeOf(*hit.object) < SizeOf(*nearest.object));
    if (here < least || isSmaller) {
      nearest = hit;
      least = here;
    }
    return false;
  });
  return nearest.object ? nearest : first;
}

entity& PickedBy(entity& hit, PickLevel level) {
  if (level == PickLevel::Objects) return ObjectAt(hit);
  entity* object = &hit;
  for (entity* at = hit.Parent(); at && at->getClass(); at = at->Parent()) {
    if (at->getClass()->Kind() == EntityKind::Brush && at->IsMarked()) object = at;
  }
  return *object;
}

}  // namespace ferrowand
