#include "document/selection.h"

#include <algorithm>
#include <unordered_set>

#include "document/classes/entity_class.h"
#include "document/map.h"

namespace ferrowand {
namespace {

bool OnlyHolds(const entity& e) {
  return e.getClass()->Kind() == EntityKind::Layer || e.OwningMap() == &e;
}

void Collect(entity& e, PickLevel level, std::vector<entity*>& found) {
  if (!e.IsVisible() || !e.IsEnabled()) return;
  const bool isBrush = e.brush.getNumFaces() > 0;
  const bool acts =
      level == PickLevel::Brushes ? isBrush : isBrush || e.IsMarked() || e.getEntityList().empty();
  const bool picked = acts && !OnlyHolds(e);
  if (picked) found.push_back(&e);
  if (picked && level == PickLevel::Objects && e.IsMarked()) return;
  for (const EntityPtr& child : e.getEntityList()) Collect(*child, level, found);
}

bool Takes(const Bounds& box, const Bounds& object, BoxRule rule) {
  if (object.IsEmpty()) return false;
  for (int axis = 0; axis < 3; ++axis) {
    const float low = rule == BoxRule::Full ? object.mins[axis] : object.maxs[axis];
    const float high = rule == BoxRule::Full ? object.maxs[axis] : object.mins[axis];
    if (low < box.mins[axis] || high > box.maxs[axis]) return false;
  }
  return true;
}

}  // namespace

bool IsReachable(const entity& e) {
  if (OnlyHolds(e) || !e.OwningMap()) return false;
  for (const entity* at = &e; at; at = at->Parent()) {
    if (!at->IsVisible() || !at->IsEnabled()) return false;
  }
  return true;
}

entity& ObjectAt(entity& e) {
  entity* object = &e;
  for (entity* at = e.Parent(); at; at = at->Parent()) {
    if (at->IsMarked() && !OnlyHolds(*at)) object = at;
  }
  return *object;
}

std::vector<entity*> PickableObjects(entity& tree, PickLevel level) {
  std::vector<entity*> found;
  Collect(tree, level, found);
  return found;
}

bool IsSelected(const Map& map, const entity& e) {
  return std::ranges::find(map.selection, &e) != map.selection.end();
}

void Select(Map& map, entity* e, bool add) {
  if (!add) map.selection.clear();
  if (e && !IsSelected(map, *e)) map.selection.push_back(e);
}

void Select(Map& map, const std::vector<entity*>& objects, bool add) {
  if (!add) map.selection.clear();
  std::unordered_set<const entity*> selected(map.selection.begin(), map.selection.end());
  for (entity* object : objects) {
    if (selected.insert(object).second) map.selection.push_back(object);
  }
}

void SelectNone(Map& map) {
  map.selection.clear();
}

void SelectInBox(Map& map, const Bounds& box, BoxRule rule, PickLevel level, bool add) {
  std::vector<entity*> objects = PickableObjects(map, level);
  std::erase_if(objects, [&](const entity* e) { return !Takes(box, e->GetBounds(), rule); });
  Select(map, objects, add);
}

void SelectMembers(Map& map, entity& holder, bool add) {
  std::vector<entity*> members;
  for (const EntityPtr& child : holder.getEntityList()) {
    Collect(*child, PickLevel::Objects, members);
  }
  std::erase_if(members, [](const entity* e) { return !IsReachable(*e); });
  std::erase(map.selection, &holder);
  Select(map, members, add);
}

Bounds SelectionBounds(const Map& map) {
  Bounds bounds;
  for (const entity* e : map.selection) bounds.Add(e->GetBounds());
  return bounds;
}

std::vector<entity*> SelectedRoots(const Map& map) {
  const std::unordered_set<const entity*> selected(map.selection.begin(), map.selection.end());
  std::vector<entity*> roots;
  for (entity* e : map.selection) {
    const entity* above = e->Parent();
    while (above && !selected.contains(above)) above = above->Parent();
    if (!above && IsReachable(*e)) roots.push_back(e);
  }
  return roots;
}

}  // namespace ferrowand
