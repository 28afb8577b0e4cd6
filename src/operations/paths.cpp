#include "operations/paths.h"

#include <unordered_set>
#include <vector>

#include "document/classes/special_classes.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/new_entity.h"

namespace ferrowand {
namespace {

constexpr char CORNER[] = "path_corner";

EntityPtr NewCorner(const Map& map, const std::string& name, const std::string& next) {
  EntityPtr corner = NewEntity(map, CORNER);
  corner->SetKey("targetname", name);
  corner->SetKey("XMPentityname", name);
  corner->SetKey("target", next);
  return corner;
}

}  // namespace

EditResult LayPath(Map& map, std::span<const Vec3> corners, std::string_view baseName) {
  const std::string base = FitForKey(baseName);
  if (base.empty() || corners.empty()) return EditResult::NoName;
  if (!MayAddTo(map.NewParent())) return EditResult::Declined;
  EditStep step(map);
  std::vector<entity*> laid;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const std::size_t next = (i + 1) % corners.size();
    EntityPtr corner = NewCorner(map, base + std::to_string(i), base + std::to_string(next));
    corner->SetOrigin(corners[i]);
    laid.push_back(&AddTo(step, std::move(corner), map.NewParent()));
  }
  Select(map, laid, false);
  return EditResult::Done;
}

std::string UnusedPathName(const Map& map) {
  std::unordered_set<std::string> names;
  ForEachEntity(map, [&](const entity& e) {
    if (const char* name = e.GetKey("targetname")) names.insert(name);
  });
  std::string base = "path_a";
  while (names.contains(base + "0") && base.back() < 'z') ++base.back();
  return base;
}

}  // namespace ferrowand
