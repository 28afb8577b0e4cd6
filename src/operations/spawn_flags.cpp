#include "operations/spawn_flags.h"

#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "document/classes/entity_class.h"
#include "document/edit_step.h"
#include "document/map.h"
#include "operations/new_entity.h"

namespace ferrowand {
namespace {

constexpr const char* KEY = "spawnflags";
constexpr int FIRST_LEVEL_BIT = 8;
constexpr std::array LEVELS = {"Not in easy", "Not in normal", "Not in hard", "Not in deathmatch"};

bool IsUnused(std::string_view name) {
  return name.empty() || name == "x" || name == "X" || name == "-" || name == "?";
}

bool HasFlags(const entity& e) {
  const EntityKind kind = e.getClass()->Kind();
  return e.Parent() && (kind == EntityKind::Entity || kind == EntityKind::Unknown);
}

}  // namespace

int SpawnFlagsOf(const entity& e) {
  const char* value = e.GetKey(KEY);
  return value ? ParseInt(value) : 0;
}

std::string SpawnFlagName(const EntityClass& entityClass, int bit) {
  const auto index = static_cast<std::size_t>(bit);
  if (index < entityClass.flags.size() && !IsUnused(entityClass.flags[index])) {
    return entityClass.flags[index];
  }
  const bool isLevel = bit >= FIRST_LEVEL_BIT && index < FIRST_LEVEL_BIT + LEVELS.size();
  return isLevel ? LEVELS[index - FIRST_LEVEL_BIT] : "";
}

std::vector<SpawnFlag> NamedSpawnFlags(std::span<entity* const> objects) {
  std::vector<SpawnFlag> flags;
  if (objects.empty() ||
      !std::ranges::all_of(objects, [](const entity* e) { return HasFlags(*e); })) {
    return flags;
  }
  int any = 0, all = -1;
  std::vector<const EntityClass*> classes;
  for (const entity* e : objects) {
    any |= SpawnFlagsOf(*e);
    all &= SpawnFlagsOf(*e);
    if (std::ranges::find(classes, e->getClass()) == classes.end())
      classes.push_back(e->getClass());
  }
  for (int bit = 0; bit < SPAWNFLAG_BITS; ++bit) {
    const std::string name = SpawnFlagName(*classes.front(), bit);
    const bool isShared = std::ranges::all_of(classes, [&](const EntityClass* other) {
      return other == classes.front() || SpawnFlagName(*other, bit) == name;
    });
    if (name.empty() || !isShared) continue;
    const FlagState state = (all >> bit & 1) != 0   ? FlagState::On
                            : (any >> bit & 1) != 0 ? FlagState::Mixed
                                                    : FlagState::Off;
    flags.push_back({bit, name, state});
  }
  return flags;
}

EditResult SetSpawnFlag(Map& map, std::span<entity* const> objects, int bit, bool on) {
  const auto changed = [&](const entity& e) {
    const int before = SpawnFlagsOf(e);
    return on ? before | 1 << bit : before & ~(1 << bit);
  };
  for (const entity* e : objects) {
    if (!e->GetKey(KEY) && e->numkeys() + 1 >= MAXKEYS) return EditResult::TooManyKeys;
  }
  EditStep step(map);
  for (entity* e : objects) {
    const int flags = changed(*e);
    if (flags == SpawnFlagsOf(*e)) continue;
    step.ChangeKeys(*e);
    if (flags != 0) {
      ReplaceKey(*e, KEY, std::to_string(flags));
    } else {
      e->RemoveKeys(KEY);
    }
  }
  return EditResult::Done;
}

std::string ChangedFlags(std::span<entity* const> objects, const EntityClass& newClass) {
  std::string text;
  for (int bit = 0; bit < SPAWNFLAG_BITS; ++bit) {
    for (const entity* e : objects) {
      if ((SpawnFlagsOf(*e) >> bit & 1) == 0) continue;
      const std::string before = SpawnFlagName(*e->getClass(), bit);
      const std::string after = SpawnFlagName(newClass, bit);
      if (before == after) continue;
      text += text.empty() ? "Spawnflags that are set: " : ", ";
      text += (before.empty() ? std::to_string(1 << bit) : before) +
              (after.empty() ? " means nothing any more" : " is " + after + " now");
      break;
    }
  }
  return text;
}

}  // namespace ferrowand
