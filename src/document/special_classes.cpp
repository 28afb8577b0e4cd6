#include "document/special_classes.h"

#include <cstring>
#include <string>

#include "document/map.h"
#include "document/text_reader.h"
#include "document/transform.h"
#include "geometry/matrix.h"
#include "shell/services/path_text.h"

namespace ferrowand {
namespace {

bool IsHidden(const entity& e) {
  const char* classname = e.GetKey("classname");
  return classname && EqualNoCase(classname, "hidden");
}

bool HasKey(const entity& e, const char* name, const char* value) {
  const char* found = e.GetKey(name);
  return found && std::strcmp(found, value) == 0;
}

const entity* FindTemplateClass(const entity& tree, const char* name) {
  // The class first: almost everything in a map is told apart by it without reading a key.
  if (tree.getClass()->Kind() == EntityKind::TemplateClass && HasKey(tree, "XMPentityname", name) &&
      HasKey(tree, "classname", "templateClass")) {
    return &tree;
  }
  for (const EntityPtr& child : tree.getEntityList()) {
    if (const entity* found = FindTemplateClass(*child, name)) return found;
  }
  return nullptr;
}

void Scale(entity& copy, const entity& instance) {
  const char* x = instance.GetKey("XMPscalex");
  const char* y = instance.GetKey("XMPscaley");
  if (!x || !y) return;
  // Meant: z is not asked for, and flattens where it is not told.
  const char* z = instance.GetKey("XMPscalez");
  const auto factor = [](const char* text) { return static_cast<float>(ParseFloat(text)); };
  TransformEntity(copy, Matrix::Diagonal(factor(x), factor(y), z ? factor(z) : 0), {});
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

// An instance inside an expansion is in no map and so finds nothing: a template that holds an
// instance of itself ends there.
const entity* FindTemplateClass(const entity& instance) {
  const char* name = instance.GetKey("XMPclass");
  const Map* map = instance.OwningMap();
  return name && map ? FindTemplateClass(*map, name) : nullptr;
}

EntityPtr ExpandInstance(const entity& instance) {
  const entity* source = FindTemplateClass(instance);
  if (!source) return nullptr;
  EntityPtr copy = source->Copy();
  copy->state = 0;  // what an instance shows is seen, however closed its template is
  Scale(*copy, instance);
  if (const char* angle = instance.GetKey("angle")) {
    TransformEntity(*copy, Matrix::TurnZ(ParseInt(angle)), {});
  }
  if (instance.HasOrigin()) TranslateEntity(*copy, instance.Origin());
  return copy;
}

}  // namespace ferrowand
