#include "document/edit/templates.h"

#include "document/edit/new_entity.h"
#include "document/edit/placing.h"
#include "document/edit/selection.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/special_classes.h"
#include "document/text_writer.h"
#include "gamedata/entity_class.h"

namespace ferrowand {
namespace {

void SetNumber(entity& e, const std::string& key, float value) {
  TextWriter text;
  text.PutFloat(value);
  e.SetKey(key, text.Text());
}

EntityPtr NewInstance(const Map& map, const InstanceSettings& settings, const Vec3& origin) {
  EntityPtr instance = NewEntity(map, "templateInstance");
  instance->SetKey("XMPclass", FitForKey(settings.templateName));
  instance->SetKey("angle", std::to_string(settings.angle));
  for (int axis = 0; axis < 3; ++axis) {
    SetNumber(*instance, std::string("XMPscale") + "xyz"[axis], settings.scale[axis]);
  }
  instance->SetOrigin(origin);
  return instance;
}

EditResult AddSelected(Map& map, EntityPtr e) {
  EditStep step(map);
  entity& added = step.Add(std::move(e), map);
  Select(map, IsReachable(added) ? &added : nullptr, false);
  return EditResult::Done;
}

}  // namespace

std::vector<std::string> TemplateNames(const Map& map) {
  std::vector<std::string> names;
  ForEachEntity(map, [&](const entity& e) {
    if (e.getClass()->Kind() != EntityKind::TemplateClass) return;
    if (const char* name = e.GetKey("XMPentityname")) names.emplace_back(name);
  });
  return names;
}

EditResult MakeTemplate(Map& map, std::string_view name, const Vec3& pivot) {
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  entity& parent = *roots.front()->Parent();
  const std::vector<const entity*> members(roots.begin(), roots.end());
  if (!FitsBelow(parent, members, 1)) return EditResult::TooDeep;

  EditStep step(map);
  for (entity* root : roots) {
    step.Change(*root);
    const EditResult result = Place(*root, Placing(-pivot), true);
    if (result == EditResult::Done) continue;
    step.Cancel();
    return result;
  }
  EntityPtr holder = NewEntity(map, "templateClass");
  holder->SetKey("XMPentityname", FitForKey(name));
  entity& templateClass = step.Add(std::move(holder), parent);
  entity& instance = step.Add(NewInstance(map, {std::string(name), 0, {1, 1, 1}}, pivot), parent);
  MoveObjects(step, roots, templateClass);
  Select(map, &instance, false);
  return EditResult::Done;
}

EditResult InsertInstance(Map& map, const InstanceSettings& settings, const Vec3& origin) {
  return AddSelected(map, NewInstance(map, settings, origin));
}

EditResult InsertEmbed(Map& map, std::string_view filename, const Bounds& box, const Vec3& origin) {
  EntityPtr embed = NewEntity(map, "embed");
  embed->SetKey("XMPfilename", FitForKey(filename));
  for (int axis = 0; axis < 3; ++axis) {
    SetNumber(*embed, std::string("XMPmin") + "xyz"[axis], box.mins[axis]);
    SetNumber(*embed, std::string("XMPmax") + "xyz"[axis], box.maxs[axis]);
  }
  embed->SetOrigin(origin);
  return AddSelected(map, std::move(embed));
}

}  // namespace ferrowand
