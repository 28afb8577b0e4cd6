#include "operations/visibility.h"

#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"

namespace ferrowand {
namespace {

void KeepHidden(EditStep& step, entity& e) {
  if (e.getClass()->Kind() == EntityKind::Hidden) step.ChangeKeys(e);
  for (const EntityPtr& child : e.getEntityList()) KeepHidden(step, *child);
}

}  // namespace

EditResult HideSelection(Map& map) {
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  EditStep step(map);
  for (entity* root : roots) {
    step.ChangeKeys(*root);
    HideEntity(*root);
  }
  return EditResult::Done;
}

EditResult ShowHidden(Map& map) {
  EditStep step(map);
  KeepHidden(step, map);
  ShowHiddenEntities(map);
  return EditResult::Done;
}

}  // namespace ferrowand
