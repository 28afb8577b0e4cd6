#include "document/edit_step.h"

#include <utility>

#include "document/action.h"
#include "document/classes/template_index.h"
#include "document/map.h"
#include "document/transform.h"

namespace ferrowand {

EditStep::EditStep(Map& map)
    : map_(map),
      scope_(map),
      step_(map),
      selectionBefore_(map.selection.Objects()),
      currentLayerBefore_(map.currentLayer()),
      leadingGroupBefore_(map.leadingGroup()) {
  map.Templates().SetStepOpen(true);
}

EditStep::~EditStep() {
  map_.Templates().SetStepOpen(false);
  if (step_.IsEmpty()) return;
  step_.Finish();
  MapChange& change = scope_.Change();
  step_.Describe(change);
  if (step_.IsEmpty()) return;
  step_.name = change.done = ActionInWords(map_, change, named_);
  if (!remarks_.empty()) change.done += (change.done.empty() ? "" : ", ") + remarks_;
  map_.undo.Push(std::move(step_));
}

void EditStep::Change(entity& e) {
  ChangeKeys(e);
  for (const EntityPtr& child : e.getEntityList()) Change(*child);
}

void EditStep::ChangeByMove(entity& e, const Vec3& by) {
  ForEachAlong(e, [&](entity& part) {
    if (!kept_.insert(&part).second) return;
    if (!step_.KeepWay(part, by)) step_.Keep(part);
    part.Touch();
  });
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

void EditStep::Remark(const std::string& text) {
  remarks_ += (remarks_.empty() ? "" : ", ") + text;
}

void EditStep::Move(entity& e, entity& parent) {
  entity* const one = &e;
  Move({&one, 1}, parent);
}

void EditStep::Move(std::span<entity* const> objects, entity& parent) {
  step_.Move(objects, &parent);
}

// Whoever has looked meanwhile looks again; what came is gone for good.
void EditStep::Cancel() {
  step_.Reverse();
  MapChange taken;
  step_.Describe(taken);
  MapChange& change = scope_.Change();
  change.box.Add(taken.box);
  change.everything |= taken.everything;
  step_ = UndoStep(map_);
  kept_.clear();
  map_.selection.Set(selectionBefore_);
  map_.SetCurrentLayer(currentLayerBefore_);
  map_.SetLeadingGroup(leadingGroupBefore_);
}

}  // namespace ferrowand
