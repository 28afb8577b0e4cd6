#include "operations/templates.h"

#include <algorithm>
#include <cmath>

#include "base/text_writer.h"
#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/blocks.h"
#include "operations/brush_check.h"
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

void SetEmbedKeys(entity& embed, std::string_view filename, const Bounds& box) {
  const std::string file = FitForKey(filename);
  const char* const before = embed.GetKey("XMPfilename");
  if (!before || file != before) ReplaceKey(embed, "XMPfilename", file);
  const Bounds old = EmbedBox(embed);
  for (int axis = 0; axis < 3; ++axis) {
    if (box.mins[axis] != old.mins[axis]) {
      ReplaceKey(embed, EMBED_MIN_KEYS[axis], FloatText(box.mins[axis]));
    }
    if (box.maxs[axis] != old.maxs[axis]) {
      ReplaceKey(embed, EMBED_MAX_KEYS[axis], FloatText(box.maxs[axis]));
    }
  }
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

EditResult CheckTemplateName(const Map& map, std::string_view name) {
  if (name.find_first_not_of(" \t") == name.npos) return EditResult::NoName;
  const std::vector<std::string> names = TemplateNames(map);
  const bool isTaken = std::ranges::find(names, name) != names.end();
  return isTaken ? EditResult::NameTaken : EditResult::Done;
}

EditResult MakeTemplate(Map& map, std::string_view name, const Vec3& pivot) {
  const std::string fitName = FitForKey(name);
  const EditResult fit = CheckTemplateName(map, fitName);
  if (fit != EditResult::Done) return fit;
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  entity* parent = roots.front()->Parent();
  for (const entity* root : roots) parent = &OutsideItself(*parent, *root);
  entity& layer = LayerAround(*parent);
  const std::vector<const entity*> members(roots.begin(), roots.end());
  if (!FitsBelow(layer, members, 1)) return EditResult::TooDeep;

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
  entity& templateClass = step.Add(std::move(holder), layer);
  entity& instance = step.Add(NewInstance(map, {fitName, 0, {1, 1, 1}}, pivot), *parent);
  MoveObjects(step, roots, templateClass);
  Select(map, &instance, false);
  return EditResult::Done;
}

EditResult CheckScale(const Vec3& scale) {
  for (int axis = 0; axis < 3; ++axis) {
    const double size = std::fabs(scale[axis]);
    if (!(size >= SMALLEST_SCALE)) return EditResult::Flattens;
    if (!(size <= 1 / SMALLEST_SCALE)) return EditResult::OutsideWorld;
  }
  return EditResult::Done;
}

EditResult InsertInstance(Map& map, const InstanceSettings& settings, const Vec3& origin) {
  const EditResult fit = CheckScale(settings.scale);
  if (fit != EditResult::Done) return fit;
  return AddAndSelect(map, NewInstance(map, settings, origin), origin);
}

EditResult InsertEmbed(Map& map, std::string_view filename, const Bounds& box, const Vec3& origin) {
  if (!IsInsideWorld({box.mins + origin, box.maxs + origin})) return EditResult::OutsideWorld;
  EntityPtr embed = NewEntity(map, "embed");
  SetEmbedKeys(*embed, filename, box);
  return AddAndSelect(map, std::move(embed), origin);
}

entity* SelectedEmbed(const Map& map) {
  if (map.selection.size() != 1) return nullptr;
  entity* const e = map.selection.front();
  return e->getClass()->Kind() == EntityKind::Embed ? e : nullptr;
}

EditResult ChangeEmbed(entity& embed, std::string_view filename, const Bounds& box) {
  const Vec3 origin = embed.Origin();
  if (!IsInsideWorld({box.mins + origin, box.maxs + origin})) return EditResult::OutsideWorld;
  EditStep step(*embed.OwningMap());
  step.ChangeKeys(embed);
  SetEmbedKeys(embed, filename, box);
  return EditResult::Done;
}

}  // namespace ferrowand
