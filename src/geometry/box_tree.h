// Boxes sorted in space: which of many overlap a given one, without a look at all of them.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "geometry/vec.h"

namespace ferrowand {

// With positive volume: boxes that only touch do not overlap, and an empty one overlaps nothing.
bool BoxesOverlap(const Bounds& a, const Bounds& b);

class BoxTree {
 public:
  explicit BoxTree(std::vector<Bounds> boxes);

  // Their indices, ascending.
  std::vector<std::size_t> Overlapping(const Bounds& box) const;

 private:
  // Halves of the boxes, side by side; a leaf has no children.
  struct Node {
    Bounds all;
    std::size_t begin, end;  // in order_
    std::size_t children;    // two nodes from this index on; 0 for a leaf
  };

  void Divide(std::size_t node);

  std::vector<Bounds> boxes_;
  std::vector<std::size_t> order_;
  std::vector<Node> nodes_;
};

}  // namespace ferrowand
