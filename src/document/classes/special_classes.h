// The editor's own classes at work: layers, objects hidden for a while, templates, embedded maps.
#pragma once

#include <optional>

#include "document/entity.h"

namespace ferrowand {

// Keeps the classname in XMPoldclassname and makes the entity "hidden". Not its children; an entity
// that is hidden already stays as it is.
void HideEntity(entity& e);
// Gives it, and nothing below it, its old classname back, "brush" where none is known.
void ShowEntity(entity& e);
// The same of every hidden entity of the tree.
void ShowHiddenEntities(entity& root);

inline constexpr const char* SCALE_KEYS[] = {"XMPscalex", "XMPscaley", "XMPscalez"};
inline constexpr const char* EMBED_MIN_KEYS[] = {"XMPminx", "XMPminy", "XMPminz"};
inline constexpr const char* EMBED_MAX_KEYS[] = {"XMPmaxx", "XMPmaxy", "XMPmaxz"};

// The box of an embedded map about its origin: 16 units each way where a key is silent.
Bounds EmbedBox(const entity& embed);

// A template that is opened stands among the other objects, to be seen and edited: its own origin
// at that place, in whole units, which a key holds. Its instances show what they always do.
inline constexpr const char* OPENED_KEY = "XMPopened";
bool IsOpened(const entity& templateClass);
// The world's own origin where it is closed.
Vec3 OpenedAt(const entity& templateClass);
// What is to be said of one that has been moved there, or back.
void SetOpenedKey(entity& templateClass, const std::optional<Vec3>& at);
// Closes it, whatever comes to lie outside the world.
void PutBack(entity& templateClass);
// Where a template comes to stand that is opened at the instance.
Vec3 PlaceToOpen(const entity& instance);
// Whether the template stands there itself.
bool StandsOpened(const entity& instance);

// Also while it is hidden.
bool IsInstance(const entity& e);

// What the keys of an instance make of its template, in this order.
struct InstanceShape {
  DVec3 scale{1, 1, 1};
  int angle = 0;  // degrees about Z
};
InstanceShape ShapeOf(const entity& instance);

// The template class that an instance names by XMPclass, found in the map that holds it; or null.
const entity* FindTemplateClass(const entity& instance);
// What the instance shows, kept by its map: a copy of the template class, scaled, turned and moved
// as the instance says; null without one. Valid until the map changes.
const entity* ExpandInstance(const entity& instance);
// Of that; empty without one.
Bounds InstanceBounds(const entity& instance);

// Depth first, the root included.
template <typename Visit>
void ForEachEntity(const entity& root, Visit&& visit) {
  visit(root);
  for (const EntityPtr& child : root.getEntityList()) ForEachEntity(*child, visit);
}

}  // namespace ferrowand
