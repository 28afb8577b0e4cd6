// Where the children of large holders lie, which are mostly plain brushes in a layer. A hit test
// then walks through boxes that stand side by side instead of through 60,000 objects.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "geometry/vec.h"

namespace ferrowand {

class entity;

// World units on one axis.
struct AxisRange {
  int axis = 0;
  float low = 0, high = 0;
};

// Beyond, the mapping to pixels wraps around: what reaches there may be seen anywhere.
inline constexpr float MAPPED_LIMIT = 32767;
// Whether the box can be told to lie beside one of the ranges.
bool IsFarFrom(const Bounds& box, const std::array<AxisRange, 2>& ranges);

// Of one map. It is learned when it is first asked for, and anew after every change of the map.
class ChildBoxes {
 public:
  static constexpr std::size_t MANY = 256;  // children from which on it is worth it

  // The places of the children that may show something in both ranges, ascending: of plain brushes
  // those whose boxes do, and all others.
  std::vector<std::uint32_t> Near(const entity& holder, const std::array<AxisRange, 2>& ranges);

 private:
  std::unordered_map<const entity*, std::vector<Bounds>> boxes_;
  std::uint32_t revision_ = 0;  // of the map
};

}  // namespace ferrowand
