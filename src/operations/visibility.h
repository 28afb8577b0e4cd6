// Hiding objects for a while.
#pragma once

#include "operations/edit_result.h"

namespace ferrowand {

class Map;

// The selected objects become "hidden", and so are not selected any more.
EditResult HideSelection(Map& map);
// Every hidden object of the map gets its class back, those in hidden and disabled layers too.
EditResult ShowHidden(Map& map);

}  // namespace ferrowand
