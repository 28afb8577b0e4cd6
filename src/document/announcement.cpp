#include "document/announcement.h"

#include <utility>

#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/map.h"

namespace ferrowand {

ChangeScope::ChangeScope(Map& map) : map_(map) {
  ++map_.openScopes_;
}

// What the last look at the selection drops belongs to the same announcement.
ChangeScope::~ChangeScope() {
  if (map_.openScopes_ == 1) map_.FinishSelection();
  if (--map_.openScopes_ == 0) map_.Announce();
}

MapChange& ChangeScope::Change() {
  return map_.pending_;
}

void Map::FinishSelection() {
  const bool otherObjects = pending_.everything || !pending_.changed.empty() ||
                            !pending_.came.empty() || !pending_.went.empty() ||
                            !pending_.moved.empty();
  if (otherObjects) selection.DropUnreachable();
  if (otherObjects) pickedFaces.DropUnreachable();
  if (!otherObjects && !pending_.selection) return;
  const Bounds before = selection.AnnouncedBounds();
  const Bounds& now = selection.TakeBounds();
  if (!pending_.selection && before == now) return;
  pending_.box.Add(before);
  pending_.box.Add(now);
}

void Map::Announce() {
  const MapChange change = std::exchange(pending_, {});
  if (change.IsNone()) return;
  for (MapObserver* observer : observers_) observer->OnChange(change);
  if (!change.done.empty()) ShowStatus(change.done);
}

void AddExtent(const entity& e, Bounds& box) {
  const EntityClass& own = *e.getClass();
  box.Add(e.brush.Box());
  if (own.Kind() == EntityKind::TemplateInstance) {
    if (const entity* expansion = ExpandInstance(e)) AddExtent(*expansion, box);
  } else if (own.Kind() == EntityKind::Embed) {
    box.Add(own.EntityBounds(e));
  }
  if (e.HasOrigin()) {
    box.Add(e.Origin());
    box.Add(Moved(own.SizeBox(), e.Origin()));
  }
  for (const EntityPtr& child : e.getEntityList()) AddExtent(*child, box);
}

}  // namespace ferrowand
