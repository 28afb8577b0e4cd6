// The editor's own classes at work: layers, objects hidden for a while, templates, embedded maps.
#pragma once

#include "document/entity.h"

namespace ferrowand {

// Keeps the classname in XMPoldclassname and makes the entity "hidden". Not its children; an entity
// that is hidden already stays as it is.
void HideEntity(entity& e);
// Gives every hidden entity of the tree its old classname back, "brush" where none is known.
void ShowHiddenEntities(entity& root);

// The template class that an instance names by XMPclass, found in the map that holds it; or null.
const entity* FindTemplateClass(const entity& instance);
// A copy of the template class, scaled, turned and moved as the instance says; null without one.
EntityPtr ExpandInstance(const entity& instance);

// Depth first, the root included.
template <typename Visit>
void ForEachEntity(const entity& root, Visit&& visit) {
  visit(root);
  for (const EntityPtr& child : root.getEntityList()) ForEachEntity(*child, visit);
}

}  // namespace ferrowand
