// The bits of the key "spawnflags" as the classes name them.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "operations/edit_result.h"

namespace ferrowand {

class EntityClass;
class Map;
class entity;

inline constexpr int SPAWNFLAG_BITS = 31;  // of a number that keeps its sign

enum class FlagState : unsigned char { Off, On, Mixed };

struct SpawnFlag {
  int bit;
  std::string name;
  FlagState state;
};

int SpawnFlagsOf(const entity& e);
// Empty for a bit that is not used.
std::string SpawnFlagName(const EntityClass& entityClass, int bit);

// Those that all the classes among the objects name alike, lowest first. None of the world, and of
// what is no entity to the game.
std::vector<SpawnFlag> NamedSpawnFlags(std::span<entity* const> objects);
// Of all the objects, the other bits of each kept. Without any bit the key goes.
EditResult SetSpawnFlag(Map& map, std::span<entity* const> objects, int bit, bool on);
// What set bits of the objects would mean under that class, one sentence; empty where that is what
// they mean already.
std::string ChangedFlags(std::span<entity* const> objects, const EntityClass& newClass);

}  // namespace ferrowand
