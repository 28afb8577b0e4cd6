#include "operations/regroup.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/reach.h"
#include "operations/blocks.h"
#include "operations/layers.h"
#include "operations/new_entity.h"
#include "operations/template_editing.h"

namespace ferrowand {
namespace {

// None of them within another; in their order.
std::vector<entity*> Movable(std::span<entity* const> objects, const entity& holder) {
  std::vector<entity*> movable;
  std::ranges::copy_if(objects, std::back_inserter(movable), [&](const entity* object) {
    return !OnlyHolds(*object) && !holder.IsWithin(*object);
  });
  const std::unordered_set<const entity*> all(movable.begin(), movable.end());
  std::erase_if(movable, [&](const entity* object) {
    const entity* at = object->Parent();
    while (at && !all.contains(at)) at = at->Parent();
    return at || object->Parent() == &holder;
  });
  return movable;
}

}  // namespace

EditResult MoveInto(Map& map, std::span<entity* const> objects, entity& holder) {
  const std::vector<entity*> movable = Movable(objects, holder);
  if (movable.empty()) return EditResult::Done;
  const std::vector<const entity*> looked(movable.begin(), movable.end());
  if (!FitsBelow(holder, looked, 1)) return EditResult::TooDeep;
  std::vector<entity*> homes;
  std::unordered_map<const entity*, std::vector<entity*>> byHome;
  for (entity* object : movable) {
    entity& home = HomeFor(holder, *object);
    if (object->Parent() == &home) continue;
    if (byHome[&home].empty()) homes.push_back(&home);
    byHome[&home].push_back(object);
  }
  EditStep step(map);
  for (entity* home : homes) MoveObjects(step, byHome[home], *home);
  return EditResult::Done;
}

EditResult RenameObject(Map& map, entity& object, std::string_view name) {
  const EntityKind kind = object.getClass()->Kind();
  if (kind == EntityKind::TemplateClass) return RenameTemplate(map, object, name);
  if (kind == EntityKind::Layer) {
    RenameLayer(map, object, name);
    return EditResult::Done;
  }
  const std::string fitName = FitForKey(name);
  const char* before = object.GetKey("XMPentityname");
  if (fitName == (before ? before : "")) return EditResult::Done;
  EditStep step(map);
  step.ChangeKeys(object);
  object.RemoveKeys("XMPentityname");
  if (!fitName.empty()) object.SetKey("XMPentityname", fitName);
  return EditResult::Done;
}

EditResult ShowObjects(Map& map, std::span<entity* const> objects) {
  std::unordered_set<const entity*> looked;
  EditStep step(map);
  for (entity* object : objects) {
    for (entity* e = object; e->Parent() && looked.insert(e).second; e = e->Parent()) {
      const EntityKind kind = e->getClass()->Kind();
      if (IsOpen(*e) || (kind != EntityKind::Hidden && kind != EntityKind::Layer)) continue;
      step.ChangeKeys(*e);
      if (kind == EntityKind::Hidden) {
        ShowEntity(*e);
      } else {
        PutLayerState(*e, false, false);
      }
    }
  }
  return EditResult::Done;
}

}  // namespace ferrowand
