// Binding entities to keys: pressing the key inserts a copy.
#pragma once

#include "shell/system/win32.h"

#include <cstddef>
#include <string>
#include <vector>

#include "document/bound_entities.h"

namespace ferrowand {

class Reporter;

inline constexpr std::size_t MAXBOUND = 255;  // as many as the settings can count

// A point entity that holds nothing else.
bool CanBind(const entity& e);
// Says what can be.
void RefuseToBind(Reporter& reporter);

// By which it is told from others; "Unnamed" without a name.
std::string NameOf(const entity& prototype);

// From the user; NO_KEY when he thinks better of it, and, after saying so, for a key that another
// entity has.
int AskFreeKey(HWND owner, const std::vector<BoundEntity>& bound, Reporter& reporter);

// Asks for a key and binds a copy of the entity to it; false when that came to nothing, of which
// the user knows.
bool BindToKey(HWND owner, const entity& e, BoundEntities& bound, Reporter& reporter);

}  // namespace ferrowand
