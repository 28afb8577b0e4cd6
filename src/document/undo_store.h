// The steps of a map that can be taken back, and those that can be done again. After an undo the
// map is what it was, in the same order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <string>
#include <vector>

#include "document/undo_step.h"

namespace ferrowand {

class UndoStore {
 public:
  // Names a state of the document: an equal one is the same state, come back to by undo or redo.
  using StateId = std::uint64_t;

  // `levels` is how many steps are kept; at least 1.
  explicit UndoStore(std::size_t levels) : levels_(levels > 0 ? levels : 1) {}

  // The options changed: the oldest steps beyond them go. The newest step is kept whatever it
  // holds; at first there is no budget.
  void SetLevels(std::size_t levels);
  void SetBudget(std::uint64_t bytes);

  // A step that has been done: what could be redone cannot be any more. When there are too many, or
  // they hold too much, the oldest are dropped with what they hold; then those that would be redone
  // last.
  void Push(UndoStep step);

  bool CanUndo() const { return !steps_.empty(); }
  bool CanRedo() const { return !redo_.empty(); }
  std::size_t StepCount() const { return steps_.size(); }
  // What all steps hold.
  std::uint64_t Bytes() const { return bytes_; }
  StateId State() const { return state_; }
  // Of the step that would be taken back; empty when there is none.
  std::string NewestName() const { return steps_.empty() ? "" : steps_.back().step.name; }
  // Both announce what comes and goes.
  void Undo();
  // Takes the newest step back for good: it can neither be redone nor named any more. `taken` is
  // what that has changed; it names no copies of what has been.
  void TakeBack(MapChange& taken);
  // Applies the step last undone again, as a step of its own; then the one undone before it.
  void Redo();
  // For a document that is another one now.
  void Clear();

 private:
  // A step and the states on its two sides.
  struct Done {
    UndoStep step;
    StateId before, after;
    std::uint64_t bytes = 0;
  };

  // Counts the step as it is kept now.
  void Weigh(Done& done);
  void KeepWithin();

  std::size_t levels_;
  std::uint64_t budget_ = std::numeric_limits<std::uint64_t>::max();
  std::uint64_t bytes_ = 0;
  std::deque<Done> steps_;
  std::vector<Done> redo_;  // the next one last
  StateId state_ = 0, newest_ = 0;
};

}  // namespace ferrowand
