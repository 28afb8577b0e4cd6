#include "views/tools/corner_set.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "geometry/tolerance.h"

namespace ferrowand {
namespace {

double CellOf(double coordinate) {
  return std::floor(coordinate + 0.5);
}

}  // namespace

bool IsSameCorner(const Vec3& a, const Vec3& b) {
  return Length(DVec3(a) - DVec3(b)) <= ON_EPSILON;
}

std::size_t CornerSet::CellHash::operator()(const Cell& cell) const {
  std::size_t hash = 0;
  for (const double part : cell) hash = hash * 1000003 + std::hash<double>()(part);
  return hash;
}

bool CornerSet::Add(const Vec3& corner) {
  if (Contains(corner)) return false;
  cells_[{CellOf(corner.x), CellOf(corner.y), CellOf(corner.z)}].push_back(corner);
  return true;
}

bool CornerSet::Contains(const Vec3& corner) const {
  // Near the side of a cell the same corner may lie in the next one.
  for (int neighbour = 0; neighbour < 8; ++neighbour) {
    Cell cell;
    bool repeats = false;
    for (int axis = 0; axis < 3; ++axis) {
      const bool upper = (neighbour >> axis & 1) != 0;
      const double low = CellOf(corner[axis] - ON_EPSILON);
      const double high = CellOf(corner[axis] + ON_EPSILON);
      repeats |= upper && low == high;
      cell[static_cast<std::size_t>(axis)] = upper ? high : low;
    }
    if (repeats) continue;
    const auto found = cells_.find(cell);
    if (found == cells_.end()) continue;
    const auto same = [&](const Vec3& other) { return IsSameCorner(other, corner); };
    if (std::ranges::any_of(found->second, same)) return true;
  }
  return false;
}

}  // namespace ferrowand
