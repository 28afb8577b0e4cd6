#include "document/undo_store.h"

#include <algorithm>
#include <utility>

#include "document/map.h"

namespace ferrowand {

void UndoStore::SetLevels(std::size_t levels) {
  levels_ = std::max<std::size_t>(levels, 1);
  while (steps_.size() > levels_) steps_.pop_front();
}

std::size_t UndoStore::BeginStep(bool clearRedo) {
  if (clearRedo) redo_.clear();
  if (steps_.size() >= levels_) steps_.pop_front();
  steps_.emplace_back();
  return steps_.size() - 1;
}

void UndoStore::Remove(std::size_t step, entity& e) {
  entity& parent = *e.Parent();
  const std::size_t index = parent.IndexOf(e);
  steps_[step].push_back({&parent, index, nullptr, parent.TakeChild(index)});
}

entity& UndoStore::Replace(std::size_t step, entity& e, EntityPtr copy) {
  entity& parent = *e.Parent();
  const std::size_t index = parent.IndexOf(e);
  entity& newcomer = *copy;
  steps_[step].push_back({&parent, index, &newcomer, parent.ReplaceChild(index, std::move(copy))});
  return newcomer;
}

void UndoStore::RecordAdded(std::size_t step, entity& e) {
  entity& parent = *e.Parent();
  steps_[step].push_back({&parent, parent.IndexOf(e), &e, nullptr});
}

// What is in the map and what is kept change places. The index is where things stood; it is only
// trusted as far as the list still bears it out.
void UndoStore::Reverse(Change& change) {
  entity& parent = *change.parent;
  const std::size_t size = parent.getEntityList().size();
  const std::size_t index = change.object ? parent.IndexOf(*change.object) : change.index;
  if (change.object && index == size) return;
  entity* const entering = change.kept.get();
  if (!change.object) {
    parent.InsertChild(std::move(change.kept), std::min(index, size));
  } else if (entering) {
    change.kept = parent.ReplaceChild(index, std::move(change.kept));
  } else {
    change.kept = parent.TakeChild(index);
  }
  change.object = entering;
}

UndoStore::Step UndoStore::ReverseAll(Step step) {
  if (step.empty()) return step;
  // The selection is put aside, so that it is looked through once and not for every change.
  Map* const map = step.back().parent->OwningMap();
  std::vector<entity*> selection;
  if (map) selection.swap(map->selection);
  std::ranges::reverse(step);
  std::ranges::for_each(step, Reverse);
  if (map) {
    std::erase_if(selection, [map](const entity* e) { return e->OwningMap() != map; });
    map->selection.swap(selection);
  }
  return step;
}

void UndoStore::Undo() {
  if (steps_.empty()) return;
  redo_.clear();
  redo_ = ReverseAll(std::move(steps_.back()));
  steps_.pop_back();
}

void UndoStore::Redo() {
  if (redo_.empty()) return;
  const std::size_t step = BeginStep(false);
  steps_[step] = ReverseAll(std::exchange(redo_, {}));
}

void UndoStore::Clear() {
  steps_.clear();
  redo_.clear();
}

}  // namespace ferrowand
