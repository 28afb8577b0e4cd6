// Which shapes lie under a pixel, found by looking at their points: for renderers whose system does
// not tell.
#pragma once

#include <span>
#include <vector>

#include "geometry/winding.h"
#include "views/camera/camera_renderer.h"

namespace ferrowand {

// Those of the picture's seen shapes of which some polygon comes within two pixels of the place,
// seen from in front, or, where lines are drawn, one of its edges does; the nearest first. Where no
// edge does, the polygons count. `shapes` is by name.
std::vector<ShapeName> PickShapes(const CameraPicture& picture, Pixel at,
                                  std::span<const Shape> shapes);

// By the points of the polygon, in front of which it is seen. Its normal is no number where those
// lie on one line.
Plane PlaneOf(const Shape& shape, const ShapePolygon& polygon);

}  // namespace ferrowand
