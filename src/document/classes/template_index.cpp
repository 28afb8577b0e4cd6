#include "document/classes/template_index.h"

#include <cstring>
#include <utility>

#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "document/transform.h"
#include "geometry/matrix.h"

namespace ferrowand {
namespace {

bool IsTemplateClass(const entity& e) {
  // The class first: almost everything in a map is told apart by it without reading a key.
  if (e.getClass()->Kind() != EntityKind::TemplateClass) return false;
  const char* classname = e.GetKey("classname");
  return classname && std::strcmp(classname, "templateClass") == 0;
}

EntityPtr Expanded(const entity& source, const entity& instance) {
  EntityPtr copy = source.Copy();
  copy->state = 0;  // what an instance shows is seen, however closed its template is
  const InstanceShape shape = ShapeOf(instance);
  const Vec3 scale(shape.scale);
  if (scale != Vec3(1, 1, 1)) {
    TransformEntity(*copy, Matrix::Diagonal(scale.x, scale.y, scale.z), {});
  }
  if (shape.angle != 0) TransformEntity(*copy, Matrix::TurnZ(shape.angle), {});
  if (instance.HasOrigin()) TranslateEntity(*copy, instance.Origin());
  return copy;
}

}  // namespace

const entity* TemplateIndex::Find(std::string_view name) {
  if (!namesKnown_) LearnNames();
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second;
}

void TemplateIndex::LearnNames() {
  ForEachEntity(map_, [this](const entity& e) {
    if (!IsTemplateClass(e)) return;
    if (const char* name = e.GetKey("XMPentityname")) byName_.try_emplace(name, &e);
  });
  namesKnown_ = true;
}

bool TemplateIndex::IsCurrent(const Kept& kept, const entity& instance) {
  return !kept.servesOnce && kept.instanceRevision == instance.Revision() &&
         kept.sourceRevision == kept.source->Revision();
}

const Expansion* TemplateIndex::Expand(const entity& instance) {
  const auto found = expansions_.find(&instance);
  if (found != expansions_.end() && IsCurrent(found->second, instance)) return &found->second;

  const char* name = instance.GetKey("XMPclass");
  const entity* source = name ? Find(name) : nullptr;
  if (!source) {
    expansions_.erase(&instance);
    return nullptr;
  }
  Kept& kept = expansions_[&instance];
  kept.shape = Expanded(*source, instance);
  kept.bounds = kept.shape->GetBounds();
  kept.source = source;
  kept.sourceRevision = source->Revision();
  kept.instanceRevision = instance.Revision();
  kept.servesOnce = stepOpen_;
  return &kept;
}

void TemplateIndex::Forget() {
  namesKnown_ = false;
  byName_.clear();
  expansions_.clear();
}

void TemplateIndex::Came(const entity& tree) {
  if (!namesKnown_) return;
  ForEachEntity(tree, [this](const entity& e) {
    if (e.getClass()->Kind() == EntityKind::TemplateClass) Forget();
  });
}

void TemplateIndex::Left(const entity& tree) {
  if (!namesKnown_) return;
  ForEachEntity(tree, [this](const entity& e) {
    expansions_.erase(&e);
    if (e.getClass()->Kind() == EntityKind::TemplateClass) Forget();
  });
}

}  // namespace ferrowand
