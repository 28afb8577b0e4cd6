#include "operations/templates.h"

#include <algorithm>
#include <cmath>

#include "base/text_writer.h"
#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/new_entity.h"
#include "operations/transformation.h"

namespace ferrowand {
namespace {

// Less leaves nothing of a brush, and the key would tell it as 0.
constexpr double SMALLEST_SCALE = 0.001;

EntityPtr NewInstance(const Map& map, const InstanceSettings& settings, const Vec3& origin) {
  EntityPtr instance = NewEntity(map, "templateInstance");
  instance->SetKey("XMPclass", FitForKey(settings.templateName));
  instance->SetKey("angle", std::to_string(settings.angle));
  for (int axis = 0; axis < 3; ++axis) {
    instance->SetKey(SCALE_KEYS[axis], FloatText(settings.scale[axis]));
  }
  instance->SetOrigin(origin);
  return instance;
}

bool IsTaken(const Map& map, const std::string& name) {
  const std::vector<std::string> names = TemplateNames(map);
  return std::ranges::find(names, name) != names.end();
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
  const std::string fitName = FitForKey(name);
  if (fitName.empty()) return EditResult::NoName;
  if (IsTaken(map, fitName)) return EditResult::NameTaken;
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  entity& parent = *roots.front()->Parent();
  const std::vector<const entity*> members(roots.begin(), roots.end());
  if (!FitsBelow(parent, members, 1)) return EditResult::TooDeep;

  EditStep step(map);
  for (entity* root : roots) {
    step.Change(*root);
    const EditResult result = TransformObject(*root, Transformation(-pivot), false);
    if (result == EditResult::Done) continue;
    step.Cancel();
    return result;
  }
  EntityPtr holder = NewEntity(map, "templateClass");
  holder->SetKey("XMPentityname", fitName);
  entity& templateClass = step.Add(std::move(holder), parent);
  entity& instance = step.Add(NewInstance(map, {fitName, 0, {1, 1, 1}}, pivot), parent);
  MoveObjects(step, roots, templateClass);
  Select(map, &instance, false);
  return EditResult::Done;
}

EditResult InsertInstance(Map& map, const InstanceSettings& settings, const Vec3& origin) {
  for (int axis = 0; axis < 3; ++axis) {
    const double size = std::fabs(settings.scale[axis]);
    if (!(size >= SMALLEST_SCALE)) return EditResult::Flattens;
    if (!(size <= 1 / SMALLEST_SCALE)) return EditResult::OutsideWorld;
  }
  return AddAndSelect(map, NewInstance(map, settings, origin), origin);
}

EditResult InsertEmbed(Map& map, std::string_view filename, const Bounds& box, const Vec3& origin) {
  EntityPtr embed = NewEntity(map, "embed");
  embed->SetKey("XMPfilename", FitForKey(filename));
  for (int axis = 0; axis < 3; ++axis) {
    embed->SetKey(EMBED_MIN_KEYS[axis], FloatText(box.mins[axis]));
    embed->SetKey(EMBED_MAX_KEYS[axis], FloatText(box.maxs[axis]));
  }
  return AddAndSelect(map, std::move(embed), origin);
}

}  // namespace ferrowand
