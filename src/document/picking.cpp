#include "document/picking.h"

#include <algorithm>

#include "document/classes/entity_class.h"
#include "document/map.h"

namespace ferrowand {
namespace {

void Collect(entity& e, PickLevel level, std::vector<entity*>& found) {
  if (!IsOpen(e)) return;
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

void Select(Map& map, entity* e, bool add) {
  Select(map, std::span(&e, e ? 1 : 0), add);
}

void Select(Map& map, std::span<entity* const> objects, bool add) {
  if (add) {
    map.selection.Add(objects);
  } else {
    map.selection.Set(objects);
  }
}

void SelectInBox(Map& map, const Bounds& box, BoxRule rule, PickLevel level, bool add) {
  std::vector<entity*> objects = PickableObjects(map, level);
  std::erase_if(objects, [&](const entity* e) { return !Takes(box, SeenBounds(*e), rule); });
  Select(map, objects, add);
}

void SelectMembers(Map& map, entity& holder, bool add) {
  std::vector<entity*> members;
  for (const EntityPtr& child : holder.getEntityList()) {
    Collect(*child, PickLevel::Objects, members);
  }
  ChangeScope scope(map);
  map.selection.Remove(holder);
  Select(map, members, add);
}

entity* BesideSelected(const Map& map, std::span<entity* const> stack, bool deeper) {
  if (stack.empty()) return nullptr;
  const auto isSelected = [&map](const entity* e) { return map.selection.Contains(*e); };
  const auto selected = std::ranges::find_if(stack, isSelected);
  if (selected == stack.end()) return stack.front();
  const bool isLast = selected == (deeper ? stack.end() - 1 : stack.begin());
  return isLast ? *selected : *(deeper ? selected + 1 : selected - 1);
}

Bounds SelectionBounds(const Map& map) {
  Bounds bounds;
  for (const entity* e : map.selection) bounds.Add(e->GetBounds());
  return bounds;
}

std::vector<entity*> SelectedRoots(const Map& map) {
  std::vector<entity*> roots;
  for (entity* e : map.selection) {
    const entity* above = e->Parent();
    while (above && !map.selection.Contains(*above)) above = above->Parent();
    if (!above) roots.push_back(e);
  }
  return roots;
}

}  // namespace ferrowand
