// The steps of a map that can be taken back, and the one that can be done again. After an undo the
// map is what it was, in the same order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>

#include "document/undo_step.h"

namespace ferrowand {

class UndoStore {
 public:
  // Names a state of the document: an equal one is the same state, come back to by undo or redo.
  using StateId = std::uint64_t;

  // `levels` is how many steps are kept; at least 1.
  explicit UndoStore(std::size_t levels) : levels_(levels > 0 ? levels : 1) {}

  // The option changed: the oldest steps beyond it go.
  void SetLevels(std::size_t levels);

  // A step that has been done. When there are too many the oldest is dropped with what it holds,
  // and what could be redone cannot be any more.
  void Push(UndoStep step);

  bool CanUndo() const { return !steps_.empty(); }
  bool CanRedo() const { return redo_.has_value(); }
  std::size_t StepCount() const { return steps_.size(); }
  StateId State() const { return state_; }
  // Both announce what comes and goes.
  void Undo();
  // Applies the step last undone again, as a step of its own. Only the last one can be.
  void Redo();
  // For a document that is another one now.
  void Clear();

 private:
  // A step and the states on its two sides.
  struct Done {
    UndoStep step;
    StateId before, after;
  };

  void Append(Done done);

  std::size_t levels_;
  std::deque<Done> steps_;
  std::optional<Done> redo_;
  StateId state_ = 0, newest_ = 0;
};

}  // namespace ferrowand
