#include "geometry/box_tree.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace ferrowand {
namespace {

constexpr std::size_t LEAF_SIZE = 8;

int LongestAxis(const Bounds& box) {
  const Vec3 size = box.maxs - box.mins;
  if (size.x >= size.y && size.x >= size.z) return 0;
  return size.y >= size.z ? 1 : 2;
}

}  // namespace

bool BoxesOverlap(const Bounds& a, const Bounds& b) {
  for (int axis = 0; axis < 3; ++axis) {
    if (b.maxs[axis] <= a.mins[axis] || a.maxs[axis] <= b.mins[axis]) return false;
  }
  return true;
}

bool IsInFrontOf(const Bounds& box, std::span<const Plane> planes) {
  return std::ranges::all_of(planes, [&box](const Plane& plane) {
    DVec3 foremost;
    for (int axis = 0; axis < 3; ++axis) {
      foremost[axis] = plane.normal[axis] >= 0 ? box.maxs[axis] : box.mins[axis];
    }
    return plane.DistanceTo(foremost) >= 0;
  });
}

BoxTree::BoxTree(std::vector<Bounds> boxes) : boxes_(std::move(boxes)), order_(boxes_.size()) {
  std::iota(order_.begin(), order_.end(), std::size_t{0});
  if (boxes_.empty()) return;
  nodes_.push_back({{}, 0, boxes_.size(), 0});
  for (std::size_t node = 0; node < nodes_.size(); ++node) Divide(node);
}

void BoxTree::Divide(std::size_t node) {
  const auto [ignored, begin, end, none] = nodes_[node];
  Bounds all;
  for (std::size_t i = begin; i < end; ++i) all.Add(boxes_[order_[i]]);
  nodes_[node].all = all;
  if (end - begin <= LEAF_SIZE) return;

  const int axis = LongestAxis(all);
  const auto at = [this](std::size_t index) {
    return order_.begin() + static_cast<std::ptrdiff_t>(index);
  };
  const std::size_t middle = begin + (end - begin) / 2;
  std::nth_element(at(begin), at(middle), at(end), [&](std::size_t a, std::size_t b) {
    return boxes_[a].mins[axis] + boxes_[a].maxs[axis] <
           boxes_[b].mins[axis] + boxes_[b].maxs[axis];
  });
  nodes_[node].children = nodes_.size();
  nodes_.push_back({{}, begin, middle, 0});
  nodes_.push_back({{}, middle, end, 0});
}

template <typename Takes>
std::vector<std::size_t> BoxTree::Find(const Takes& takes) const {
  std::vector<std::size_t> found;
  std::vector<std::size_t> open;
  if (!nodes_.empty()) open.push_back(0);
  while (!open.empty()) {
    const Node& node = nodes_[open.back()];
    open.pop_back();
    if (!takes(node.all)) continue;
    if (node.children) {
      open.insert(open.end(), {node.children, node.children + 1});
      continue;
    }
    for (std::size_t i = node.begin; i < node.end; ++i) {
      if (takes(boxes_[order_[i]])) found.push_back(order_[i]);
    }
  }
  return found;
}

std::vector<std::size_t> BoxTree::Overlapping(const Bounds& box) const {
  std::vector<std::size_t> found =
      Find([&box](const Bounds& other) { return BoxesOverlap(other, box); });
  std::ranges::sort(found);
  return found;
}

std::vector<std::size_t> BoxTree::InFrontOf(std::span<const Plane> planes) const {
  return Find([planes](const Bounds& box) { return IsInFrontOf(box, planes); });
}

}  // namespace ferrowand
