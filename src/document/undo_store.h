// The steps of a map that can be taken back, and the one that can be done again. After an undo the
// map is what it was, in the same order.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>

#include "document/undo_step.h"

namespace ferrowand {

class UndoStore {
 public:
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
  void Undo();
  // Applies the step last undone again, as a step of its own. Only the last one can be.
  void Redo();
  void Clear();

 private:
  void Append(UndoStep step);

  std::size_t levels_;
  std::deque<UndoStep> steps_;
  std::optional<UndoStep> redo_;
};

}  // namespace ferrowand
