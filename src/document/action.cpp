#include "document/action.h"

#include <algorithm>
#include <array>
#include <iterator>
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

// What is hidden counts as what it is, not as what hides it.
Sort SortOf(const entity& e) {
  const EntityKind kind = e.getClass()->Kind();
  if (kind == EntityKind::Hidden) {
    const char* const was = e.GetKey("XMPoldclassname");
    return was && e.getClass()->Set().FindClass(was).Kind() == EntityKind::Brush ? BRUSHES
                                                                                 : ENTITIES;
  }
  return kind == EntityKind::Brush ? BRUSHES : kind == EntityKind::Layer ? LAYERS : ENTITIES;
}

// What went elsewhere, or else what went or changed, or else what came. Of a group and its members
// the group.
std::vector<const entity*> ActedOn(const Map& map, const MapChange& step) {
  const auto isLayer = [](const entity* e) { return SortOf(*e) == LAYERS; };
  if (std::ranges::any_of(step.went, isLayer)) return step.went;  // its objects go to another
  if (!step.moved.empty()) return step.moved;
  const std::unordered_set<const entity*> changed(step.changed.begin(), step.changed.end());
  std::vector<const entity*> objects = step.went;
  for (const entity* e : step.changed) {
    if (e != &map && !changed.contains(e->Parent())) objects.push_back(e);
  }
  if (!objects.empty()) return objects;
  // Templates come along with their instances.
  std::ranges::copy_if(step.came, std::back_inserter(objects), [](const entity* e) {
    return e->getClass()->Kind() != EntityKind::TemplateClass;
  });
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

std::string ActionInWords(const Map& map, const MapChange& step,
                          std::span<const entity* const> objects) {
  const std::string& action = map.Data().action;
  if (action.empty()) return "";
  const std::string words = objects.empty() ? InWords(ActedOn(map, step)) : InWords(objects);
  return words.empty() ? action : action + ": " + words;
}

}  // namespace ferrowand
