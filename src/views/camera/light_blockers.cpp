#include "views/camera/light_blockers.h"

#include <algorithm>
#include <string_view>

#include "document/classes/entity_class.h"
#include "document/map.h"

namespace ferrowand {
namespace {

constexpr double LEAST_DEPTH = 0.01;  // of a ray within a brush, parts of its length

bool IsSolid(const Brush& brush) {
  const std::string_view name = brush.face(0).Name();
  return !name.starts_with('*') && name != "clip" && name != "trigger";
}

}  // namespace

LightBlockers::LightBlockers(const Map& map) {
  for (const EntityPtr& child : map.getEntityList()) Add(*child);
  tree_.emplace(boxes_);
}

void LightBlockers::Add(const entity& e) {
  const EntityKind kind = e.getClass()->Kind();
  if (kind == EntityKind::TemplateClass || kind == EntityKind::Entity ||
      kind == EntityKind::Unknown) {
    return;
  }
  if (e.brush.getNumFaces() > 0 && IsSolid(e.brush)) {
    for (const Face& face : e.brush.Faces()) planes_.push_back(face.plane);
    ends_.push_back(planes_.size());
    boxes_.push_back(e.brush.Box());
  }
  for (const EntityPtr& child : e.getEntityList()) Add(*child);
}

std::vector<std::size_t> LightBlockers::Between(const Bounds& box, const DVec3& light) const {
  Bounds all = box;
  all.Add(Vec3(light));
  return tree_->Overlapping(all);
}

bool LightBlockers::Blocks(std::size_t brush, const DVec3& from, const DVec3& to) const {
  double enters = 0, leaves = 1;
  for (std::size_t i = brush == 0 ? 0 : ends_[brush - 1]; i < ends_[brush]; ++i) {
    const double a = planes_[i].DistanceTo(from), b = planes_[i].DistanceTo(to);
    if (a > 0 && b > 0) return false;
    if (a > 0) enters = std::max(enters, a / (a - b));
    if (b > 0) leaves = std::min(leaves, a / (a - b));
  }
  return leaves - enters > LEAST_DEPTH;
}

}  // namespace ferrowand
