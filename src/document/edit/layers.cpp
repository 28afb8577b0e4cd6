#include "document/edit/layers.h"

#include <algorithm>
#include <string>

#include "document/edit/new_entity.h"
#include "document/edit/selection.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "gamedata/entity_class.h"
#include "gamedata/native_classes.h"

namespace ferrowand {
namespace {

void DropUnreachable(Map& map) {
  std::erase_if(map.selection, [](const entity* e) { return !IsReachable(*e); });
}

}  // namespace

entity& InsertLayer(Map& map, std::string_view name) {
  EditStep step(map);
  entity& layer = *map.AddLayer(FitForKey(name));
  step.Added(layer);
  return layer;
}

void SetLayerState(Map& map, entity& layer, bool hidden, bool disabled) {
  EditStep step(map);
  step.ChangeKeys(layer);
  layer.SetKey("XMPstate",
               std::to_string((hidden ? LAYER_HIDDEN : 0) | (disabled ? LAYER_DISABLED : 0)));
  DropUnreachable(map);
}

void RenameLayer(Map& map, entity& layer, std::string_view name) {
  EditStep step(map);
  step.ChangeKeys(layer);
  layer.SetKey("XMPentityname", FitForKey(name));
}

EditResult MoveSelectionToLayer(Map& map, entity& layer) {
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  EditStep step(map);
  MoveObjects(step, roots, layer);
  DropUnreachable(map);
  return EditResult::Done;
}

EditResult RemoveLayer(Map& map, entity& layer) {
  const auto isOther = [&](const EntityPtr& e) {
    return e.get() != &layer && e->getClass()->Kind() == EntityKind::Layer;
  };
  const auto other = std::ranges::find_if(map.getEntityList(), isOther);
  if (other == map.getEntityList().end()) return EditResult::LastLayer;
  entity& heir = **other;
  std::vector<entity*> objects;
  for (const EntityPtr& child : layer.getEntityList()) objects.push_back(child.get());
  EditStep step(map);
  step.Move(objects, heir);
  step.Remove(layer);
  DropUnreachable(map);
  return EditResult::Done;
}

}  // namespace ferrowand
