#include "operations/groups.h"

#include "document/classes/entity_class.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/blocks.h"
#include "operations/face_texture.h"
#include "operations/new_entity.h"

namespace ferrowand {
namespace {

constexpr const char* GROUP_KEY = "groupFather";

EditResult Settle(EditStep& step, entity& group, Texture* texture = nullptr) {
  entity* const one = &group;
  if (!SettleBlocks(step, {&one, 1})) {
    step.Cancel();
    return EditResult::NoBrushes;
  }
  if (texture) SetTextureBelow(step, group, *texture);
  Select(step.map(), &group, false);
  return EditResult::Done;
}

// Lights and doors among them end beside an entity that is to hold brushes.
EditResult GatherIn(Map& map, EntityPtr group, const std::vector<entity*>& roots,
                    Texture* texture = nullptr) {
  entity* parent = roots.front()->Parent();
  for (const entity* root : roots) parent = &OutsideItself(*parent, *root);
  const std::vector<const entity*> members(roots.begin(), roots.end());
  if (!FitsBelow(*parent, members, 1)) return EditResult::TooDeep;
  EditStep step(map);
  entity& added = step.Add(std::move(group), *parent);
  MoveObjects(step, roots, added);
  return Settle(step, added, texture);
}

}  // namespace

bool IsGroup(const entity& e) {
  return !e.getEntityList().empty() && e.Parent() && e.getClass()->Kind() != EntityKind::Layer;
}

EntityPtr NewGroup(const Map& map, std::string_view name) {
  EntityPtr group = NewEntity(map, "brush");
  group->SetKey("XMPentityname", FitForKey(name));
  group->SetKey(GROUP_KEY, "1");
  return group;
}

EditResult GroupSelection(Map& map) {
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  return GatherIn(map, NewGroup(map, UnusedName(map, "group")), roots);
}

EditResult GroupSelectionAs(Map& map, const EntityClass& entityClass, Texture* texture) {
  const EditResult fit = CheckClass(*map.classSet, entityClass.classname);
  if (fit != EditResult::Done) return fit;
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  entity& first = *roots.front();
  if (roots.size() > 1 || !first.GetKey(GROUP_KEY)) {
    return GatherIn(map, NewEntity(map, entityClass.classname), roots, texture);
  }
  EditStep step(map);
  step.ChangeKeys(first);
  first.SetKey("classname", entityClass.classname);
  // The game would take it for one of its own.
  first.RemoveKeys(GROUP_KEY);
  if (entityClass.hasTilde) first.SetFlags(entityClass.tildeValue);
  return Settle(step, first, texture);
}

EditResult UngroupSelection(Map& map) {
  std::vector<entity*> groups, freed;
  for (entity* root : SelectedRoots(map)) {
    if (!IsGroup(*root)) {
      freed.push_back(root);
      continue;
    }
    groups.push_back(root);
    for (const EntityPtr& child : root->getEntityList()) freed.push_back(child.get());
  }
  if (groups.empty()) return EditResult::NotAGroup;
  EditStep step(map);
  for (entity* group : groups) {
    std::vector<entity*> members;
    for (const EntityPtr& child : group->getEntityList()) members.push_back(child.get());
    step.Move(members, *group->Parent());
  }
  // One with faces of its own stays, as a brush among others.
  std::erase_if(groups, [](const entity* group) { return group->brush.HasText(); });
  step.Remove(groups);
  Select(map, freed, false);
  return EditResult::Done;
}

EditResult SetAsLeading(Map& map) {
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.size() > 1 || (roots.size() == 1 && !IsGroup(*roots.front()))) {
    return EditResult::NotAGroup;
  }
  entity* const group = roots.empty() ? nullptr : roots.front();
  map.SetLeadingGroup(group == map.leadingGroup() ? nullptr : group);
  return EditResult::Done;
}

}  // namespace ferrowand
