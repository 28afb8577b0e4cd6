// What of a map lies under a pixel of a view.
#pragma once

#include <functional>
#include <span>

#include "document/picking.h"
#include "operations/map_check.h"
#include "platform/pixel.h"
#include "views/child_boxes.h"
#include "views/view_transform.h"

namespace ferrowand {

class Brush;
class Map;
class entity;

struct Hit {
  entity* object = nullptr;  // the brush or the point entity itself, or null
  int face = NO_FACE;        // of a brush
};

// What is looked for: a pixel of a view, and which kinds of objects count.
struct HitQuery {
  const ViewTransform& transform;
  Pixel at;
  PickLevel level = PickLevel::Objects;  // Brushes: point entities are not there
  ChildBoxes* boxes = nullptr;           // of the map: with them large maps cost little
};

// Points on an edge are inside; so are those of a polygon seen as a line.
bool IsInside(Pixel point, std::span<const Pixel> polygon);

// In pixels, from the point to the nearest edge of a polygon.
double DistanceToOutline(std::span<const Pixel> polygon, Pixel point);
// Whether an edge of the polygon has a pixel in the rectangle, whose right and bottom are inside.
bool MeetsOutline(const PixelRect& closed, std::span<const Pixel> polygon);
// From the map towards the eye: right-handed with the axes across and up.
DVec3 TowardsEye(const ViewTransform& transform);

// The first face turned to the eye, or seen edge-on, under the pixel; NO_FACE for none.
int FaceAt(const Brush& brush, const ViewTransform& transform, Pixel at);

// The object itself, else the first hit of what lies below it, in map order. Nothing below what is
// hidden or disabled is hit.
Hit HitTest(entity& object, const HitQuery& query);
// The first hit of several, in their order.
Hit HitTest(std::span<entity* const> objects, const HitQuery& query);

// The same for every hit, in map order, until `visit` returns true. Whether it did.
bool ForEachHit(entity& object, const HitQuery& query,
                const std::function<bool(const Hit&)>& visit);

// What a click means of all that it hits: where the drawn lines of some pass within a few pixels of
// the point, that of the nearest line, of equals that with the smaller box; else the first.
Hit ClickTest(entity& object, const HitQuery& query);

// What a click on that hit takes: at the level of objects the outermost group that acts as one, at
// the level of brushes the outermost such group of plain brushes, or the brush alone.
entity& PickedBy(entity& hit, PickLevel level);

}  // namespace ferrowand
