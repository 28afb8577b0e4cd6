// The parts that an entity's picture in a 2D view is made of. All of them draw nothing where the
// paint would not show it, and keep to the caller's pen under DRAW_KEEP_PEN.
#pragma once

#include <optional>

#include "views/draw_context.h"

namespace ferrowand {

class Brush;
class EntityClass;
class entity;

// The edges of the brush, each pixel line once however many faces share it.
void DrawBrushOutline(const Brush& brush, const Pen& pen, DrawContext& context);

// The entity's own brush: in the pen of the map mode, else in the current one.
void DrawOwnBrush(const entity& e, DrawContext& context);

// An outline around a box of the world.
void DrawBox(const Bounds& box, const Pen& pen, DrawContext& context);

// What shows where an entity with an origin is: the size box, and which way it looks, as a triangle
// or, along the view's depth, a circle or a cross. The class gives the box.
void DrawPointOutline(const entity& e, const EntityClass& look, const Pen& pen,
                      DrawContext& context);
// The same in the colour of the class, with what the context wants of name and light radius.
void DrawPointPart(const entity& e, const EntityClass& look, DrawContext& context);

// The name above the origin, when the context wants names and none drawn before is in its place.
void DrawClassname(const entity& e, DrawContext& context);

// How bright a light is at its place, which is also how far it reaches, world units; 0 for what is
// no light.
int LightValue(const entity& e);
// What the radius of a light covers, in pixels: nothing of what is no light.
PixelRect LightPlace(const entity& e, const ViewTransform& transform);

// Where arrows start and end: nothing for an entity that is nowhere.
std::optional<Vec3> ArrowPoint(const entity& e);
// To every entity of the same map that the entity targets.
void DrawTargetArrows(const entity& e, DrawContext& context);

// The pen, or the caller's where that is to be kept.
const Pen& PenFor(const Pen& pen, const DrawContext& context);

// Selects a pen for as long as it lives, unless the caller's is to be kept.
class PenScope {
 public:
  PenScope(DrawContext& context, const Pen& pen) : context_(context), outer_(context.pen) {
    if (!(context.flags & DRAW_KEEP_PEN)) context.pen = pen;
  }
  ~PenScope() { context_.pen = outer_; }
  PenScope(const PenScope&) = delete;
  PenScope& operator=(const PenScope&) = delete;

 private:
  DrawContext& context_;
  Pen outer_;
};

}  // namespace ferrowand
