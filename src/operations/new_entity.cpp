#include "operations/new_entity.h"

#include <algorithm>
#include <unordered_set>

#include "base/report.h"
#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/blocks.h"

namespace ferrowand {
namespace {

int Height(const entity& e) {
  int height = 0;
  for (const EntityPtr& child : e.getEntityList()) height = std::max(height, Height(*child));
  return height + 1;
}

std::vector<entity*> ParentsOf(std::span<entity* const> objects) {
  std::vector<entity*> parents;
  std::unordered_set<const entity*> known;
  for (const entity* object : objects) {
    if (known.insert(object->Parent()).second) parents.push_back(object->Parent());
  }
  return parents;
}

void RemoveEmptied(EditStep& step, const std::vector<entity*>& parents) {
  for (entity* e : parents) {
    while (e && e->Parent() && !OnlyHolds(*e) && !e->HasOrigin() && e->getEntityList().empty() &&
           !e->brush.HasText()) {
      entity* const above = e->Parent();
      step.Remove(*e);
      e = above;
    }
  }
}

}  // namespace

EntityPtr NewEntity(const Map& map, std::string_view classname) {
  auto e = std::make_unique<entity>(*map.classSet);
  EntityClass& known = map.classSet->FindClass(classname);
  e->SetKey("classname", classname);
  e->SetClass(&known);  // outside a map its name was looked for in the default set
  if (known.hasTilde) e->SetFlags(known.tildeValue);
  if (known.flagDefaults != 0) e->SetKey("spawnflags", std::to_string(known.flagDefaults));
  return e;
}

EditResult CheckClass(const ClassSet& classes, std::string_view classname) {
  if (IsWorldspawn(classname)) return EditResult::SecondWorld;
  switch (classes.FindClass(classname).Kind()) {
    case EntityKind::Layer:
    case EntityKind::Hidden:
    case EntityKind::TemplateClass:
    case EntityKind::TemplateInstance:
      return EditResult::EditorsOwn;
    default:
      return EditResult::Done;
  }
}

EditResult CheckPoint(const entity& e) {
  const EntityClass& own = *e.getClass();
  if (own.Kind() == EntityKind::Brush && e.getEntityList().empty() && !e.brush.HasText()) {
    return EditResult::EditorsOwn;
  }
  if (own.Kind() == EntityKind::TemplateInstance && e.GetKey("XMPclass")) return EditResult::Done;
  return CheckClass(own.Set(), own.classname);
}

entity& AddTo(EditStep& step, EntityPtr e, entity& parent) {
  entity& home = HomeFor(parent, *e);
  entity& added = *home.InsertChild(std::move(e), home.getEntityList().size());
  step.Added(added);
  return added;
}

entity& LayerAround(entity& e) {
  entity* at = &e;
  while (at->Parent() && at->getClass()->Kind() != EntityKind::Layer) at = at->Parent();
  return *at;
}

EditResult AddAndSelect(Map& map, EntityPtr e, const Vec3& at) {
  const EditResult fit = CheckPoint(*e);
  if (fit != EditResult::Done) return fit;
  if (!MayAddTo(map.NewParent())) return EditResult::Declined;
  e->SetOrigin(at);
  EditStep step(map);
  entity& added = AddTo(step, std::move(e), map.NewParent());
  Select(map, &added, false);
  return EditResult::Done;
}

std::string UnusedName(const Map& map, std::string_view prefix) {
  std::unordered_set<std::string> names;
  ForEachEntity(map, [&](const entity& e) {
    const char* name = e.GetKey("XMPentityname");
    if (name && std::string_view(name).starts_with(prefix)) names.insert(name);
  });
  for (int number = 1;; ++number) {
    std::string name = std::string(prefix) + std::to_string(number);
    if (!names.contains(name)) return name;
  }
}

void ReplaceKey(entity& e, std::string_view name, std::string_view value) {
  // The value may be that of the key that goes.
  const std::string kept(value);
  e.RemoveKeys(name);
  e.SetKey(name, kept);
}

std::string FitForKey(std::string_view text) {
  std::string fit(text.substr(0, text.find('\0')));
  std::ranges::replace(fit, '"', '\'');
  return fit;
}

bool MayAddTo(const entity& parent) {
  for (const entity* e = &parent; e; e = e->Parent()) {
    if (IsOpen(*e)) continue;
    Reporter& reporter = e->getClass()->Set().Library().Report();
    return reporter.Show("Ferrowand asks",
                         "The current layer is hidden or disabled. Add the object?", Buttons::YesNo,
                         Icon::Question) == Answer::Yes;
  }
  return true;
}

bool FitsBelow(const entity& parent, std::span<const entity* const> objects, int levels) {
  int depth = 0;
  for (const entity* e = &parent; e->Parent(); e = e->Parent()) ++depth;
  int height = 0;
  for (const entity* object : objects) height = std::max(height, Height(*object));
  return depth + levels + height < MAXDEPTH;
}

void RemoveObjects(EditStep& step, std::span<entity* const> objects) {
  const std::vector<entity*> parents = ParentsOf(objects);
  step.Remove(objects);
  RemoveEmptied(step, parents);
}

void MoveObjects(EditStep& step, std::span<entity* const> objects, entity& parent) {
  const std::vector<entity*> parents = ParentsOf(objects);
  step.Move(objects, parent);
  RemoveEmptied(step, parents);
}

}  // namespace ferrowand
