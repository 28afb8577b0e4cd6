#include "document/transform_keys.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>

#include "base/number_text.h"
#include "base/text_writer.h"
#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/entity.h"
#include "document/transform.h"
#include "geometry/tolerance.h"

namespace ferrowand {
namespace {

constexpr double DEGREE = std::numbers::pi / 180;

DVec3 Product(const Matrix& matrix, const DVec3& v) {
  return Transform(v, matrix, {});
}

int WholeDegrees(const DVec3& direction) {
  return (RoundToInt(std::atan2(direction.y, direction.x) / DEGREE) + 360) % 360;
}

DVec3 Row(const Matrix& matrix, unsigned y) {
  return {matrix.At(0, y), matrix.At(1, y), matrix.At(2, y)};
}

// Turned or mirrored, but as long in all directions as in any.
bool KeepsShape(const Matrix& matrix) {
  const double length = Dot(Row(matrix, 0), Row(matrix, 0));
  for (unsigned y = 0; y < 3; ++y) {
    const DVec3 row = Row(matrix, y);
    if (std::fabs(Dot(row, row) - length) > SHAPE_SLACK * length) return false;
    if (std::fabs(Dot(row, Row(matrix, (y + 1) % 3))) > SHAPE_SLACK * length) return false;
  }
  return true;
}

// By its key: the classes of the map may not know it.
bool IsLight(const entity& e) {
  const char* classname = e.GetKey("classname");
  return classname && std::string_view(classname).starts_with("light");
}

// Where a monster looks and a door goes is a turn about Z. Below 0 stand up and down, and the angle
// of a light is the width of its cone.
void TurnFacing(entity& e, const Matrix& matrix) {
  if (!e.GetKey("angle") || e.angle() < 0 || IsLight(e)) return;
  const DVec3 facing = Product(matrix, {CosDegrees(e.angle()), SinDegrees(e.angle()), 0});
  if (std::hypot(facing.x, facing.y) <= SNAP_EPSILON) return;
  const int angle = WholeDegrees(facing);
  if (angle != e.angle()) e.SetKey("angle", std::to_string(angle));
}

// Degrees: first rolled about X, then pitched about Y, then turned about Z.
struct ThreeAngles {
  double pitch, yaw, roll;
};

// What looks ahead, to the left and up.
struct Axes {
  DVec3 ahead, left, up;
};

Axes AxesOf(const ThreeAngles& angles) {
  const double pitch = angles.pitch * DEGREE, yaw = angles.yaw * DEGREE,
               roll = angles.roll * DEGREE;
  const DVec3 ahead(std::cos(pitch) * std::cos(yaw), std::cos(pitch) * std::sin(yaw),
                    -std::sin(pitch));
  const DVec3 level(-std::sin(yaw), std::cos(yaw), 0);
  const DVec3 above = Cross(ahead, level);
  return {ahead, level * std::cos(roll) + above * std::sin(roll),
          above * std::cos(roll) - level * std::sin(roll)};
}

// Of what looks straight up or down only the sum of turn and roll shows: the roll stays.
ThreeAngles AnglesOf(const Axes& axes, double oldRoll) {
  const double pitch = std::asin(std::clamp(-axes.ahead.z, -1.0, 1.0)) / DEGREE;
  if (std::hypot(axes.ahead.x, axes.ahead.y) <= SNAP_EPSILON) {
    const double roll = oldRoll * DEGREE;
    const DVec3 level = axes.left * std::cos(roll) - axes.up * std::sin(roll);
    return {pitch, std::atan2(-level.x, level.y) / DEGREE, oldRoll};
  }
  const double yaw = std::atan2(axes.ahead.y, axes.ahead.x);
  const DVec3 level(-std::sin(yaw), std::cos(yaw), 0);
  const DVec3 above = Cross(axes.ahead, level);
  return {pitch, yaw / DEGREE, std::atan2(Dot(axes.left, above), Dot(axes.left, level)) / DEGREE};
}

ThreeAngles Turned(const ThreeAngles& angles, const Matrix& matrix) {
  const Axes axes = AxesOf(angles);
  const DVec3 ahead = Normalise(Product(matrix, axes.ahead));
  const DVec3 up = Normalise(Product(matrix, axes.up));
  return AnglesOf({ahead, Cross(up, ahead), up}, angles.roll);
}

using Numbers = std::array<double, 3>;

std::optional<Numbers> ThreeNumbers(std::string_view text) {
  constexpr std::string_view BLANKS = " \t\r\n";
  Numbers numbers{};
  for (double& number : numbers) {
    text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(BLANKS));
    const auto read = ReadNumber(word);
    if (!read) return std::nullopt;
    number = *read;
    text.remove_prefix(word.size());
  }
  return text.find_first_not_of(BLANKS) == text.npos ? std::optional(numbers) : std::nullopt;
}

// To a thousandth, which is what a matrix of 32 bits is good for.
std::string AngleText(double degrees) {
  std::string text = FloatText(std::round(degrees * 1000) / 1000 + 0.0);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  return text;
}

bool IsSameAngle(double a, double b) {
  return std::fabs(std::remainder(a - b, 360)) < 0.0005;
}

// Pitch, turn and roll, a pitch above 0 looking down; of a light turn, pitch and roll, above 0
// looking up.
void TurnThreeAngles(entity& e, const char* key, const Matrix& matrix) {
  const char* text = e.GetKey(key);
  const auto old = text ? ThreeNumbers(text) : std::nullopt;
  if (!old) return;
  const bool isLight = IsLight(e);
  const ThreeAngles before = isLight ? ThreeAngles{-(*old)[1], (*old)[0], (*old)[2]}
                                     : ThreeAngles{(*old)[0], (*old)[1], (*old)[2]};
  const ThreeAngles now = Turned(before, matrix);
  if (IsSameAngle(now.pitch, before.pitch) && IsSameAngle(now.yaw, before.yaw) &&
      IsSameAngle(now.roll, before.roll)) {
    return;
  }
  const double yaw = now.yaw < -0.0005 ? now.yaw + 360 : now.yaw;
  const Numbers numbers =
      isLight ? Numbers{yaw, -now.pitch, now.roll} : Numbers{now.pitch, yaw, now.roll};
  const std::string value =
      AngleText(numbers[0]) + ' ' + AngleText(numbers[1]) + ' ' + AngleText(numbers[2]);
  e.RemoveKeys(key);
  e.SetKey(key, value);
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

void TransformKeys(entity& e, const Matrix& matrix) {
  const bool keepsShape = KeepsShape(matrix);
  ForEachAlong(e, [&](entity& part) {
    const EntityKind kind = part.getClass()->Kind();
    if (kind == EntityKind::TemplateInstance) return TransformInstance(part, matrix);
    if (kind == EntityKind::Embed) TransformEmbed(part, matrix);
    if (!keepsShape) return;
    TurnFacing(part, matrix);
    TurnThreeAngles(part, "angles", matrix);
    TurnThreeAngles(part, "mangle", matrix);
  });
}

}  // namespace ferrowand
