// One thing that a user does bit by bit and sees as it goes: a number that is typed, a drag. Each
// bit takes the last one back and does all of it anew, so that one step of undo is left at the end.
#pragma once

#include <functional>

#include "document/announcement.h"
#include "document/undo_store.h"

namespace ferrowand {

class EditStep;
class Map;

class LiveStep {
 public:
  // The map outlives it.
  explicit LiveStep(Map& map);

  // Whether it can go on: nothing else has been done to the map meanwhile.
  bool IsNewest() const;
  // All of it, from where it began. The objects that it changes stay in the map.
  void Do(const std::function<void(EditStep&)>& change);
  // As if it had never begun.
  void Cancel();

 private:
  MapChange TakeBack();

  Map& map_;
  UndoStore::StateId before_, after_;
};

}  // namespace ferrowand
