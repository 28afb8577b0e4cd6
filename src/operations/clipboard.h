// Objects as text: an Extended Map that holds them and nothing else, so that a copy survives its
// map, crosses between two editors, and pastes into a text file.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "geometry/vec.h"
#include "operations/edit_result.h"

namespace ferrowand {

class Map;

// With the templates that its instances show. Empty when nothing is selected that can be reached.
std::string SelectionText(const Map& map);
// The text, and the selection is deleted.
EditResult CutSelection(Map& map, std::string& text);
// The objects of a map, of single entities or brushes as text; they join the leading group or the
// current layer and are selected. Templates come along, under another name where the map has
// another of that name, and go into the layer. Both ends of a link get another name where the map
// has it already. Layers of the text are not taken over, nor are its WADs and its class set. Damage
// in it is reported as that of a file.
// They lie where the text says, or the way is asked for by which they move, given the box around
// all of them.
using PasteWay = std::function<Vec3(const Bounds&)>;
EditResult PasteText(Map& map, std::string_view text, const PasteWay& way = {});

// A file's objects, likewise, in a group named after it.
EditResult InsertGroup(Map& map, const std::string& filename);
// The selection as an Extended Map of its own. ".xmp" is added to a name without extension.
EditResult SaveGroup(const Map& map, const std::string& filename);

}  // namespace ferrowand
