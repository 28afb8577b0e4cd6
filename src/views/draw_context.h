// What an entity must know to draw itself in a 2D view: the surface, the mapping, the pens and the
// view's choices.
#pragma once

#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/canvas.h"
#include "views/label_places.h"
#include "views/view_transform.h"

namespace ferrowand {

class Map;
class entity;

inline constexpr unsigned DRAW_KEEP_PEN = 1;
inline constexpr unsigned DRAW_HEIGHTS = 2;
inline constexpr unsigned DRAW_1X1MIPMAP = 4;
inline constexpr unsigned DRAW_LIGHT_RADIUS = 8;
inline constexpr unsigned DRAW_TARGETS = 16;
inline constexpr unsigned DRAW_CLASSNAMES = 32;
inline constexpr unsigned DRAW_WHITE_TEXT = 64;
inline constexpr unsigned DRAW_LAYER_COLOUR = 128;
inline constexpr unsigned DRAW_TEMPLATES = 256;

// The fixed pens of the program, chosen for the background they are drawn on.
struct DrawPens {
  Colour background{};
  Pen minorGrid{};
  Pen majorGrid{};     // every eighth line, and the axes
  Pen foreground{};    // what a tool draws
  Pen entity{};        // brushes of brush entities
  Pen brushOutline{};  // brushes of a selection
  Pen boxOutline{};    // class boxes of a selection
  Pen centreDot{};
  Pen light{};
  Pen targetLine{};
  Pen targetHead{};
  Pen camera{};  // where the map's camera stands and looks
};

// What a paint would else work out or allocate for every object again.
struct DrawScratch {
  std::vector<PixelLine> lines;  // of the brush being drawn
  const Map* targetMap = nullptr;
  // The entities of that map by targetname, in map order.
  std::unordered_map<std::string_view, std::vector<const entity*>> targets;
  std::unordered_map<std::string_view, PixelSize> nameSizes;
  LabelPlaces names;  // of the whole map, seen or not: a part of a picture has the same ones
};

// One paint. The map must not change while it lives.
struct DrawContext {
  Canvas& canvas;
  ViewTransform transform;
  const DrawPens& pens;
  unsigned flags = 0;         // DRAW_ bits
  PixelRect visible;          // pixels that will be seen; what lies outside need not be drawn
  Pen pen;                    // what DRAW_KEEP_PEN keeps; also the pen of plain outlines
  bool drawsEntities = true;  // point entities: boxes, markers, names
  bool centreDots = false;
  std::optional<Pen> overridePen = {};     // instead of class pens
  int heightlo = 0, heighthi = 0;          // world units on the depth axis, for DRAW_HEIGHTS
  unsigned oneColour = 0;                  // OneColour, for DRAW_1X1MIPMAP
  std::optional<Colour> layerColour = {};  // of the layer being drawn, for DRAW_LAYER_COLOUR
  DrawScratch scratch = {};
};

}  // namespace ferrowand
