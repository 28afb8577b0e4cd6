#include "operations/class_change.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/path_text.h"
#include "document/classes/class_set.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/blocks.h"
#include "operations/entity_keys.h"
#include "operations/face_texture.h"
#include "operations/new_entity.h"
#include "operations/spawn_flags.h"

namespace ferrowand {
namespace {

EditResult CheckFit(const entity& e, const EntityClass& newClass) {
  if (!e.Parent()) return EditResult::SecondWorld;
  const bool hasBrushes = HoldsBrushes(e);
  switch (newClass.Kind()) {
    case EntityKind::Unknown:
      return EditResult::Done;
    case EntityKind::Brush:
      return hasBrushes || !e.HasOrigin() ? EditResult::Done : EditResult::EditorsOwn;
    default:
      break;
  }
  if (newClass.isPointToo) return EditResult::Done;
  if (newClass.isMadeOfBrushes) return hasBrushes ? EditResult::Done : EditResult::NoBrushes;
  return hasBrushes ? EditResult::HoldsBrushes : EditResult::Done;
}

bool IsBrushEntity(const entity& e) {
  return e.IsOwnBlock() && e.getClass()->Kind() != EntityKind::TemplateInstance && HoldsBrushes(e);
}

// What of a selected object can be a part of a brush entity: brushes, groups of them, and what
// other brush entities hold.
void CollectParts(entity& e, std::vector<entity*>& parts) {
  if (!HoldsBrushes(e)) return;
  if (!IsBrushEntity(e) || e.brush.HasText()) {
    parts.push_back(&e);
    return;
  }
  for (const EntityPtr& child : e.getEntityList()) CollectParts(*child, parts);
}

// The brush entity that the object is a part of; null for none.
entity* EntityAround(const entity& e) {
  entity* at = e.Parent();
  while (at && at->Parent() && !IsBrushEntity(*at)) at = at->Parent();
  return at && at->Parent() ? at : nullptr;
}

std::string_view UsualTexture(const EntityClass& entityClass) {
  return EqualNoCase(entityClass.Prefix(), "trigger") ? "trigger" : "";
}

// Faces of its own make an entity a brush that is one, once it has no other keys.
void MakePlain(EditStep& step, entity& e) {
  step.ChangeKeys(e);
  while (e.numkeys() > 0) e.RemoveKey(e.numkeys() - 1);
  e.SetKey("classname", "brush");
  e.SetFlags(e.getClass()->tildeValue);
}

// Also where an origin would have it stay as a point.
void RemoveEmptied(EditStep& step, entity* e) {
  const bool isInMap = e && e->Parent();
  if (isInMap && e->getEntityList().empty() && !e->brush.HasText()) step.Remove(*e);
}

bool FreeParts(EditStep& step, entity& root, std::vector<entity*>& freed) {
  const bool isWhole = IsBrushEntity(root);
  entity* const holder = isWhole ? &root : EntityAround(root);
  if (!holder) return false;
  std::vector<entity*> parts;
  if (isWhole) {
    for (const EntityPtr& child : root.getEntityList()) parts.push_back(child.get());
  } else {
    parts.push_back(&root);
  }
  freed.insert(freed.end(), parts.begin(), parts.end());
  if (isWhole && root.brush.HasText()) {
    MakePlain(step, root);
    freed.push_back(&root);
  }
  MoveObjects(step, parts, *holder->Parent());
  RemoveEmptied(step, holder);
  return true;
}

}  // namespace

EditResult ChangeClass(Map& map, std::span<entity* const> objects, std::string_view classname) {
  if (objects.empty()) return EditResult::NothingSelected;
  for (const EditResult fit : {CheckKeyValue(classname), CheckClass(*map.classSet, classname)}) {
    if (fit != EditResult::Done) return fit;
  }
  if (classname.empty()) return EditResult::KeyStays;
  const EntityClass& newClass = map.classSet->FindClass(classname);
  for (const entity* e : objects) {
    if (const EditResult fit = CheckFit(*e, newClass); fit != EditResult::Done) return fit;
  }
  const std::string told = ChangedFlags(objects, newClass);
  {
    EditStep step(map);
    for (entity* e : objects) {
      const char* before = e->GetKey("classname");
      if (before && classname == before && e->getClass() == &newClass) continue;
      step.ChangeKeys(*e);
      ReplaceKey(*e, "classname", classname);
      if (newClass.hasTilde) e->SetFlags(newClass.tildeValue);
    }
    if (!SettleBlocks(step, objects)) {
      step.Cancel();
      return EditResult::NoBrushes;
    }
  }
  if (!told.empty()) map.ShowStatus(told);
  return EditResult::Done;
}

EditResult SetClassOfSelection(Map& map, const EntityClass& entityClass) {
  return ChangeClass(map, SelectedRoots(map), entityClass.classname);
}

entity* SelectedToTieTo(const Map& map) {
  entity* to = nullptr;
  bool hasOthers = false;
  for (entity* root : SelectedRoots(map)) {
    if (!to && IsBrushEntity(*root) && !root->getEntityList().empty()) {
      to = root;
    } else {
      hasOthers |= HoldsBrushes(*root);
    }
  }
  return hasOthers ? to : nullptr;
}

EditResult TieToEntity(Map& map, entity& brushEntity, Texture* texture) {
  std::vector<entity*> parts, holders;
  for (entity* root : SelectedRoots(map)) {
    if (root->IsWithin(brushEntity)) continue;
    CollectParts(*root, parts);
    holders.push_back(IsBrushEntity(*root) ? root : EntityAround(*root));
  }
  if (parts.empty()) return EditResult::NoBrushes;
  const std::vector<const entity*> members(parts.begin(), parts.end());
  if (!FitsBelow(brushEntity, members, 0)) return EditResult::TooDeep;
  entity* const one = &brushEntity;
  EditStep step(map);
  for (entity* part : parts) {
    if (IsBrushEntity(*part)) MakePlain(step, *part);
    if (texture) SetTextureBelow(step, *part, *texture);
  }
  MoveObjects(step, parts, brushEntity);
  for (entity* holder : holders) RemoveEmptied(step, holder);
  if (!SettleBlocks(step, {&one, 1})) {
    step.Cancel();
    return EditResult::NoBrushes;
  }
  Select(map, &brushEntity, false);
  return EditResult::Done;
}

EditResult TieToWorld(Map& map) {
  std::vector<entity*> freed;
  bool isAny = false;
  EditStep step(map);
  for (entity* root : SelectedRoots(map)) isAny |= FreeParts(step, *root, freed);
  if (!isAny) return EditResult::NoBrushEntity;
  Select(map, freed, false);
  return EditResult::Done;
}

Texture* UsualTextureIn(const Map& map, const EntityClass& entityClass) {
  const std::string_view name = UsualTexture(entityClass);
  Texture* const texture = name.empty() ? nullptr : map.wads.FindTexture(name);
  return texture && EqualNoCase(texture->Name(), name) ? texture : nullptr;
}

}  // namespace ferrowand
