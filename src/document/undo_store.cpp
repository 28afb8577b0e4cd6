#include "document/undo_store.h"

#include <algorithm>
#include <utility>

namespace ferrowand {

void UndoStore::SetLevels(std::size_t levels) {
  levels_ = std::max<std::size_t>(levels, 1);
  while (steps_.size() > levels_) steps_.pop_front();
}

void UndoStore::Append(Done done) {
  if (steps_.size() >= levels_) steps_.pop_front();
  state_ = done.after;
  steps_.push_back(std::move(done));
}

void UndoStore::Push(UndoStep step) {
  redo_.reset();
  Append({std::move(step), state_, ++newest_});
}

void UndoStore::Undo() {
  if (steps_.empty()) return;
  redo_.emplace(std::move(steps_.back()));
  steps_.pop_back();
  state_ = redo_->before;
  redo_->step.ReverseAndAnnounce();
}

void UndoStore::Redo() {
  if (!redo_) return;
  Append(std::move(*redo_));
  redo_.reset();
  steps_.back().step.ReverseAndAnnounce();
}

void UndoStore::Clear() {
  steps_.clear();
  redo_.reset();
  state_ = ++newest_;
}

}  // namespace ferrowand
