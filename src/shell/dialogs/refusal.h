// What a command says when it has done nothing.
#pragma once

#include "operations/edit_result.h"

namespace ferrowand {

class Map;

// The user reads why, where there is something to say. Whether it was done.
bool Conclude(const Map& map, EditResult result);

}  // namespace ferrowand
