#include "operations/template_editing.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "base/report.h"
#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/new_entity.h"
#include "operations/templates.h"
#include "operations/transformation.h"

namespace ferrowand {
namespace {

template <typename Which>
void Collect(const entity& tree, const Which& which, std::vector<entity*>& found) {
  for (const EntityPtr& child : tree.getEntityList()) {
    if (which(*child)) found.push_back(child.get());
    Collect(*child, which, found);
  }
}

bool IsTemplate(const entity& e) {
  return e.getClass()->Kind() == EntityKind::TemplateClass;
}

bool IsOpenedTemplate(const entity& e) {
  return IsTemplate(e) && IsOpened(e);
}

entity* OpenedAround(entity* e) {
  while (e && !IsOpenedTemplate(*e)) e = e->Parent();
  return e;
}

entity* TemplateOf(const Map& map, const entity& instance) {
  const entity* source = FindTemplateClass(instance);
  std::vector<entity*> found;
  if (source)
    Collect(
        map, [source](const entity& e) { return &e == source; }, found);
  return found.empty() ? nullptr : found.front();
}

// Whether it lies in a layer, or in the map, where it is seen and reached.
bool StandsInTheOpen(const entity& templateClass) {
  const entity* at = templateClass.Parent();
  return OnlyHolds(*at) && !IsTemplate(*at) && IsOpen(*at);
}

// Faces of its own would be a part that no tool reaches.
void MakeMemberOfOwnFaces(EditStep& step, entity& templateClass) {
  if (!templateClass.brush.HasText()) return;
  EntityPtr member = NewEntity(step.map(), "brush");
  std::swap(member->brush, templateClass.brush);
  step.Added(*templateClass.InsertChild(std::move(member), 0));
}

EditResult Put(EditStep& step, entity& templateClass, const std::optional<Vec3>& at) {
  step.Change(templateClass);
  const Vec3 by = at.value_or(Vec3()) - OpenedAt(templateClass);
  const EditResult result = TransformObject(templateClass, Transformation(by), false);
  if (result == EditResult::Done) SetOpenedKey(templateClass, at);
  return result;
}

EditResult OpenAt(Map& map, entity& templateClass, const Vec3& at, entity& layer) {
  EditStep step(map);
  const EditResult result = Put(step, templateClass, at);
  if (result != EditResult::Done) {
    step.Cancel();
    return result;
  }
  MakeMemberOfOwnFaces(step, templateClass);
  entity* const one = &templateClass;
  if (!StandsInTheOpen(templateClass)) MoveObjects(step, {&one, 1}, layer);
  map.SetLeadingGroup(&templateClass);
  SelectMembers(map, templateClass, false);
  return result;
}

bool MayDelete(const Map& map, const char* name, std::size_t instances) {
  if (instances == 0) return true;
  const std::string text =
      Format("The template %s has %u %s. Delete %s too?", name, static_cast<unsigned>(instances),
             instances == 1 ? "instance" : "instances", instances == 1 ? "it" : "them");
  return map.Data().reporter.Show("Confirm", text, Buttons::YesNo, Icon::Question) == Answer::Yes;
}

}  // namespace

entity* SelectedInstance(const Map& map) {
  if (map.selection.size() != 1) return nullptr;
  entity* const e = map.selection.front();
  return e->getClass()->Kind() == EntityKind::TemplateInstance ? e : nullptr;
}

entity* TemplateInUse(const Map& map) {
  if (const entity* instance = SelectedInstance(map)) {
    if (entity* shown = TemplateOf(map, *instance)) return shown;
  }
  if (!map.selection.empty()) {
    if (entity* around = OpenedAround(map.selection.front())) return around;
  }
  if (entity* joined = OpenedAround(map.leadingGroup())) return joined;
  std::vector<entity*> opened;
  Collect(map, IsOpenedTemplate, opened);
  return opened.empty() ? nullptr : opened.front();
}

std::vector<entity*> InstancesOf(const Map& map, const entity& templateClass) {
  std::vector<entity*> instances;
  const auto shows = [&](const entity& e) {
    return IsInstance(e) && FindTemplateClass(e) == &templateClass;
  };
  Collect(map, shows, instances);
  return instances;
}

EditResult OpenTemplate(Map& map, entity& instance) {
  entity* const templateClass = TemplateOf(map, instance);
  if (!templateClass) return EditResult::NoTemplate;
  entity& layer = LayerAround(instance);
  const EditResult result = OpenAt(map, *templateClass, PlaceToOpen(instance), layer);
  return result == EditResult::OutsideWorld ? OpenAt(map, *templateClass, {}, layer) : result;
}

EditResult CloseTemplate(Map& map, entity& templateClass) {
  const Vec3 stood = OpenedAt(templateClass);
  EditStep step(map);
  const EditResult result = Put(step, templateClass, std::nullopt);
  if (result != EditResult::Done) {
    step.Cancel();
    return result;
  }
  if (map.leadingGroup() && map.leadingGroup()->IsWithin(templateClass)) {
    map.SetLeadingGroup(nullptr);
  }
  std::vector<entity*> instances = InstancesOf(map, templateClass);
  std::erase_if(instances, [&](const entity* e) { return PlaceToOpen(*e) != stood; });
  Select(map, instances, false);
  return result;
}

EditResult RenameTemplate(Map& map, entity& templateClass, std::string_view name) {
  const std::string fitName = FitForKey(name);
  const char* before = templateClass.GetKey("XMPentityname");
  if (before && fitName == before) return EditResult::Done;
  const EditResult fit = CheckTemplateName(map, fitName);
  if (fit != EditResult::Done) return fit;
  const std::vector<entity*> instances = InstancesOf(map, templateClass);
  EditStep step(map);
  step.ChangeKeys(templateClass);
  ReplaceKey(templateClass, "XMPentityname", fitName);
  for (entity* instance : instances) {
    step.ChangeKeys(*instance);
    ReplaceKey(*instance, "XMPclass", fitName);
  }
  return EditResult::Done;
}

EditResult DeleteTemplate(Map& map, entity& templateClass) {
  std::vector<entity*> objects = InstancesOf(map, templateClass);
  const char* name = templateClass.GetKey("XMPentityname");
  if (!MayDelete(map, name ? name : "", objects.size())) return EditResult::Declined;
  std::erase_if(objects, [&](const entity* e) { return e->IsWithin(templateClass); });
  objects.push_back(&templateClass);
  EditStep step(map);
  RemoveObjects(step, objects);
  return EditResult::Done;
}

}  // namespace ferrowand
