#include "operations/links.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "base/path_text.h"
#include "base/text_parts.h"
#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "document/picking.h"
#include "operations/entity_keys.h"
#include "operations/new_entity.h"

namespace ferrowand {
namespace {

constexpr const char* LINK_KEYS[] = {"target", "target2", "killtarget"};
constexpr const char* NAME_KEY = "targetname";

bool IsOfType(const EntityClass& entityClass, std::string_view key, KeyType type) {
  return std::ranges::any_of(entityClass.keys, [&](const KeyDefinition& known) {
    return known.type == type && EqualNoCase(known.name, key);
  });
}

// The key and the value of each.
template <typename Is, typename Visit>
void ForEachKey(const entity& e, const Is& is, const Visit& visit) {
  if (IsPlainBrush(e)) return;
  for (int i = 0; i < e.numkeys(); ++i) {
    if (!e.KeyValue(i).empty() && is(*e.getClass(), e.KeyName(i))) {
      visit(e.KeyName(i), e.KeyValue(i));
    }
  }
}

using NamedEntities = std::unordered_map<std::string, std::vector<entity*>>;

// By their names in small letters.
NamedEntities EntitiesByName(Map& map) {
  NamedEntities named;
  ForEachEntity(map, [&](const entity& e) {
    ForEachKey(e, IsNameKey, [&](const std::string&, const std::string& name) {
      named[LowerCase(name)].push_back(const_cast<entity*>(&e));
    });
  });
  return named;
}

bool IsCalled(const entity& e, std::string_view name) {
  bool isCalled = false;
  ForEachKey(e, IsNameKey,
             [&](const std::string&, const std::string& own) { isCalled |= own == name; });
  return isCalled;
}

const std::vector<entity*>& Called(const NamedEntities& named, const std::string& name) {
  static const std::vector<entity*> NONE;
  const auto found = named.find(LowerCase(name));
  return found == named.end() ? NONE : found->second;
}

// One for each that is called so; one that leads nowhere else, or to one that is nearly called so.
void AddLinks(const NamedEntities& named, entity& from, const std::string& key,
              const std::string& name, std::vector<Link>& links) {
  const std::vector<entity*>& called = Called(named, name);
  const std::size_t before = links.size();
  for (entity* to : called) {
    if (IsCalled(*to, name)) links.push_back({&from, to, key, name});
  }
  if (links.size() > before) return;
  links.push_back({&from, called.empty() ? nullptr : called.front(), key, name, !called.empty()});
}

std::set<std::string> NamesOf(std::span<entity* const> objects) {
  std::set<std::string> names;
  for (const entity* e : objects) {
    ForEachKey(*e, IsNameKey, [&](const std::string&, const std::string& n) { names.insert(n); });
  }
  return names;
}

// All that anything is called, or points to, in small letters: none of these is free.
std::unordered_set<std::string> NamesInUse(const entity& tree) {
  std::unordered_set<std::string> names;
  ForEachEntity(tree, [&](const entity& e) {
    const auto note = [&](const std::string&, const std::string& n) { names.insert(LowerCase(n)); };
    ForEachKey(e, IsNameKey, note);
    ForEachKey(e, IsLinkKey, note);
  });
  return names;
}

std::string FreeName(const std::unordered_set<std::string>& used, const std::string& base) {
  for (int number = 1;; ++number) {
    std::string name = base + std::to_string(number);
    if (!used.contains(LowerCase(name))) return name;
  }
}

std::string WithoutNumber(std::string name) {
  while (name.size() > 1 && std::isdigit(static_cast<unsigned char>(name.back())) != 0) {
    name.pop_back();
  }
  return name;
}

// The keys keep their own case.
template <typename Is>
void RenameValues(entity& e, const Is& is, const std::map<std::string, std::string>& renamed) {
  std::vector<std::pair<std::string, std::string>> changes;
  ForEachKey(e, is, [&](const std::string& key, const std::string& name) {
    if (const auto found = renamed.find(name); found != renamed.end()) {
      changes.emplace_back(key, found->second);
    }
  });
  for (const auto& [key, name] : changes) e.SetKey(key, name);
}

void RenameInTree(entity& tree, const std::map<std::string, std::string>& renamed) {
  RenameValues(tree, IsNameKey, renamed);
  RenameValues(tree, IsLinkKey, renamed);
  for (const EntityPtr& child : tree.getEntityList()) RenameInTree(*child, renamed);
}

}  // namespace

bool IsLinkKey(const EntityClass& entityClass, std::string_view key) {
  return std::ranges::any_of(LINK_KEYS, [&](const char* k) { return EqualNoCase(k, key); }) ||
         IsOfType(entityClass, key, KeyType::Link);
}

bool IsNameKey(const EntityClass& entityClass, std::string_view key) {
  return EqualNoCase(key, NAME_KEY) || IsOfType(entityClass, key, KeyType::Name);
}

std::vector<Link> LinksFrom(Map& map, std::span<entity* const> objects) {
  std::vector<Link> links;
  const auto hasLinks = [](const entity* e) {
    bool has = false;
    ForEachKey(*e, IsLinkKey, [&](const std::string&, const std::string&) { has = true; });
    return has;
  };
  if (std::ranges::none_of(objects, hasLinks)) return links;
  const NamedEntities named = EntitiesByName(map);
  for (entity* e : objects) {
    ForEachKey(*e, IsLinkKey, [&](const std::string& key, const std::string& name) {
      AddLinks(named, *e, key, name, links);
    });
  }
  return links;
}

std::vector<Link> LinksTo(Map& map, std::span<entity* const> objects) {
  std::vector<Link> links;
  const std::set<std::string> names = NamesOf(objects);
  if (names.empty()) return links;
  std::unordered_map<std::string, entity*> ends;  // by small letters
  for (entity* e : objects) {
    for (const std::string& name : NamesOf({&e, 1})) ends.try_emplace(LowerCase(name), e);
  }
  ForEachEntity(map, [&](const entity& e) {
    ForEachKey(e, IsLinkKey, [&](const std::string& key, const std::string& name) {
      const auto end = ends.find(LowerCase(name));
      if (end == ends.end()) return;
      links.push_back({const_cast<entity*>(&e), end->second, key, name, !names.contains(name)});
    });
  });
  return links;
}

std::vector<entity*> LinkedWithSelection(Map& map, bool forward) {
  const std::vector<entity*> objects = EntitiesOf(map.selection.Objects());
  std::vector<entity*> ends;
  for (const Link& link : forward ? LinksFrom(map, objects) : LinksTo(map, objects)) {
    entity* const end = forward ? link.to : link.from;
    if (!end || link.isInOtherCase || !IsReachable(*end)) continue;
    if (std::ranges::find(ends, end) == ends.end()) ends.push_back(end);
  }
  return ends;
}

std::vector<std::string> NamesIn(const Map& map) {
  std::set<std::string> names;
  ForEachEntity(map, [&](const entity& e) {
    ForEachKey(e, IsNameKey, [&](const std::string&, const std::string& n) { names.insert(n); });
  });
  return {names.begin(), names.end()};
}

std::vector<std::string> NamesToConnect(const Map& map) {
  std::vector<std::string> names;
  const std::vector<entity*> objects = EntitiesOf(map.selection.Objects());
  for (std::size_t i = 0; i < objects.size(); ++i) {
    const char* name = objects[i]->GetKey(i == 0 ? LINK_KEYS[0] : NAME_KEY);
    if (name && *name && std::ranges::find(names, name) == names.end()) names.emplace_back(name);
  }
  return names;
}

EditResult ConnectSelection(Map& map, std::string_view name) {
  const std::vector<entity*> objects = EntitiesOf(map.selection.Objects());
  if (objects.size() < 2) return EditResult::NotTwo;
  const auto keyOf = [&](const entity* e) {
    return e == objects.front() ? LINK_KEYS[0] : NAME_KEY;
  };
  for (const entity* e : objects) {
    if (e->getClass()->Kind() == EntityKind::Brush) return EditResult::NoNameToLink;
    if (e->numkeys() + 1 >= MAXKEYS && !e->GetKey(keyOf(e))) return EditResult::TooManyKeys;
  }
  const char* const classname = objects[1]->GetKey("classname");
  const std::string used =
      name.empty() ? FreeName(NamesInUse(map), classname ? classname : "name") : std::string(name);
  const auto set = [&](EditStep& step, entity& e, const char* key) {
    const char* before = e.GetKey(key);
    if (before && used == before) return;
    step.ChangeKeys(e);
    ReplaceKey(e, key, used);
  };
  EditStep step(map);
  for (entity* e : objects) set(step, *e, keyOf(e));
  return EditResult::Done;
}

void RenameInnerLinks(const Map& map, std::span<const EntityPtr> arriving) {
  std::set<std::string> names, targets;
  for (const EntityPtr& tree : arriving) {
    ForEachEntity(*tree, [&](const entity& e) {
      ForEachKey(e, IsNameKey, [&](const std::string&, const std::string& n) { names.insert(n); });
      ForEachKey(e, IsLinkKey,
                 [&](const std::string&, const std::string& n) { targets.insert(n); });
    });
  }
  std::erase_if(names, [&](const std::string& name) { return !targets.contains(name); });
  if (names.empty()) return;
  std::unordered_set<std::string> used = NamesInUse(map);
  std::map<std::string, std::string> renamed;
  for (const std::string& name : names) {
    if (used.contains(LowerCase(name))) renamed[name];
  }
  for (const EntityPtr& tree : arriving) used.merge(NamesInUse(*tree));
  for (auto& [name, free] : renamed) {
    free = FreeName(used, WithoutNumber(name));
    used.insert(LowerCase(free));
  }
  if (renamed.empty()) return;
  for (const EntityPtr& tree : arriving) RenameInTree(*tree, renamed);
}

}  // namespace ferrowand
