// Boxes sorted in space: which of many overlap a given one, or lie between planes, without a look
// at all of them.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "geometry/winding.h"

namespace ferrowand {

// With positive volume: boxes that only touch do not overlap, and an empty one overlaps nothing.
bool BoxesOverlap(const Bounds& a, const Bounds& b);
// Whether some of the box is in front of each of the planes, or on it.
bool IsInFrontOf(const Bounds& box, std::span<const Plane> planes);

class BoxTree {
 public:
  explicit BoxTree(std::vector<Bounds> boxes);

  // Their indices, ascending.
  std::vector<std::size_t> Overlapping(const Bounds& box) const;
  // The indices of those that are in front of all the planes, at least in part, in no order.
  std::vector<std::size_t> InFrontOf(std::span<const Plane> planes) const;

 private:
  // Halves of the boxes, side by side; a leaf has no children.
  struct Node {
    Bounds all;
    std::size_t begin, end;  // in order_
    std::size_t children;    // two nodes from this index on; 0 for a leaf
  };

  void Divide(std::size_t node);
  template <typename Takes>
  std::vector<std::size_t> Find(const Takes& takes) const;

  std::vector<Bounds> boxes_;
  std::vector<std::size_t> order_;
  std::vector<Node> nodes_;
};

}  // namespace ferrowand
