#include "document/undo_store.h"

#include <algorithm>
#include <utility>

namespace ferrowand {

void UndoStore::SetLevels(std::size_t levels) {
  levels_ = std::max<std::size_t>(levels, 1);
  KeepWithin();
}

void UndoStore::SetBudget(std::uint64_t bytes) {
  budget_ = bytes;
  KeepWithin();
}

void UndoStore::KeepWithin() {
  while (steps_.size() > levels_ || (steps_.size() > 1 && bytes_ > budget_)) {
    bytes_ -= steps_.front().bytes;
    steps_.pop_front();
  }
}

void UndoStore::Append(Done done) {
  state_ = done.after;
  steps_.push_back(std::move(done));
}

void UndoStore::Weigh() {
  Done& newest = steps_.back();
  newest.bytes = newest.step.Bytes();
  bytes_ += newest.bytes;
  KeepWithin();
}

void UndoStore::Push(UndoStep step) {
  redo_.reset();
  Append({std::move(step), state_, ++newest_});
  Weigh();
}

void UndoStore::Undo() {
  if (steps_.empty()) return;
  redo_.emplace(std::move(steps_.back()));
  steps_.pop_back();
  bytes_ -= redo_->bytes;
  state_ = redo_->before;
  redo_->step.ReverseAndAnnounce();
}

void UndoStore::Redo() {
  if (!redo_) return;
  Append(std::move(*redo_));
  redo_.reset();
  steps_.back().step.ReverseAndAnnounce();
  Weigh();
}

void UndoStore::Clear() {
  steps_.clear();
  bytes_ = 0;
  redo_.reset();
  state_ = ++newest_;
}

}  // namespace ferrowand
