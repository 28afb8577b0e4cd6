// Layers: their making, their state and what they hold.
#pragma once

#include <string_view>
#include <vector>

#include "operations/edit_result.h"
#include "platform/colour.h"

namespace ferrowand {

class Map;
class entity;

// In the order of the map.
std::vector<entity*> LayersOf(const Map& map);

// At the end of the map, under a name that is free if it is given none; it becomes the current one.
entity& InsertLayer(Map& map, std::string_view name);
// New objects go there from now on, and to no leading group. Nothing that is undone.
void MakeLayerCurrent(Map& map, entity& layer);
// Within a step that keeps the layer.
void PutLayerState(entity& layer, bool hidden, bool disabled);
// What can not be reached any more is not selected any more.
void SetLayerState(Map& map, entity& layer, bool hidden, bool disabled);
// Name and colour in one step. What stays the same keeps its keys, and no name is none.
void DescribeLayer(Map& map, entity& layer, std::string_view name, Colour colour);
void RenameLayer(Map& map, entity& layer, std::string_view name);
void RecolourLayer(Map& map, entity& layer, Colour colour);
EditResult MoveSelectionToLayer(Map& map, entity& layer);
// What it holds goes to the first other layer, which is the current one afterwards if it was; the
// last layer of a map stays.
EditResult RemoveLayer(Map& map, entity& layer);

}  // namespace ferrowand
