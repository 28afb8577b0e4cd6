#include "document/edit_step.h"

#include <utility>

#include "document/classes/template_index.h"
#include "document/map.h"

namespace ferrowand {

EditStep::EditStep(Map& map)
    : map_(map),
      step_(map),
      selectionBefore_(map.selection),
      currentLayerBefore_(map.currentLayer),
      leadingGroupBefore_(map.leadingGroup) {
  map.Templates().SetStepOpen(true);
}

EditStep::~EditStep() {
  map_.Templates().SetStepOpen(false);
  if (step_.IsEmpty()) return;
  step_.Finish();
  map_.undo.Push(std::move(step_));
  map_.modified = true;
}

void EditStep::Change(entity& e) {
  ChangeKeys(e);
  for (const EntityPtr& child : e.getEntityList()) Change(*child);
}

void EditStep::ChangeKeys(entity& e) {
  if (!kept_.insert(&e).second) return;
  step_.Keep(e);
  e.Touch();
}

void EditStep::Remove(entity& e) {
  entity* const one = &e;
  Remove({&one, 1});
}

void EditStep::Remove(std::span<entity* const> objects) {
  step_.Move(objects, nullptr);
}

entity& EditStep::Add(EntityPtr e, entity& parent) {
  entity& added = *parent.AddChild(std::move(e));
  step_.Added(added);
  return added;
}

void EditStep::Move(entity& e, entity& parent) {
  entity* const one = &e;
  Move({&one, 1}, parent);
}

void EditStep::Move(std::span<entity* const> objects, entity& parent) {
  step_.Move(objects, &parent);
}

void EditStep::Cancel() {
  step_.Reverse();
  step_ = UndoStep(map_);
  kept_.clear();
  map_.selection = selectionBefore_;
  map_.currentLayer = currentLayerBefore_;
  map_.leadingGroup = leadingGroupBefore_;
}

}  // namespace ferrowand
