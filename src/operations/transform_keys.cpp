#include "operations/transform_keys.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "base/text_writer.h"
#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/entity.h"
#include "geometry/tolerance.h"
#include "operations/transformation.h"

namespace ferrowand {
namespace {

constexpr double DEGREE = std::numbers::pi / 180;

DVec3 Product(const Matrix& matrix, const DVec3& v) {
  return Transform(v, matrix, {});
}

int WholeDegrees(const DVec3& direction) {
  return (RoundToInt(std::atan2(direction.y, direction.x) / DEGREE) + 360) % 360;
}

// Where a monster looks and a door goes is a turn about Z. Below 0 stand up and down, and the angle
// of a light is the width of its cone.
void TurnFacing(entity& e, const Matrix& matrix) {
  if (!e.GetKey("angle") || e.angle() < 0 || e.getClass()->classname.starts_with("light")) return;
  const DVec3 facing = Product(matrix, {CosDegrees(e.angle()), SinDegrees(e.angle()), 0});
  if (std::hypot(facing.x, facing.y) <= SNAP_EPSILON) return;
  const int angle = WholeDegrees(facing);
  if (angle != e.angle()) e.SetKey("angle", std::to_string(angle));
}

// Of the instance's own axes, as the matrix leaves them: false when they do not stand upright and
// square to each other.
bool AreUpright(const DVec3& x, const DVec3& y, const DVec3& z) {
  const auto isSmall = [](double part, double length) {
    return std::fabs(part) <= FACTOR_SLACK * length;
  };
  const double across = Length(x), along = Length(y), up = Length(z);
  return isSmall(x.z, across) && isSmall(y.z, along) && isSmall(z.x, up) && isSmall(z.y, up) &&
         isSmall(Dot(x, y), across * along);
}

double Snapped(double factor) {
  const double whole = std::round(factor);
  return std::fabs(factor - whole) <= FACTOR_SLACK ? whole : factor;
}

void TransformInstance(entity& instance, const Matrix& matrix) {
  const InstanceShape shape = ShapeOf(instance);
  const double c = CosDegrees(shape.angle), s = SinDegrees(shape.angle);
  DVec3 x = Product(matrix, {c, s, 0});
  const DVec3 y = Product(matrix, {-s, c, 0});
  const DVec3 z = Product(matrix, {0, 0, 1});
  if (!AreUpright(x, y, z)) return;
  // A turn turns; what is mirrored keeps its angle as far as it can.
  const bool isMirrored = x.x * y.y - x.y * y.x < 0;
  const bool isTurnedAway = isMirrored && x.x * c + x.y * s < 0;
  if (isTurnedAway) x = -x;
  const DVec3 factors(Snapped(isTurnedAway ? -Length(x) : Length(x)),
                      Snapped(isMirrored != isTurnedAway ? -Length(y) : Length(y)), Snapped(z.z));
  const int angle = WholeDegrees(x);
  if (CosDegrees(angle) != c || SinDegrees(angle) != s) {
    instance.SetKey("angle", std::to_string(angle));
  }
  if (factors == DVec3(1, 1, 1)) return;
  for (int axis = 0; axis < 3; ++axis) {
    instance.SetKey(SCALE_KEYS[axis], FloatText(shape.scale[axis] * factors[axis]));
  }
}

// Whether the axes of the world stay axes of the world.
bool KeepsAxes(const Matrix& matrix) {
  for (unsigned y = 0; y < 3; ++y) {
    double sum = 0, most = 0;
    for (unsigned x = 0; x < 3; ++x) {
      const double part = std::fabs(matrix.At(x, y));
      sum += part;
      most = std::max(most, part);
    }
    if (sum - most > FACTOR_SLACK * most) return false;
  }
  return true;
}

void TransformEmbed(entity& embed, const Matrix& matrix) {
  if (!KeepsAxes(matrix)) return;
  const Bounds old = EmbedBox(embed);
  Bounds box;
  box.Add(Vec3(Product(matrix, DVec3(old.mins))));
  box.Add(Vec3(Product(matrix, DVec3(old.maxs))));
  for (int axis = 0; axis < 3; ++axis) {
    if (box.mins[axis] != old.mins[axis]) {
      embed.SetKey(EMBED_MIN_KEYS[axis], FloatText(box.mins[axis]));
    }
    if (box.maxs[axis] != old.maxs[axis]) {
      embed.SetKey(EMBED_MAX_KEYS[axis], FloatText(box.maxs[axis]));
    }
  }
}

}  // namespace

void TransformKeys(entity& e, const Transformation& transformation) {
  const Matrix& matrix = transformation.Linear();
  const EntityKind kind = e.getClass()->Kind();
  if (kind == EntityKind::TemplateInstance) {
    TransformInstance(e, matrix);
  } else if (transformation.KeepsShape()) {
    TurnFacing(e, matrix);
  }
  if (kind == EntityKind::Embed) TransformEmbed(e, matrix);
  for (const EntityPtr& child : e.getEntityList()) TransformKeys(*child, transformation);
}

}  // namespace ferrowand
