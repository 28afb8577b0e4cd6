// Layers: their making, their state and what they hold.
#pragma once

#include <string_view>

#include "document/edit/edit_result.h"

namespace ferrowand {

class Map;
class entity;

// At the end of the map; it becomes the current one.
entity& InsertLayer(Map& map, std::string_view name);
// What can not be reached any more is not selected any more.
void SetLayerState(Map& map, entity& layer, bool hidden, bool disabled);
void RenameLayer(Map& map, entity& layer, std::string_view name);
EditResult MoveSelectionToLayer(Map& map, entity& layer);
// What it holds goes to the first other layer; the last layer of a map stays.
EditResult RemoveLayer(Map& map, entity& layer);

}  // namespace ferrowand
