// Template classes, their instances, and embedded maps.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "geometry/vec.h"
#include "operations/edit_result.h"

namespace ferrowand {

class Map;
class entity;

// Of all template classes of the map, in its order.
std::vector<std::string> TemplateNames(const Map& map);

// Of one that is to be made, or called so.
EditResult CheckTemplateName(const Map& map, std::string_view name);

// The selection becomes a template class of that name, with the pivot as its origin, and an
// instance, which is selected, takes its place: the map looks as before.
EditResult MakeTemplate(Map& map, std::string_view name, const Vec3& pivot);

struct InstanceSettings {
  std::string templateName;
  int angle = 0;  // degrees
  Vec3 scale{1, 1, 1};
};
// An instance's is from 0.001 to 1000 on every axis, mirrored or not.
EditResult CheckScale(const Vec3& scale);
// Selects it.
EditResult InsertInstance(Map& map, const InstanceSettings& settings, const Vec3& origin);

// The box is relative to the origin. Selects it.
EditResult InsertEmbed(Map& map, std::string_view filename, const Bounds& box, const Vec3& origin);
// If it alone is selected; else null.
entity* SelectedEmbed(const Map& map);
// What is so already keeps the way it was written.
EditResult ChangeEmbed(entity& embed, std::string_view filename, const Bounds& box);

}  // namespace ferrowand
