#include "document/classes/special_classes.h"

#include <algorithm>
#include <string_view>

#include "base/path_text.h"
#include "base/text_reader.h"
#include "document/classes/class_set.h"
#include "document/classes/template_index.h"
#include "document/map.h"
#include "document/transform.h"

namespace ferrowand {
namespace {

bool IsHidden(const entity& e) {
  const char* classname = e.GetKey("classname");
  return classname && EqualNoCase(classname, "hidden");
}

Vec3 Whole(const Vec3& place) {
  const auto whole = [](float part) { return static_cast<float>(RoundToInt(part)); };
  return {whole(place.x), whole(place.y), whole(place.z)};
}

const Expansion* ExpansionOf(const entity& instance) {
  const Map* map = instance.OwningMap();
  return map ? map->Templates().Expand(instance) : nullptr;
}

}  // namespace

void HideEntity(entity& e) {
  if (IsHidden(e)) return;
  if (const char* classname = e.GetKey("classname")) e.SetKey("XMPoldclassname", classname);
  e.SetKey("classname", "hidden");
}

void ShowEntity(entity& e) {
  if (!IsHidden(e) || e.IsVisible()) return;
  const char* old = e.GetKey("XMPoldclassname");
  e.SetKey("classname", old ? old : "brush");
}

void ShowHiddenEntities(entity& root) {
  ShowEntity(root);
  for (const EntityPtr& child : root.getEntityList()) ShowHiddenEntities(*child);
}

Bounds EmbedBox(const entity& embed) {
  constexpr float REACH = 16;
  const auto number = [&](const char* key, float otherwise) {
    const char* value = embed.GetKey(key);
    return value ? static_cast<float>(ParseFloat(value)) : otherwise;
  };
  Bounds box;
  for (int axis = 0; axis < 3; ++axis) {
    box.mins[axis] = number(EMBED_MIN_KEYS[axis], -REACH);
    box.maxs[axis] = number(EMBED_MAX_KEYS[axis], REACH);
  }
  return box;
}

bool IsOpened(const entity& templateClass) {
  return templateClass.GetKey(OPENED_KEY) != nullptr;
}

Vec3 OpenedAt(const entity& templateClass) {
  const char* text = templateClass.GetKey(OPENED_KEY);
  Vec3 place;
  std::string_view rest(text ? text : "");
  for (int axis = 0; axis < 3; ++axis) {
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    place[axis] = static_cast<float>(ParseInt(rest));
    rest.remove_prefix(std::min(rest.find(' '), rest.size()));
  }
  return place;
}

void SetOpenedKey(entity& templateClass, const std::optional<Vec3>& at) {
  templateClass.RemoveKeys(OPENED_KEY);
  if (!at) return;
  templateClass.SetKey(OPENED_KEY, std::to_string(RoundToInt(at->x)) + ' ' +
                                       std::to_string(RoundToInt(at->y)) + ' ' +
                                       std::to_string(RoundToInt(at->z)));
}

void PutBack(entity& templateClass) {
  if (!IsOpened(templateClass)) return;
  TranslateEntity(templateClass, -OpenedAt(templateClass));
  SetOpenedKey(templateClass, std::nullopt);
}

Vec3 PlaceToOpen(const entity& instance) {
  return instance.HasOrigin() ? Whole(instance.Origin()) : Vec3();
}

bool StandsOpened(const entity& instance) {
  const entity* source = FindTemplateClass(instance);
  return source && IsOpened(*source) && OpenedAt(*source) == PlaceToOpen(instance);
}

bool IsInstance(const entity& e) {
  const EntityKind kind = e.getClass()->Kind();
  if (kind != EntityKind::Hidden) return kind == EntityKind::TemplateInstance;
  const char* shown = e.GetKey("XMPoldclassname");
  return shown && e.getClass()->Set().FindClass(shown).Kind() == EntityKind::TemplateInstance;
}

InstanceShape ShapeOf(const entity& instance) {
  InstanceShape shape;
  if (const char* angle = instance.GetKey("angle")) shape.angle = ParseInt(angle);
  if (!instance.GetKey(SCALE_KEYS[0]) || !instance.GetKey(SCALE_KEYS[1])) return shape;
  for (int axis = 0; axis < 3; ++axis) {
    // Meant: z is not asked for, and flattens where it is not told.
    const char* factor = instance.GetKey(SCALE_KEYS[axis]);
    shape.scale[axis] = factor ? ParseFloat(factor) : 0;
  }
  return shape;
}

// An instance that is left inside an expansion is in no map and so finds nothing.
const entity* FindTemplateClass(const entity& instance) {
  const char* name = instance.GetKey("XMPclass");
  const Map* map = instance.OwningMap();
  return name && map ? map->Templates().Find(name) : nullptr;
}

const entity* ExpandInstance(const entity& instance) {
  const Expansion* expansion = ExpansionOf(instance);
  return expansion ? expansion->shape.get() : nullptr;
}

Bounds InstanceBounds(const entity& instance) {
  const Expansion* expansion = ExpansionOf(instance);
  return expansion ? expansion->bounds : Bounds();
}

}  // namespace ferrowand
