// What each editing step took out of a map and put into it, so that the step can be taken back and
// applied again. Objects keep their places: after an undo the map is what it was, in the same
// order.
#pragma once

#include <cstddef>
#include <deque>
#include <vector>

#include "document/entity.h"

namespace ferrowand {

class UndoStore {
 public:
  // `levels` is how many steps are kept; at least 1.
  explicit UndoStore(std::size_t levels) : levels_(levels > 0 ? levels : 1) {}

  // The option changed: the oldest steps beyond it go.
  void SetLevels(std::size_t levels);

  // Opens a step and gives its index. Every step but a redo clears what could be redone. When the
  // store is full the oldest step is dropped with what it holds.
  std::size_t BeginStep(bool clearRedo);
  // Detaches `e` from its parent, in the step's keeping.
  void Remove(std::size_t step, entity& e);
  // Puts the changed copy in the place of `e`, which goes into the step's keeping. Cheaper than
  // taking one out and the other in: nothing else moves. Gives the copy.
  entity& Replace(std::size_t step, entity& e, EntityPtr copy);
  // `e` has just been given to its parent.
  void RecordAdded(std::size_t step, entity& e);

  bool CanUndo() const { return !steps_.empty(); }
  bool CanRedo() const { return !redo_.empty(); }
  std::size_t StepCount() const { return steps_.size(); }
  void Undo();
  // Applies the step last undone again, as a step of its own. Only the last one can be.
  void Redo();
  void Clear();

 private:
  // One place in the map, in the order in which things happened.
  struct Change {
    entity* parent;
    std::size_t index;
    entity* object;  // in the map now, or null
    EntityPtr kept;  // out of the map now, or null
  };
  using Step = std::vector<Change>;

  static void Reverse(Change& change);
  static Step ReverseAll(Step step);

  std::size_t levels_;
  std::deque<Step> steps_;
  Step redo_;
};

}  // namespace ferrowand
