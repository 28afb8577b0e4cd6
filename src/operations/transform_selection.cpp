#include "operations/transform_selection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <optional>
#include <utility>

#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "document/transform.h"
#include "operations/face_editing.h"
#include "operations/links.h"
#include "operations/new_entity.h"
#include "operations/snap_corners.h"
#include "operations/template_travel.h"
#include "operations/texture_lock.h"
#include "operations/transformation.h"

namespace ferrowand {
namespace {

// From which axis the matrix takes each, where it takes axes to axes and changes no length.
std::optional<std::array<int, 3>> SourceAxes(const Matrix& matrix) {
  std::array<int, 3> sources{};
  for (int axis = 0; axis < 3; ++axis) {
    int found = 0;
    for (int from = 0; from < 3; ++from) {
      const float part = matrix.At(static_cast<unsigned>(from), static_cast<unsigned>(axis));
      if (part == 0) continue;
      if (std::fabs(part) != 1) return std::nullopt;
      sources[static_cast<std::size_t>(axis)] = from;
      ++found;
    }
    if (found != 1) return std::nullopt;
  }
  return sources;
}

bool IsWhole(double number) {
  return number == std::round(number);
}

bool HasWholeCorner(const std::vector<entity*>& trees) {
  const auto isWhole = [](const Vec3& p) { return IsWhole(p.x) && IsWhole(p.y) && IsWhole(p.z); };
  const auto isCorner = [&](const WindingPoint& p) { return isWhole(p.Position()); };
  bool found = false;
  for (const entity* tree : trees) {
    ForEachAlong(*tree, [&](const entity& e) {
      found = found || (e.HasOrigin() && isWhole(e.Origin()));
      for (const Face& face : e.brush.Faces()) {
        found = found || (face.w && std::ranges::any_of(std::as_const(*face.w).Points(), isCorner));
      }
    });
    if (found) break;
  }
  return found;
}

// Of a turn in a plane: a half goes to the side on which four turns end where they began.
void RoundTogether(double& a, double& b) {
  const auto rounded = [](double number, double other) {
    const double low = std::floor(number);
    if (number - low != 0.5) return std::round(number);
    return std::fmod(low + std::round(other), 2) == 0 ? low : low + 1;
  };
  const double first = rounded(a, b);
  b = rounded(b, first);
  a = first;
}

// What is turned by right angles or mirrored stays on whole units where the centre is whole, or
// half where that serves.
DVec3 CentreFor(const Matrix& matrix, const DVec3& wanted, const std::vector<entity*>& trees) {
  const auto sources = SourceAxes(matrix);
  if (!sources || !HasWholeCorner(trees)) return wanted;
  DVec3 centre = wanted;
  for (int pass = 0; pass < 2; ++pass) {
    for (int axis = 0; axis < 3; ++axis) {
      const int from = (*sources)[static_cast<std::size_t>(axis)];
      const float part = matrix.At(static_cast<unsigned>(from), static_cast<unsigned>(axis));
      if (IsWhole(centre[axis] - part * centre[from])) continue;
      if (from == axis) {
        centre[axis] = std::round(2 * centre[axis]) / 2;
      } else {
        RoundTogether(centre[axis], centre[from]);
      }
    }
  }
  return centre;
}

// What only moves keeps the way back, as long as its textures move along with nothing but offsets.
void Keep(EditStep& step, entity& root, const Transformation& transformation, bool textureLock) {
  const bool onlyMoves = transformation.IsMove() &&
                         !(textureLock && StretchesTextures(root, DVec3(transformation.By())));
  if (onlyMoves) {
    step.ChangeByMove(root, transformation.By());
  } else {
    step.Change(root);
  }
}

EditResult ApplyToSelection(Map& map, const Transformation& transformation,
                            const TransformOptions& options) {
  if (!transformation.KeepsVolume()) return EditResult::Flattens;
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  if (transformation.IsNone()) return EditResult::Done;
  {
    EditStep step(map);
    double textureMiss = 0;
    for (entity* root : roots) {
      Keep(step, *root, transformation, options.textureLock);
      const EditResult result =
          TransformObject(*root, transformation, options.textureLock, &textureMiss);
      if (result == EditResult::Done) continue;
      step.Cancel();
      return result;
    }
    if (textureMiss > TOLD_MISS) step.Remark("textures " + MissInWords(textureMiss));
  }
  if (!transformation.IsMove()) TellOffUnits(map, roots);
  return EditResult::Done;
}

EditResult ApplyToSelection(Map& map, const Matrix& matrix, const DVec3& centre,
                            const TransformOptions& options) {
  const Transformation transformation(matrix, CentreFor(matrix, centre, SelectedRoots(map)));
  return ApplyToSelection(map, transformation, options);
}

DVec3 MiddleOfSelection(const Map& map) {
  const Bounds bounds = SelectionBounds(map);
  return bounds.IsEmpty() ? DVec3() : (DVec3(bounds.mins) + DVec3(bounds.maxs)) * 0.5;
}

// Whole right angles are exact.
std::array<double, 2> CosSin(double degrees) {
  const double rest = std::fmod(degrees, 360);
  if (rest == std::floor(rest)) {
    const int whole = static_cast<int>(rest);
    return {CosDegrees(whole), SinDegrees(whole)};
  }
  const double radians = rest * (std::numbers::pi / 180);
  return {std::cos(radians), std::sin(radians)};
}

// A turn by twice the angle whose cosine is w, about the axis along v.
struct Quaternion {
  double w;
  DVec3 v;
};

Quaternion operator*(const Quaternion& a, const Quaternion& b) {
  return {a.w * b.w - Dot(a.v, b.v), b.v * a.w + a.v * b.w + Cross(a.v, b.v)};
}

Matrix MatrixOf(const Quaternion& q) {
  Matrix matrix(3, 3);
  for (int x = 0; x < 3; ++x) {
    DVec3 axis;
    axis[x] = 1;
    const DVec3 aside = Cross(q.v, axis);
    const DVec3 column = axis + (aside * q.w + Cross(q.v, aside)) * 2;
    for (int y = 0; y < 3; ++y) {
      matrix.At(static_cast<unsigned>(x), static_cast<unsigned>(y)) = static_cast<float>(column[y]);
    }
  }
  return matrix;
}

// The turn by the three angles, so many times over. About one axis that is exact where the angle
// is; about several the angles must not be multiplied one by one.
Matrix RepeatedTurn(const DVec3& degrees, int times) {
  if ((degrees.x != 0) + (degrees.y != 0) + (degrees.z != 0) <= 1) {
    return TurnMatrix(degrees * times);
  }
  Quaternion turn{1, {}};
  for (int axis = 0; axis < 3; ++axis) {
    const double half = degrees[axis] * (std::numbers::pi / 360);
    Quaternion one{std::cos(half), {}};
    one.v[axis] = std::sin(half);
    turn = one * turn;
  }
  const double sine = Length(turn.v);
  if (sine == 0) return Matrix::Diagonal(1, 1, 1);
  const double angle = std::atan2(sine, turn.w) * times;
  return MatrixOf({std::cos(angle), turn.v * (std::sin(angle) / sine)});
}

// The group that leads takes copies, of itself aside.
entity& ParentForCopy(const Map& map, const entity& original) {
  entity* const leading = map.leadingGroup();
  return leading && !leading->IsWithin(original) ? *leading : *original.Parent();
}

int CountObjects(const entity& e) {
  int count = 1;
  for (const EntityPtr& child : e.getEntityList()) count += CountObjects(*child);
  return count;
}

}  // namespace

EditResult MoveSelection(Map& map, const Vec3& by, const TransformOptions& options) {
  Vec3 limited = by;
  for (int axis = 0; axis < 3; ++axis) {
    if (!(options.axes >> axis & 1)) limited[axis] = 0;
  }
  return ApplyToSelection(map, Transformation(limited), options);
}

EditResult TransformSelection(Map& map, const Matrix& matrix, const DVec3& centre,
                              const TransformOptions& options) {
  return ApplyToSelection(map, matrix, centre, options);
}

EditResult ScaleSelection(Map& map, const DVec3& factors, const DVec3& centre,
                          const TransformOptions& options) {
  Matrix matrix = Matrix::Diagonal(1, 1, 1);
  for (unsigned axis = 0; axis < 3; ++axis) {
    if (options.axes >> axis & 1) {
      matrix.At(axis, axis) = static_cast<float>(factors[static_cast<int>(axis)]);
    }
  }
  return ApplyToSelection(map, matrix, centre, options);
}

EditResult FlipSelection(Map& map, int axis, const TransformOptions& options) {
  Matrix matrix = Matrix::Diagonal(1, 1, 1);
  const auto at = static_cast<unsigned>(axis);
  matrix.At(at, at) = -1;
  return ApplyToSelection(map, matrix, MiddleOfSelection(map), options);
}

EditResult RotateSelection(Map& map, int axisu, int axisv, double degrees, const DVec3& centre,
                           const TransformOptions& options) {
  return ApplyToSelection(map, TurnMatrix(axisu, axisv, degrees), centre, options);
}

EditResult SkewSelection(Map& map, int along, int across, bool highEdge, double amount,
                         const TransformOptions& options) {
  const Bounds bounds = SelectionBounds(map);
  const double extent = double{bounds.maxs[across]} - bounds.mins[across];
  if (bounds.IsEmpty() || extent <= 0) return EditResult::NothingSelected;
  Matrix matrix = Matrix::Diagonal(1, 1, 1);
  matrix.At(static_cast<unsigned>(across), static_cast<unsigned>(along)) =
      static_cast<float>(highEdge ? amount / extent : -amount / extent);
  const DVec3 fixed(highEdge ? bounds.mins : bounds.maxs);
  return ApplyToSelection(map, matrix, fixed, options);
}

Matrix TurnMatrix(const DVec3& degrees) {
  return TurnMatrix(0, 1, degrees.z) * (TurnMatrix(2, 0, degrees.y) * TurnMatrix(1, 2, degrees.x));
}

Matrix TurnMatrix(int axisu, int axisv, double degrees) {
  const auto [c, s] = CosSin(degrees);
  const auto u = static_cast<unsigned>(axisu);
  const auto v = static_cast<unsigned>(axisv);
  Matrix matrix = Matrix::Diagonal(1, 1, 1);
  matrix.At(u, u) = matrix.At(v, v) = static_cast<float>(c);
  matrix.At(v, u) = static_cast<float>(-s);
  matrix.At(u, v) = static_cast<float>(s);
  return matrix;
}

EditResult DuplicateSelection(Map& map, const Vec3& offset, const TransformOptions& options) {
  return DuplicateSelection(map, MultiDuplicate{.count = 1, .offset = offset}, options);
}

EditResult DuplicateSelection(Map& map, const MultiDuplicate& how,
                              const TransformOptions& options) {
  const std::vector<entity*> roots = SelectedRoots(map);
  if (roots.empty()) return EditResult::NothingSelected;
  std::int64_t objects = 0;
  for (const entity* root : roots) objects += CountObjects(*root);
  if (how.count > 1 && how.count * objects > MAXCOPIES) return EditResult::TooMany;

  if (map.leadingGroup() && !MayAddTo(*map.leadingGroup())) return EditResult::Declined;

  // All of them before the first is in the map: it may come to lie within what is copied.
  const DVec3 middle = CentreFor(TurnMatrix(how.turn), MiddleOfSelection(map), roots);
  std::vector<EntityPtr> copies;
  std::vector<entity*> parents;  // theirs
  for (int i = 1; i <= how.count; ++i) {
    const Transformation turn(RepeatedTurn(how.turn, i), middle);
    const Transformation move(how.offset * static_cast<float>(i));
    for (entity* root : roots) {
      EntityPtr copy = root->Copy();
      DropTemplates(*copy);
      EditResult result = TransformObject(*copy, turn, options.textureLock);
      if (result == EditResult::Done) result = TransformObject(*copy, move, options.textureLock);
      if (result != EditResult::Done) return result;
      copies.push_back(std::move(copy));
      parents.push_back(&ParentForCopy(map, *root));
    }
  }
  if (copies.empty()) return EditResult::Done;
  std::vector<entity*> added;
  added.reserve(copies.size());
  {
    EditStep step(map);
    for (std::size_t i = 0; i < copies.size(); ++i) {
      const std::size_t place = i % roots.size();
      if (how.namesLinksAnew && place == 0) {
        RenameInnerLinks(map, std::span(copies).subspan(i, roots.size()));
      }
      added.push_back(&AddTo(step, std::move(copies[i]), *parents[i]));
    }
    Select(map, added, false);
  }
  if (how.turn != DVec3()) TellOffUnits(map, added);
  return EditResult::Done;
}

}  // namespace ferrowand
