// Dragging the selection in a camera: along the floor through the place where it was taken, or up
// and down there.
#pragma once

#include <array>
#include <cstdint>

#include "views/camera/camera_renderer.h"

namespace ferrowand {

class Map;
class MapView;

inline constexpr double LONGEST_WAY = 4096;  // world units, of a drag in space

// What bears on it, as in the 2D views.
struct SpaceRules {
  std::uint8_t grid = 6;     // exponent
  bool snap = false;         // the way goes in steps of the grid
  bool ontoGrid = false;     // and so that the reference comes onto it
  Vec3 reference = {};       // of the first selected object
  unsigned limitedAxes = 0;  // bit n: axis n stays as it is
};
// By the map and its view that was active last, which may be null.
SpaceRules SpaceRulesOf(const Map& map, const MapView* view, unsigned limitedAxes, bool shift);

class SelectionDrag {
 public:
  // Taken at that place of the world.
  explicit SelectionDrag(const DVec3& grip) : grip_(grip) {}

  // The way to where the pixel is now, whatever has become of the camera meanwhile.
  Vec3 WayTo(Pixel at, const CameraPicture& picture, bool upAndDown, const SpaceRules& rules) const;

 private:
  DVec3 AlongTheFloor(const DVec3& eye, const DVec3& ray) const;
  DVec3 UpAndDown(const DVec3& eye, const DVec3& ray) const;

  DVec3 grip_;
};

}  // namespace ferrowand
