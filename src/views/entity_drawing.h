// How entities look in a 2D view. Each kind is drawn in its own way; what is not visible is not.
#pragma once

#include "views/draw_context.h"

namespace ferrowand {

class entity;

// The entity and all below it. `root` limits the drawing to that entity and what lies below it;
// null draws everything.
void DrawTree(const entity& e, DrawContext& context, const entity* root = nullptr);

// The lines of a selected object: no words, light radius or arrows.
void DrawOutline(const entity& e, DrawContext& context);

}  // namespace ferrowand
