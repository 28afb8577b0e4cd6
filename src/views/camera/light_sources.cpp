#include "views/camera/light_sources.h"

#include <string_view>
#include <unordered_map>

#include "base/number_text.h"
#include "document/classes/entity_class.h"
#include "document/map.h"
#include "views/entity_parts.h"

namespace ferrowand {
namespace {

constexpr double SPOT_CONE = 40;  // degrees, where the entity names none

struct Found {
  std::vector<const entity*> lights;
  std::unordered_map<std::string_view, const entity*> targets;
};

void Look(const entity& e, Found& found) {
  if (e.getClass()->Kind() == EntityKind::TemplateClass) return;
  if (e.HasOrigin()) {
    if ((e.flags() & ENTITY_IS_LIGHT) != 0) found.lights.push_back(&e);
    if (const char* name = e.GetKey("targetname")) found.targets.try_emplace(name, &e);
  }
  for (const EntityPtr& child : e.getEntityList()) Look(*child, found);
}

void PointAtTarget(const entity& e, const Found& found, LightSource& light) {
  const char* target = e.GetKey("target");
  const auto at = target ? found.targets.find(target) : found.targets.end();
  if (at == found.targets.end()) return;
  const DVec3 way = DVec3(at->second->Origin()) - light.origin;
  if (Dot(way, way) == 0) return;
  const char* cone = e.GetKey("angle");
  const double degrees = cone ? ParseFloat(cone) : SPOT_CONE;
  light.direction = Normalise(way);
  light.coneCosine = CosDegrees(RoundToInt((degrees != 0 ? degrees : SPOT_CONE) / 2));
}

}  // namespace

std::vector<LightSource> LightsOf(const Map& map) {
  Found found;
  for (const EntityPtr& child : map.getEntityList()) Look(*child, found);
  std::vector<LightSource> lights;
  lights.reserve(found.lights.size());
  for (const entity* e : found.lights) {
    LightSource light{.origin = DVec3(e->Origin()),
                      .value = static_cast<double>(LightValue(*e)),
                      .direction = {}};
    PointAtTarget(*e, found, light);
    lights.push_back(light);
  }
  return lights;
}

Bounds ReachOf(const LightSource& light) {
  const auto reach = static_cast<float>(std::abs(light.value));
  const Vec3 origin(light.origin);
  return {origin - Vec3(reach, reach, reach), origin + Vec3(reach, reach, reach)};
}

}  // namespace ferrowand
