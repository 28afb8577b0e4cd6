// What lists of objects do to them: put them elsewhere, name them, show them again. Each is one
// step of undo.
#pragma once

#include <span>
#include <string_view>

#include "operations/edit_result.h"

namespace ferrowand {

class Map;
class entity;

// Into a layer, a group, a brush entity or a template, or as near to it as they may stand. Layers,
// templates and what holds it stay where they are.
EditResult MoveInto(Map& map, std::span<entity* const> objects, entity& holder);

// By XMPentityname; no name takes it away, except from layers and templates, which keep theirs.
EditResult RenameObject(Map& map, entity& object, std::string_view name);

// The objects and all that holds them are visible and enabled afterwards. Templates that are not
// opened stay so.
EditResult ShowObjects(Map& map, std::span<entity* const> objects);

}  // namespace ferrowand
