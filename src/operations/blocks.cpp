#include "operations/blocks.h"

#include <algorithm>
#include <vector>

#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "document/classes/template_index.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "operations/new_entity.h"

namespace ferrowand {
namespace {

// What an instance shows is written apart, wherever it stands.
bool IsBlockClass(const EntityClass& entityClass) {
  return entityClass.IsOwnBlock() && entityClass.Kind() != EntityKind::TemplateInstance;
}

bool IsBlock(const entity& e) {
  const EntityClass& own = *e.getClass();
  if (own.Kind() != EntityKind::Hidden) return IsBlockClass(own);
  const char* shown = e.GetKey("XMPoldclassname");
  return shown && IsBlockClass(own.Set().FindClass(shown));
}

// Of instances that may not be in the map yet.
bool Shows(const entity& object, const entity& templateClass) {
  TemplateIndex& templates = templateClass.OwningMap()->Templates();
  std::vector<const entity*> trees{&object};
  for (std::size_t i = 0; i < trees.size(); ++i) {
    ForEachEntity(*trees[i], [&](const entity& e) {
      const char* name = IsInstance(e) ? e.GetKey("XMPclass") : nullptr;
      const entity* shown = name ? templates.Find(name) : nullptr;
      if (shown && std::ranges::find(trees, shown) == trees.end()) trees.push_back(shown);
    });
  }
  return std::ranges::find(trees, &templateClass) != trees.end();
}

// The outermost ones below the tree's root.
void CollectBlocks(const entity& tree, std::vector<entity*>& blocks) {
  for (const EntityPtr& child : tree.getEntityList()) {
    if (IsBlock(*child)) {
      blocks.push_back(child.get());
    } else {
      CollectBlocks(*child, blocks);
    }
  }
}

}  // namespace

bool HoldsBlock(const entity& tree) {
  return IsBlock(tree) || std::ranges::any_of(tree.getEntityList(), [](const EntityPtr& child) {
           return HoldsBlock(*child);
         });
}

entity& OutsideItself(entity& parent, const entity& object) {
  entity* home = &parent;
  for (entity* at = &parent; at->Parent(); at = at->Parent()) {
    if (at->getClass()->Kind() == EntityKind::TemplateClass && Shows(object, *at)) {
      home = at->Parent();
    }
  }
  return *home;
}

entity& HomeFor(entity& parent, const entity& object) {
  entity* home = &OutsideItself(parent, object);
  if (!HoldsBlock(object)) return *home;
  for (entity* at = home; at->Parent(); at = at->Parent()) {
    if (IsBlock(*at)) home = at->Parent();
  }
  return *home;
}

bool SettleBlocks(EditStep& step, std::span<entity* const> objects) {
  for (entity* object : objects) {
    entity& home = HomeFor(*object->Parent(), *object);
    if (&home != object->Parent()) MoveObjects(step, {&object, 1}, home);
    if (!IsBlock(*object)) continue;
    std::vector<entity*> blocks;
    CollectBlocks(*object, blocks);
    if (blocks.empty()) continue;
    MoveObjects(step, blocks, home);
    if (!object->Parent() || !SettleBlocks(step, blocks)) return false;
  }
  return true;
}

}  // namespace ferrowand
