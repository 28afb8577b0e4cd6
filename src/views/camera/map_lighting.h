// The light that a map's light entities throw on what its camera shows, as the game's light tool
// would make it at its plainest: each falls off evenly with the distance. It knows no light that is
// thrown back, no styles and no sky.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "geometry/box_tree.h"
#include "views/camera/camera_renderer.h"
#include "views/camera/light_blockers.h"
#include "views/camera/light_sources.h"

namespace ferrowand {

class Map;
struct MapChange;

// Bits of the option "Quake Lighting Flags".
inline constexpr std::uint32_t LIGHT_BY_ANGLE = 1;    // what light meets aslant is darker
inline constexpr std::uint32_t LIGHT_SHADOWS = 2;     // solid brushes stand in its way
inline constexpr std::uint32_t LIGHT_FOUR_TIMES = 4;  // four samples a luxel

class MapLighting {
 public:
  // The map outlives it.
  MapLighting(const Map& map, std::uint32_t flags);

  // The lights of the map as it is now.
  void Learn();
  // The same after a change. Where something shows other light now: boxes of the world.
  std::vector<Bounds> Learn(const MapChange& change);
  // Adds the light that falls on the shape. Point entities, skies and liquids are bright by
  // themselves.
  void Light(Shape& shape);

 private:
  struct Surface;

  LightImage ImageOf(const Shape& shape, const ShapePolygon& polygon);
  void FindLights(const Surface& surface);
  double LightAt(const Surface& surface, const DVec3& point) const;
  double LightFrom(const LightSource& light, const DVec3& normal, const DVec3& point) const;
  bool IsShaded(std::span<const std::size_t> blockers, const DVec3& from, const DVec3& to) const;

  const Map& map_;
  const std::uint32_t flags_;
  std::vector<LightSource> lights_;
  std::optional<BoxTree> reaches_;  // of the lights
  std::optional<LightBlockers> blockers_;

  // What bears on the surface that is being lit.
  struct Near {
    const LightSource* light;
    std::vector<std::size_t> blockers;
  };
  std::vector<Near> near_;
};

}  // namespace ferrowand
