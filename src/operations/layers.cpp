#include "operations/layers.h"

#include <algorithm>
#include <string>

#include "base/number_text.h"
#include "document/classes/entity_class.h"
#include "document/classes/native_classes.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/new_entity.h"

namespace ferrowand {
namespace {

// Three decimals tell all 256 values apart.
std::string ComponentText(std::uint8_t component) {
  const int thousandths = (component * 1000 + 127) / 255;
  if (thousandths == 1000) return "1";
  std::string decimals = std::to_string(1000 + thousandths).substr(1);
  decimals.erase(decimals.find_last_not_of('0') + 1);
  return decimals.empty() ? "0" : "0." + decimals;
}

}  // namespace

std::vector<entity*> LayersOf(const Map& map) {
  std::vector<entity*> layers;
  for (const EntityPtr& child : map.getEntityList()) {
    if (child->getClass()->Kind() == EntityKind::Layer) layers.push_back(child.get());
  }
  return layers;
}

entity& InsertLayer(Map& map, std::string_view name) {
  const std::string fitName = FitForKey(name);
  EditStep step(map);
  entity& layer = *map.AddLayer(fitName.empty() ? UnusedName(map, "layer") : fitName);
  step.Added(layer);
  return layer;
}

void MakeLayerCurrent(Map& map, entity& layer) {
  ChangeScope scope(map);
  map.SetCurrentLayer(&layer);
  map.SetLeadingGroup(nullptr);
  scope.Change().done = "New objects join the current layer";
}

void PutLayerState(entity& layer, bool hidden, bool disabled) {
  const char* before = layer.GetKey("XMPstate");
  const int others = (before ? ParseInt(before) : 0) & ~(LAYER_HIDDEN | LAYER_DISABLED);
  const int state = others | (hidden ? LAYER_HIDDEN : 0) | (disabled ? LAYER_DISABLED : 0);
  ReplaceKey(layer, "XMPstate", std::to_string(state));
}

void SetLayerState(Map& map, entity& layer, bool hidden, bool disabled) {
  EditStep step(map);
  step.ChangeKeys(layer);
  PutLayerState(layer, hidden, disabled);
}

void DescribeLayer(Map& map, entity& layer, std::string_view name, Colour colour) {
  const std::string fitName = FitForKey(name);
  const char* before = layer.GetKey("XMPentityname");
  const bool renames = !fitName.empty() && (!before || fitName != before);
  const bool recolours = colour != LayerColour(layer);
  if (!renames && !recolours) return;
  EditStep step(map);
  step.ChangeKeys(layer);
  if (renames) ReplaceKey(layer, "XMPentityname", fitName);
  if (!recolours) return;
  ReplaceKey(layer, "XMPcolourr", ComponentText(colour.red));
  ReplaceKey(layer, "XMPcolourg", ComponentText(colour.green));
  ReplaceKey(layer, "XMPcolourb", ComponentText(colour.blue));
}

void RenameLayer(Map& map, entity& layer, std::string_view name) {
  DescribeLayer(map, layer, name, LayerColour(layer));
}

void RecolourLayer(Map& map, entity& layer, Colour colour) {
  DescribeLayer(map, layer, {}, colour);
}

EditResult MoveSelectionToLayer(Map& map, entity& layer) {
  std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  // What stands there already stays where it is.
  std::erase_if(roots, [&](const entity* root) { return root->Parent() == &layer; });
  if (roots.empty()) return EditResult::Done;
  EditStep step(map);
  MoveObjects(step, roots, layer);
  return EditResult::Done;
}

EditResult RemoveLayer(Map& map, entity& layer) {
  std::vector<entity*> others = LayersOf(map);
  std::erase(others, &layer);
  if (others.empty()) return EditResult::LastLayer;
  const auto open =
      std::ranges::find_if(others, [](const entity* other) { return IsOpen(*other); });
  entity& heir = open == others.end() ? *others.front() : **open;
  if (!MayAddTo(heir)) return EditResult::Declined;
  std::vector<entity*> objects;
  for (const EntityPtr& child : layer.getEntityList()) objects.push_back(child.get());
  const bool wasCurrent = map.currentLayer() == &layer;
  EditStep step(map);
  step.Move(objects, heir);
  step.Remove(layer);
  if (wasCurrent) map.SetCurrentLayer(&heir);
  return EditResult::Done;
}

}  // namespace ferrowand
