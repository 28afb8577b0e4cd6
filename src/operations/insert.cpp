#include "operations/insert.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/path_text.h"
#include "document/classes/class_set.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/blocks.h"
#include "operations/new_entity.h"

namespace ferrowand {
namespace {

template <typename Change>
EditResult ChangeKeysOfSelection(Map& map, const Change& change) {
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  std::vector<entity*> reclassed;
  EditStep step(map);
  for (entity* root : roots) {
    const EntityClass* const before = root->getClass();
    step.ChangeKeys(*root);
    change(*root);
    if (root->getClass() != before) reclassed.push_back(root);
  }
  if (SettleBlocks(step, reclassed)) return EditResult::Done;
  step.Cancel();
  return EditResult::NoBrushes;
}

}  // namespace

EditResult InsertEntity(Map& map, const EntityClass& entityClass, const Vec3& at) {
  return AddAndSelect(map, NewEntity(map, entityClass.classname), at);
}

EditResult InsertCopy(Map& map, const entity& prototype, const Vec3& at) {
  EntityPtr copy = prototype.Copy();
  copy->ResolveClasses(*map.classSet);
  copy->ResolveTextures(map.wads);
  return AddAndSelect(map, std::move(copy), at);
}

EditResult SetKeyOfSelection(Map& map, std::string_view name, std::string_view value) {
  const std::string fitName = FitForKey(name), fitValue = FitForKey(value);
  if (EqualNoCase(fitName, "classname")) {
    const EditResult fit = CheckClass(*map.classSet, fitValue);
    if (fit != EditResult::Done) return fit;
  }
  return ChangeKeysOfSelection(map, [&](entity& e) { e.SetKey(fitName, fitValue); });
}

EditResult RemoveKeyOfSelection(Map& map, std::string_view name) {
  return ChangeKeysOfSelection(map, [&](entity& e) { e.RemoveKeys(name); });
}

EditResult SetClassOfSelection(Map& map, const EntityClass& entityClass) {
  const EditResult fit = CheckClass(*map.classSet, entityClass.classname);
  if (fit != EditResult::Done) return fit;
  const auto isShapeless = [](const entity* e) {
    return e->HasOrigin() && e->getEntityList().empty() && !e->brush.HasText();
  };
  if (entityClass.Kind() == EntityKind::Brush && std::ranges::any_of(map.selection, isShapeless)) {
    return EditResult::EditorsOwn;
  }
  return ChangeKeysOfSelection(map, [&](entity& e) {
    e.SetKey("classname", entityClass.classname);
    if (entityClass.hasTilde) e.SetFlags(entityClass.tildeValue);
  });
}

EditResult DeleteSelection(Map& map) {
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  EditStep step(map);
  RemoveObjects(step, roots);
  return EditResult::Done;
}

}  // namespace ferrowand
