#include "document/action.h"

#include <array>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/report.h"
#include "document/map.h"

namespace ferrowand {
namespace {

enum Sort { BRUSHES, ENTITIES, LAYERS, SORTS };
constexpr std::array<std::array<const char*, 2>, SORTS> WORDS{
    {{"brush", "brushes"}, {"entity", "entities"}, {"layer", "layers"}}};

Sort SortOf(const entity& e) {
  const EntityKind kind = e.getClass()->Kind();
  return kind == EntityKind::Brush ? BRUSHES : kind == EntityKind::Layer ? LAYERS : ENTITIES;
}

// What went elsewhere, or else what went or changed, or else what came. Of a group and its members
// the group.
std::vector<const entity*> ActedOn(const Map& map, const MapChange& step) {
  if (!step.moved.empty()) return step.moved;
  const std::unordered_set<const entity*> changed(step.changed.begin(), step.changed.end());
  std::vector<const entity*> objects = step.went;
  for (const entity* e : step.changed) {
    if (e != &map && !changed.contains(e->Parent())) objects.push_back(e);
  }
  return objects.empty() ? step.came : objects;
}

}  // namespace

ActionScope::ActionScope(GameData& data, std::string name)
    : data_(data), isInner_(!data.action.empty()) {
  if (!isInner_) data_.action = std::move(name);
}

ActionScope::~ActionScope() {
  if (!isInner_) data_.action.clear();
}

std::string InWords(const entity& object) {
  const char* name = object.GetKey("XMPentityname");
  return Format("%s, a %s", name ? name : "Unnamed", object.getClass()->classname.c_str());
}

std::string InWords(std::span<const entity* const> objects) {
  std::array<std::size_t, SORTS> counts{};
  for (const entity* e : objects) ++counts[SortOf(*e)];
  std::string text;
  for (std::size_t sort = 0; sort < SORTS; ++sort) {
    const std::size_t count = counts[sort];
    if (count == 0) continue;
    if (!text.empty()) text += " and ";
    text += std::to_string(count) + " " + WORDS[sort][count == 1 ? 0 : 1];
  }
  return text;
}

std::string ActionInWords(const Map& map, const MapChange& step) {
  const std::string& action = map.Data().action;
  if (action.empty()) return "";
  const std::string objects = InWords(ActedOn(map, step));
  return objects.empty() ? action : action + ": " + objects;
}

}  // namespace ferrowand
