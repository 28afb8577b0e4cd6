#include "operations/insert.h"

#include <utility>

#include "document/classes/class_set.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/new_entity.h"

namespace ferrowand {
EditResult InsertEntity(Map& map, const EntityClass& entityClass, const Vec3& at) {
  return AddAndSelect(map, NewEntity(map, entityClass.classname), at);
}

EditResult InsertCopy(Map& map, const entity& prototype, const Vec3& at) {
  EntityPtr copy = prototype.Copy();
  copy->ResolveClasses(*map.classSet);
  copy->ResolveTextures(map.wads);
  return AddAndSelect(map, std::move(copy), at);
}

EditResult DeleteSelection(Map& map) {
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  EditStep step(map);
  RemoveObjects(step, roots);
  return EditResult::Done;
}

}  // namespace ferrowand
