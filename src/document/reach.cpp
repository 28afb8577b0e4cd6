#include "document/reach.h"

#include <algorithm>

#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/map.h"

namespace ferrowand {
namespace {

bool IsMap(const entity& e) {
  return !e.Parent() && e.OwningMap() == &e;
}

// What an entity shows with all that it holds.
enum class Look { Nothing, SwitchedOff, Seen };

Look LookOf(const entity& e, const ShownKinds& shown) {
  if (!IsOpen(e)) return Look::Nothing;
  if (e.brush.getNumFaces() > 0) return Look::Seen;
  Look look = Look::Nothing;
  if (e.HasOrigin()) look = shown.pointEntities ? Look::Seen : Look::SwitchedOff;
  if (e.getClass()->Kind() == EntityKind::TemplateInstance && FindTemplateClass(e)) {
    look = std::max(look, shown.templates ? Look::Seen : Look::SwitchedOff);
  }
  for (const EntityPtr& child : e.getEntityList()) {
    if (look == Look::Seen) break;
    look = std::max(look, LookOf(*child, shown));
  }
  return look;
}

void AddSeen(const entity& e, const ShownKinds& shown, Bounds& box) {
  if (!IsOpen(e)) return;
  box.Add(e.brush.Box());
  box.Add(PointBox(e));
  if (shown.templates && e.getClass()->Kind() == EntityKind::TemplateInstance) {
    box.Add(e.GetBounds());
  }
  for (const EntityPtr& child : e.getEntityList()) AddSeen(*child, shown, box);
}

}  // namespace

bool OnlyHolds(const entity& e) {
  const EntityKind kind = e.getClass()->Kind();
  return kind == EntityKind::Layer || kind == EntityKind::TemplateClass || IsMap(e);
}

bool IsPlainBrush(const entity& e) {
  return e.getClass()->Kind() == EntityKind::Brush && !e.HasOrigin() && e.getEntityList().empty();
}

bool IsOpen(const entity& e) {
  return (e.IsVisible() && e.IsEnabled()) || IsMap(e);
}

Bounds PointBox(const entity& e) {
  const Map* map = e.OwningMap();
  if (!e.HasOrigin() || (map && !map->Data().shown.pointEntities)) return {};
  const EntityClass& own = *e.getClass();
  if (own.Kind() == EntityKind::Embed) return e.GetBounds();
  if (!own.HasSizeBox()) return {};
  return {e.Origin() + Vec3(own.minx, own.miny, own.minz),
          e.Origin() + Vec3(own.maxx, own.maxy, own.maxz)};
}

Bounds SeenBounds(const entity& e) {
  if (IsPlainBrush(e)) return e.brush.Box();
  Bounds box;
  if (const Map* map = e.OwningMap()) AddSeen(e, map->Data().shown, box);
  return box;
}

bool ReachTest::operator()(const entity& e) const {
  if (OnlyHolds(e) || !IsOpen(e) || !e.Parent()) return false;
  if (e.Parent() != parent_) {
    parent_ = e.Parent();
    const entity* at = parent_;
    while (IsOpen(*at) && at->Parent()) at = at->Parent();
    parentIsOpen_ = at == &map_ && IsOpen(*at);
  }
  const ShownKinds& shown = map_.Data().shown;
  if (!parentIsOpen_) return false;
  return (shown.pointEntities && shown.templates) || e.brush.getNumFaces() > 0 ||
         LookOf(e, shown) != Look::SwitchedOff;
}

bool IsReachable(const entity& e) {
  const Map* map = e.OwningMap();
  return map && ReachTest(*map)(e);
}

}  // namespace ferrowand
