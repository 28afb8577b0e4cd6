#include "operations/entity_search.h"

#include <algorithm>
#include <unordered_set>

#include "base/path_text.h"
#include "base/text_pattern.h"
#include "document/classes/class_set.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "operations/entity_tree.h"
#include "operations/links.h"
#include "operations/spawn_flags.h"

namespace ferrowand {
namespace {

const EntityClass& ShownClassOf(const entity& e) {
  return e.getClass()->Set().FindClass(ShownClass(e));
}

class Matcher {
 public:
  explicit Matcher(const EntityQuery& query)
      : classname_(Pattern(query, query.classname)),
        key_(Pattern(query, query.key)),
        value_(Pattern(query, query.value)),
        target_(Pattern(query, query.target)),
        flag_(Pattern(query, query.flag)),
        keyIsAbsent_(query.keyIsAbsent && !query.key.empty()) {}

  bool operator()(const entity& e) const {
    if (classname_.IsEmpty() && IsNamelessBrush(e)) return false;
    return classname_.Matches(ShownClass(e)) && HasKey(e) && HasTarget(e) && HasFlag(e);
  }

 private:
  static TextPattern Pattern(const EntityQuery& query, const std::string& text) {
    return TextPattern(text, query.wholeTexts ? PatternRule::Whole : PatternRule::Part,
                       query.caseCounts);
  }

  // A value alone is looked for in what the game and the user have to do with.
  bool HasKey(const entity& e) const {
    if (key_.IsEmpty() && value_.IsEmpty()) return true;
    for (int i = 0; i < e.numkeys(); ++i) {
      const std::string& name = e.KeyName(i);
      const bool counts =
          !key_.IsEmpty() || !IsEditorKey(name) || EqualNoCase(name, "XMPentityname");
      if (!counts || !key_.Matches(name)) continue;
      if (keyIsAbsent_) return false;
      if (value_.Matches(e.KeyValue(i))) return true;
    }
    return keyIsAbsent_;
  }

  bool HasTarget(const entity& e) const {
    if (target_.IsEmpty()) return true;
    const EntityClass& own = ShownClassOf(e);
    for (int i = 0; i < e.numkeys(); ++i) {
      const std::string& name = e.KeyName(i);
      if ((IsLinkKey(own, name) || IsNameKey(own, name)) && target_.Matches(e.KeyValue(i))) {
        return true;
      }
    }
    return false;
  }

  bool HasFlag(const entity& e) const {
    if (flag_.IsEmpty()) return true;
    const int set = SpawnFlagsOf(e);
    const EntityClass& own = ShownClassOf(e);
    for (int bit = 0; bit < SPAWNFLAG_BITS; ++bit) {
      if ((set >> bit & 1) == 0) continue;
      const std::string name = SpawnFlagName(own, bit);
      if (!name.empty() && flag_.Matches(name)) return true;
    }
    return false;
  }

  TextPattern classname_, key_, value_, target_, flag_;
  bool keyIsAbsent_;
};

template <typename Visit>
void ForEachObject(const Map& map, const Visit& visit) {
  for (const EntityPtr& child : map.getEntityList()) ForEachEntity(*child, visit);
}

}  // namespace

std::vector<entity*> FindEntities(Map& map, const EntityQuery& query) {
  std::vector<entity*> all;
  for (const EntityPtr& child : map.getEntityList()) all.push_back(child.get());
  return FindEntitiesIn(all, query);
}

std::vector<entity*> FindEntitiesIn(std::span<entity* const> objects, const EntityQuery& query) {
  std::vector<entity*> found;
  if (query.IsEmpty()) return found;
  const Matcher matches(query);
  const std::unordered_set<const entity*> all(objects.begin(), objects.end());
  for (entity* object : objects) {
    const entity* above = object->Parent();
    while (above && !all.contains(above)) above = above->Parent();
    if (above) continue;
    ForEachEntity(*object, [&](const entity& e) {
      if (matches(e)) found.push_back(const_cast<entity*>(&e));
    });
  }
  return found;
}

std::set<std::string, std::less<>> ClassesIn(const Map& map) {
  std::set<std::string, std::less<>> classes;
  ForEachObject(map, [&](const entity& e) {
    const std::string_view name = ShownClass(e);
    if (!classes.contains(name)) classes.emplace(name);
  });
  return classes;
}

std::set<std::string, std::less<>> KeysIn(const Map& map) {
  std::set<std::string, std::less<>> keys;
  ForEachObject(map, [&](const entity& e) {
    for (int i = 0; i < e.numkeys(); ++i) {
      if (!IsEditorKey(e.KeyName(i))) keys.insert(e.KeyName(i));
    }
  });
  return keys;
}

std::set<std::string, std::less<>> FlagsIn(const Map& map) {
  std::set<std::string, std::less<>> flags;
  for (const std::string& name : ClassesIn(map)) {
    const EntityClass& known = map.classSet->FindClass(name);
    for (int bit = 0; bit < SPAWNFLAG_BITS; ++bit) flags.insert(SpawnFlagName(known, bit));
  }
  flags.erase("");
  return flags;
}

std::string SelectedInWords(std::size_t wanted, std::size_t selected) {
  return Format("%u selected", static_cast<unsigned>(selected)) +
         UnreachedInWords(wanted - selected);
}

std::string UnreachedInWords(std::size_t count) {
  return count == 0 ? "" : Format(", %u hidden or disabled", static_cast<unsigned>(count));
}

}  // namespace ferrowand
