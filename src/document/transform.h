// Moving whole objects: an entity with its brush, its origin and everything below it.
#pragma once

#include "geometry/matrix.h"
#include "geometry/vec.h"

namespace ferrowand {

class entity;

// Every point p becomes centre + matrix (3 x 3) times (p - centre). A mirroring matrix turns the
// windings round, so that a brush stays solid. A matrix that flattens leaves faces without extent.
void TransformEntity(entity& e, const Matrix& matrix, const DVec3& centre);

void TranslateEntity(entity& e, const Vec3& by);

}  // namespace ferrowand
