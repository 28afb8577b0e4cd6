// What the objects of a map look like to a camera: brushes by their faces, point entities as boxes
// in the colour of their class with a point that shows where they face, lights as diamonds.
#pragma once

#include "gamedata/wad_file.h"
#include "views/camera/camera_renderer.h"

namespace ferrowand {

class entity;

// What the colours of a shape are for: lines on black, faces, or faces that stand for textures.
enum class ShapeColours { OfLines, OfFaces, OfTextures };

struct ShapeStyle {
  ShapeColours colours = ShapeColours::OfFaces;
  OneColour oneColour = OneColour::Average;  // of a texture
};

// Of the entity itself, and of what it stands for where it is an instance of a template and those
// are shown; nothing below it. Empty for what shows nothing.
Shape ShapeOf(const entity& e, const ShapeStyle& style);
Shape BoxShape(const Bounds& box);
// All that the shape takes up.
Bounds BoxOf(const Shape& shape);

// What a face shows of its texture: the first frame of one that is animated. Null where the map has
// no textures.
Texture* ShownTexture(Texture* texture);

}  // namespace ferrowand
