// Places of corners, each once: what lies nearer to another than the tolerance is the same corner.
// Looking one up costs the same however many there are.
#pragma once

#include <array>
#include <span>
#include <unordered_map>
#include <vector>

#include "geometry/vec.h"

namespace ferrowand {

// Whether both are one corner.
bool IsSameCorner(const Vec3& a, const Vec3& b);

class CornerSet {
 public:
  CornerSet() = default;
  explicit CornerSet(std::span<const Vec3> corners) {
    for (const Vec3& corner : corners) Add(corner);
  }

  // False when it is there already.
  bool Add(const Vec3& corner);
  bool Contains(const Vec3& corner) const;

 private:
  // A cube of one unit around a whole point.
  using Cell = std::array<double, 3>;
  struct CellHash {
    std::size_t operator()(const Cell& cell) const;
  };

  std::unordered_map<Cell, std::vector<Vec3>, CellHash> cells_;
};

}  // namespace ferrowand
