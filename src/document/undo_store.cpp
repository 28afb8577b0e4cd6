#include "document/undo_store.h"

#include <algorithm>
#include <utility>

namespace ferrowand {

void UndoStore::SetLevels(std::size_t levels) {
  levels_ = std::max<std::size_t>(levels, 1);
  while (steps_.size() > levels_) steps_.pop_front();
}

void UndoStore::Append(UndoStep step) {
  if (steps_.size() >= levels_) steps_.pop_front();
  steps_.push_back(std::move(step));
}

void UndoStore::Push(UndoStep step) {
  redo_.reset();
  Append(std::move(step));
}

void UndoStore::Undo() {
  if (steps_.empty()) return;
  redo_.reset();
  UndoStep step = std::move(steps_.back());
  steps_.pop_back();
  step.Reverse();
  redo_ = std::move(step);
}

void UndoStore::Redo() {
  if (!redo_) return;
  UndoStep step = std::move(*redo_);
  redo_.reset();
  step.Reverse();
  Append(std::move(step));
}

void UndoStore::Clear() {
  steps_.clear();
  redo_.reset();
}

}  // namespace ferrowand
