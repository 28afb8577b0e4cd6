// One thing that a user does to a map: everything done to it while the step is open is undone and
// redone together.
#pragma once

#include <cstddef>

#include "document/entity.h"

namespace ferrowand {

class Map;

// Open while it lives; ends by its destruction. A step in which nothing happened leaves no trace;
// any other marks the map as modified. Steps do not nest.
class EditStep {
 public:
  explicit EditStep(Map& map);
  ~EditStep();
  EditStep(const EditStep&) = delete;
  EditStep& operator=(const EditStep&) = delete;

  Map& map() const { return map_; }

  // To be said before the object, or anything below it, is changed: the step keeps a copy, and the
  // object stays what it is, where it is, selected or not. Said again in the same step for the same
  // object it does nothing.
  void Change(entity& e);
  // The same for the keys alone, of an object that holds others (a layer, the world itself).
  void ChangeKeys(entity& e);
  // Out of the map, into the step's keeping. Leaves the selection too.
  void Remove(entity& e);
  // Into the map: to the end of the parent's children. The map itself puts it into its current
  // layer. Gives the object, which belongs to the map now.
  entity& Add(EntityPtr e, entity& parent);
  // To another parent, at its end.
  void Move(entity& e, entity& parent);

  // Takes everything back, as if the step had never been opened.
  void Cancel();

 private:
  Map& map_;
  std::size_t index_;
};

}  // namespace ferrowand
