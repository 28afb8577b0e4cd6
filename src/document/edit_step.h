// One thing that a user does to a map: everything done to it while the step is open is undone and
// redone together.
#pragma once

#include <span>
#include <string>
#include <unordered_set>
#include <vector>

#include "document/announcement.h"
#include "document/entity.h"
#include "document/undo_step.h"

namespace ferrowand {

// Open while it lives; ends by its destruction, which announces what it did. A step in which
// nothing happened leaves no trace; any other makes another state of the map. Steps do not nest,
// and nothing is undone while one is open.
class EditStep {
 public:
  explicit EditStep(Map& map);
  ~EditStep();
  EditStep(const EditStep&) = delete;
  EditStep& operator=(const EditStep&) = delete;

  Map& map() const { return map_; }

  // To be said before the object, or any object below it, is changed: the step keeps copies, and
  // the objects stay what they are, where they are, selected or not. Said again in the same step
  // for the same object it does nothing. Objects below it come and go by the operations below only.
  void Change(entity& e);
  // Instead, where all that goes along with the object is moved by the vector, with its textures or
  // not, and nothing else happens to it in this step: what need not be copied is not.
  void ChangeByMove(entity& e, const Vec3& by);
  // The same for the object alone, when it holds others (a layer, the world itself).
  void ChangeKeys(entity& e);
  // Out of the map, into the step's keeping. Leaves the selection too. Many go at the cost of a
  // few.
  void Remove(entity& e);
  void Remove(std::span<entity* const> objects);
  // Into the map: to the end of the parent's children. The map itself puts it where new objects
  // go. Gives the object, which belongs to the map now.
  entity& Add(EntityPtr e, entity& parent);
  // For what has been put into the map already.
  void Added(entity& e) { step_.Added(e); }
  // To another parent, which lies below none of them, at its end.
  void Move(entity& e, entity& parent);
  void Move(std::span<entity* const> objects, entity& parent);

  // The map uses the classes of that file from now on.
  void ChooseClasses(const std::string& name) { step_.ChooseClasses(name); }

  // It uses the WADs of these names from now on.
  void ChooseWads(const std::vector<std::string>& names) { step_.ChooseWads(names); }

  // To name the step by these, where others go along with what is done. They outlive it.
  void NameBy(std::span<entity* const> objects) { named_.assign(objects.begin(), objects.end()); }

  // Told behind what the step did; more than one one after the other.
  void Remark(const std::string& text);

  // Takes everything back, as if the step had never been opened.
  void Cancel();

 private:
  Map& map_;
  ChangeScope scope_;
  UndoStep step_;
  std::unordered_set<const entity*> kept_;
  std::vector<const entity*> named_;
  std::string remarks_;
  std::vector<entity*> selectionBefore_;
  entity* currentLayerBefore_;
  entity* leadingGroupBefore_;
};

}  // namespace ferrowand
