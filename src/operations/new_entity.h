// What the commands share that bring new entities into a map.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "document/entity.h"
#include "operations/edit_result.h"

namespace ferrowand {

class ClassSet;
class EditStep;

// Of the class that the map knows by that name, with the flags that it fixes. In no map yet.
EntityPtr NewEntity(const Map& map, std::string_view classname);

// Whether objects may be made that are of the class.
EditResult CheckClass(const ClassSet& classes, std::string_view classname);
// The same for an entity that is to stand at a point: a brush has to have a shape.
EditResult CheckPoint(const entity& e);

// At the parent's end, or where else the object may stand (HomeFor).
entity& AddTo(EditStep& step, EntityPtr e, entity& parent);

// The layer in which the object, or the layer itself, stands; the map where there is none.
entity& LayerAround(entity& e);

// A new object becomes a part of the map there, and is what is selected.
EditResult AddAndSelect(Map& map, EntityPtr e, const Vec3& at);

// The prefix and the lowest number that makes it no object's XMPentityname yet.
std::string UnusedName(const Map& map, std::string_view prefix);

// One of the same name in other letters would go on being the one that is found.
void ReplaceKey(entity& e, std::string_view name, std::string_view value);

// A text as a key or a value can hold it: a file knows no way to write a double quote within one.
std::string FitForKey(std::string_view text);

// Whether objects are to be put there: asked when they would be out of sight or reach.
bool MayAddTo(const entity& parent);

// Whether objects may be put there, with so many levels between: a file that is nested too deep
// cannot be read back.
bool FitsBelow(const entity& parent, std::span<const entity* const> objects, int levels);

// Out of the map, or to another parent; a group that loses its last member goes with it.
void RemoveObjects(EditStep& step, std::span<entity* const> objects);
void MoveObjects(EditStep& step, std::span<entity* const> objects, entity& parent);

}  // namespace ferrowand
