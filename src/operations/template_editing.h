// Templates at work: opened among the other objects to be edited there, closed, renamed, deleted.
// Each is one step of undo.
#pragma once

#include <string_view>
#include <vector>

#include "operations/edit_result.h"

namespace ferrowand {

class Map;
class entity;

// What a command on templates is about: that of the instance which alone is selected; else the
// opened one around what is selected; else the opened one that new objects join, or any opened one.
// Null for none.
entity* TemplateInUse(const Map& map);
// The instance by which that is known, or null: what a template is opened at.
entity* SelectedInstance(const Map& map);

// Those that show it, hidden ones too, in map order.
std::vector<entity*> InstancesOf(const Map& map, const entity& templateClass);

// The template of the instance comes to stand in its place, neither turned nor scaled, or where it
// lies when that would be outside the world. Its members are selected, and what is new joins it.
// One in a layer out of sight, or in a group, comes into the layer of the instance.
EditResult OpenTemplate(Map& map, entity& instance);
// Back to where it lies. The instances in whose place it stood are selected.
EditResult CloseTemplate(Map& map, entity& templateClass);
// All its instances follow.
EditResult RenameTemplate(Map& map, entity& templateClass, std::string_view name);
// With all its instances, about which the user is asked.
EditResult DeleteTemplate(Map& map, entity& templateClass);

}  // namespace ferrowand
