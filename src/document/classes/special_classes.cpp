#include "document/classes/special_classes.h"

#include "base/path_text.h"
#include "base/text_reader.h"
#include "document/classes/template_index.h"
#include "document/map.h"

namespace ferrowand {
namespace {

bool IsHidden(const entity& e) {
  const char* classname = e.GetKey("classname");
  return classname && EqualNoCase(classname, "hidden");
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

void ShowHiddenEntities(entity& root) {
  if (IsHidden(root) && !root.IsVisible()) {
    const char* old = root.GetKey("XMPoldclassname");
    root.SetKey("classname", old ? old : "brush");
  }
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
