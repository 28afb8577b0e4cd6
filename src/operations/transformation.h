// Where an object goes in one command: along a vector, or by a matrix about a centre.
#pragma once

#include "geometry/matrix.h"
#include "geometry/vec.h"
#include "operations/edit_result.h"

namespace ferrowand {

class entity;

class Transformation {
 public:
  explicit Transformation(const Vec3& by)
      : matrix_(Matrix::Diagonal(1, 1, 1)), by_(by), isMove_(true) {}
  // What is no turn, scale or skew at all is a move by nothing.
  Transformation(const Matrix& matrix, const DVec3& centre);

  bool IsNone() const { return isMove_ && by_ == Vec3(); }
  // Not so for a matrix that flattens, or one of which an element is no number.
  bool KeepsVolume() const;
  bool IsMove() const { return isMove_; }
  const Matrix& Linear() const { return matrix_; }
  const DVec3& Centre() const { return centre_; }
  const Vec3& By() const { return by_; }
  DVec3 Apply(const DVec3& p) const;

 private:
  Matrix matrix_;
  DVec3 centre_;
  Vec3 by_;
  bool isMove_ = false;
};

// The object with all below it. When it is refused (BreaksBrush, OutsideWorld) it is left as it
// came out, for the caller to take back. What was broken or outside before may stay so.
// Raises the miss to that of the worst locked texture, in texels.
EditResult TransformObject(entity& e, const Transformation& transformation, bool textureLock,
                           double* textureMiss = nullptr);

}  // namespace ferrowand
