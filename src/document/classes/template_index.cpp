#include "document/classes/template_index.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "document/transform.h"
#include "document/transform_keys.h"
#include "geometry/matrix.h"

namespace ferrowand {
namespace {

bool IsTemplateClass(const entity& e) {
  // The class first: almost everything in a map is told apart by it without reading a key.
  if (e.getClass()->Kind() != EntityKind::TemplateClass) return false;
  const char* classname = e.GetKey("classname");
  return classname && std::strcmp(classname, "templateClass") == 0;
}

// Templates of instances of templates grow with every level, and a stranger's file may hold any
// number of levels: what lies beyond shows nothing.
constexpr int MAXEXPANDED = 100000;
constexpr std::size_t MAXLEVELS = 16;

void Apply(entity& copy, const Matrix& matrix) {
  TransformEntity(copy, matrix, {});
  TransformKeys(copy, matrix);
}

void Place(entity& copy, const entity& instance) {
  const InstanceShape shape = ShapeOf(instance);
  const Vec3 scale(shape.scale);
  if (scale != Vec3(1, 1, 1)) Apply(copy, Matrix::Diagonal(scale.x, scale.y, scale.z));
  if (shape.angle != 0) Apply(copy, Matrix::TurnZ(shape.angle));
  if (instance.HasOrigin()) TranslateEntity(copy, instance.Origin());
}

// As the brushes of a group, which every class shows.
void MakeGroup(entity& shape) {
  shape.SetKey("classname", "brush");
  shape.SetClass(&shape.getClass()->Set().FindClass("brush"));
}

}  // namespace

const entity* TemplateIndex::Find(std::string_view name) {
  if (!namesKnown_) LearnNames();
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second;
}

bool TemplateIndex::IsEmpty() {
  if (!namesKnown_) LearnNames();
  return byName_.empty();
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
         std::ranges::all_of(kept.sources, [](const auto& source) {
           return source.first->Revision() == source.second;
         });
}

const entity* TemplateIndex::SourceOf(const entity& instance) {
  const char* name = instance.GetKey("XMPclass");
  return name ? Find(name) : nullptr;
}

EntityPtr TemplateIndex::ShapeOfInstance(const entity& source, const entity& instance,
                                         Nesting& nesting, Kept& kept) {
  EntityPtr copy = source.Copy();
  copy->state = 0;  // what an instance shows is seen, however closed its template is
  kept.sources.emplace_back(&source, source.Revision());
  nesting.open.push_back(&source);
  ReplaceInstances(*copy, nesting, kept);
  nesting.open.pop_back();
  PutBack(*copy);
  Place(*copy, instance);
  return copy;
}

void TemplateIndex::ReplaceInstances(entity& tree, Nesting& nesting, Kept& kept) {
  for (std::size_t i = 0; i < tree.getEntityList().size(); ++i) {
    entity& child = *tree.getEntityList()[i];
    ++nesting.objects;
    // A template within the template shows nothing, opened or not.
    if (child.getClass()->Kind() == EntityKind::TemplateClass) child.RemoveKeys(OPENED_KEY);
    if (child.getClass()->Kind() != EntityKind::TemplateInstance) {
      ReplaceInstances(child, nesting, kept);
      continue;
    }
    const entity* const source = SourceOf(child);
    const bool isOpen = std::ranges::find(nesting.open, source) != nesting.open.end();
    if (!source || isOpen || nesting.objects > MAXEXPANDED) continue;
    if (nesting.open.size() >= MAXLEVELS) continue;
    EntityPtr shape = ShapeOfInstance(*source, child, nesting, kept);
    MakeGroup(*shape);
    tree.TakeChild(i);
    tree.InsertChild(std::move(shape), i);
  }
}

const Expansion* TemplateIndex::Expand(const entity& instance) {
  const auto found = expansions_.find(&instance);
  if (found != expansions_.end() && IsCurrent(found->second, instance)) return &found->second;

  const entity* const source = SourceOf(instance);
  if (!source) {
    expansions_.erase(&instance);
    return nullptr;
  }
  Kept& kept = expansions_[&instance];
  Nesting nesting;
  kept.sources.clear();
  kept.shape = ShapeOfInstance(*source, instance, nesting, kept);
  kept.bounds = kept.shape->GetBounds();
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
