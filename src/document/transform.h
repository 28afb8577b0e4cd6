// Moving whole objects: an entity with its brush, its origin and everything below it.
#pragma once

#include "document/entity.h"
#include "geometry/matrix.h"
#include "geometry/vec.h"

namespace ferrowand {

// A template is a pattern and no part of what it was put into: it stays when that goes elsewhere.
bool GoesAlong(const entity& child);

// Depth first: the root, and all below it that goes where it goes.
template <typename Entity, typename Visit>
void ForEachAlong(Entity& root, Visit&& visit) {
  visit(root);
  for (const EntityPtr& child : root.getEntityList()) {
    if (GoesAlong(*child)) ForEachAlong(*child, visit);
  }
}

// Every point p becomes centre + matrix (3 x 3) times (p - centre). A mirroring matrix turns the
// windings round, so that a brush stays solid. A matrix that flattens leaves faces without extent.
void TransformEntity(entity& e, const Matrix& matrix, const DVec3& centre);

void TranslateEntity(entity& e, const Vec3& by);

}  // namespace ferrowand
