#include "views/child_boxes.h"

#include <algorithm>
#include <limits>

#include "document/map.h"
#include "document/reach.h"

namespace ferrowand {
namespace {

constexpr float FAR = std::numeric_limits<float>::infinity();
constexpr Bounds ANYWHERE{{-FAR, -FAR, -FAR}, {FAR, FAR, FAR}};

}  // namespace

bool IsFarFrom(const Bounds& box, const std::array<AxisRange, 2>& ranges) {
  for (const AxisRange& range : ranges) {
    const float low = box.mins[range.axis], high = box.maxs[range.axis];
    if (low < -MAPPED_LIMIT || high > MAPPED_LIMIT) return false;
    if (high < range.low || low > range.high) return true;
  }
  return false;
}

std::vector<std::uint32_t> ChildBoxes::Near(const entity& holder,
                                            const std::array<AxisRange, 2>& ranges) {
  const std::uint32_t revision = holder.OwningMap()->Revision();
  if (revision != revision_) boxes_.clear();
  revision_ = revision;
  std::vector<Bounds>& boxes = boxes_[&holder];
  if (boxes.empty()) {
    for (const EntityPtr& child : holder.getEntityList()) {
      boxes.push_back(IsPlainBrush(*child) ? child->brush.Box() : ANYWHERE);
    }
  }
  std::vector<std::uint32_t> near;
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    if (!IsFarFrom(boxes[i], ranges)) near.push_back(static_cast<std::uint32_t>(i));
  }
  return near;
}

}  // namespace ferrowand
