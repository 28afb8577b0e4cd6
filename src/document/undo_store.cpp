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
  while (redo_.size() > 1 && bytes_ > budget_) {
    bytes_ -= redo_.front().bytes;
    redo_.erase(redo_.begin());
  }
}

void UndoStore::Weigh(Done& done) {
  bytes_ -= done.bytes;
  done.bytes = done.step.Bytes();
  bytes_ += done.bytes;
}

void UndoStore::Push(UndoStep step) {
  for (const Done& done : redo_) bytes_ -= done.bytes;
  redo_.clear();
  steps_.push_back({std::move(step), state_, ++newest_});
  state_ = newest_;
  Weigh(steps_.back());
  KeepWithin();
}

void UndoStore::Undo() {
  if (steps_.empty()) return;
  redo_.push_back(std::move(steps_.back()));
  steps_.pop_back();
  state_ = redo_.back().before;
  redo_.back().step.ReverseAndAnnounce("Undo");
  Weigh(redo_.back());
  KeepWithin();
}

void UndoStore::TakeBack(MapChange& taken) {
  if (steps_.empty()) return;
  Done& newest = steps_.back();
  newest.step.Reverse();
  newest.step.Describe(taken);
  taken.before.clear();
  bytes_ -= newest.bytes;
  state_ = newest.before;
  steps_.pop_back();
}

void UndoStore::Redo() {
  if (redo_.empty()) return;
  steps_.push_back(std::move(redo_.back()));
  redo_.pop_back();
  state_ = steps_.back().after;
  steps_.back().step.ReverseAndAnnounce("Redo");
  Weigh(steps_.back());
  KeepWithin();
}

void UndoStore::Clear() {
  steps_.clear();
  redo_.clear();
  bytes_ = 0;
  state_ = ++newest_;
}

}  // namespace ferrowand
