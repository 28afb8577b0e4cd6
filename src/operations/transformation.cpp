#include "operations/transformation.h"

#include <algorithm>
#include <cmath>

#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "document/entity.h"
#include "document/transform.h"
#include "document/transform_keys.h"
#include "operations/brush_check.h"
#include "operations/templates.h"
#include "operations/texture_lock.h"

namespace ferrowand {
namespace {

DVec3 Row(const Matrix& matrix, unsigned y) {
  return DVec3(matrix.At(0, y), matrix.At(1, y), matrix.At(2, y));
}

Bounds BoundsAlone(const entity& e, bool withShown) {
  Bounds bounds = withShown && IsInstance(e) ? InstanceBounds(e) : e.brush.Box();
  if (e.HasOrigin()) bounds.Add(e.Origin());
  return bounds;
}

// What each object of a tree was fit for, root first.
struct Fitness {
  bool inside;
  bool sound;
  bool scaled;  // as a key can tell and a brush can bear
};

// Whole steps along the axes change no shape.
bool ShapeMayChange(const Transformation& transformation) {
  if (!transformation.IsMove()) return true;
  for (int axis = 0; axis < 3; ++axis) {
    if (transformation.By()[axis] != std::round(transformation.By()[axis])) return true;
  }
  return false;
}

std::vector<Fitness> FitnessOf(const entity& tree, const Transformation& transformation) {
  const bool checkShape = ShapeMayChange(transformation);
  std::vector<Fitness> all;
  Reporter& reporter = tree.getClass()->Set().Library().Report();
  ForEachEntity(tree, [&](const entity& e) {
    const Bounds bounds = BoundsAlone(e, !transformation.IsMove());
    all.push_back({bounds.IsEmpty() || IsInsideWorld(bounds),
                   !checkShape || SurvivesSaving(e.brush, reporter),
                   !IsInstance(e) || CheckScale(Vec3(ShapeOf(e).scale)) == EditResult::Done});
  });
  return all;
}

EditResult Compare(const std::vector<Fitness>& before, const std::vector<Fitness>& after) {
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (before[i].inside && !after[i].inside) return EditResult::OutsideWorld;
    if (before[i].sound && !after[i].sound) return EditResult::BreaksBrush;
    if (before[i].scaled && !after[i].scaled) return EditResult::Flattens;
  }
  return EditResult::Done;
}

// The texels by which a locked texture misses.
double TransformUnchecked(entity& e, const Transformation& transformation, bool textureLock) {
  if (transformation.IsMove()) {
    TranslateEntity(e, transformation.By());
    return textureLock ? ShiftTextures(e, DVec3(transformation.By())) : 0;
  }
  double miss = 0;
  if (textureLock) {
    const TextureLock lock(e);
    TransformEntity(e, transformation.Linear(), transformation.Centre());
    miss = lock.Apply(e, [&](const DVec3& p) { return transformation.Apply(p); });
  } else {
    TransformEntity(e, transformation.Linear(), transformation.Centre());
  }
  TransformKeys(e, transformation.Linear());
  return miss;
}

}  // namespace

Transformation::Transformation(const Matrix& matrix, const DVec3& centre)
    : matrix_(matrix), centre_(centre) {
  isMove_ = true;
  for (unsigned y = 0; y < 3; ++y) {
    for (unsigned x = 0; x < 3; ++x) isMove_ &= matrix.At(x, y) == (x == y ? 1.0f : 0.0f);
  }
}

bool Transformation::KeepsVolume() const {
  const double volume = Dot(Row(matrix_, 0), Cross(Row(matrix_, 1), Row(matrix_, 2)));
  return std::isfinite(volume) && volume != 0 && std::isfinite(centre_.x + centre_.y + centre_.z) &&
         std::isfinite(by_.x + by_.y + by_.z);
}

DVec3 Transformation::Apply(const DVec3& p) const {
  return isMove_ ? p + DVec3(by_) : Transform(p, matrix_, centre_);
}

EditResult TransformObject(entity& e, const Transformation& transformation, bool textureLock,
                           double* textureMiss) {
  if (transformation.IsNone()) return EditResult::Done;
  const std::vector<Fitness> before = FitnessOf(e, transformation);
  const double miss = TransformUnchecked(e, transformation, textureLock);
  if (textureMiss) *textureMiss = std::max(*textureMiss, miss);
  return Compare(before, FitnessOf(e, transformation));
}

}  // namespace ferrowand
