#include "views/entity_parts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numbers>

#include "base/text_reader.h"
#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "platform/display.h"

namespace ferrowand {
namespace {

constexpr int DOT_RADIUS = 2;        // pixels
constexpr float MARKER_SIZE = 8;     // world units, half the back of the triangle
constexpr float MARKER_LENGTH = 16;  // world units
constexpr int TEXT_RISE = 8;         // pixels between the origin and the name above it
constexpr int HEAD_LENGTH = 10;      // pixels
constexpr int HEAD_ANGLE = 15;       // degrees to either side of the line
constexpr int DEFAULT_LIGHT = 300;   // world units
constexpr int MAX_LIGHT = 100000;    // world units; a circle beyond is nowhere near any view
constexpr int SAME = 8;              // of 255, on every channel: cannot be told from each other
constexpr double NUDGE = 0.35;       // of the way to the foreground

// Both rectangles with their last column and row inside.
bool Touches(const PixelRect& a, const PixelRect& visible, int margin) {
  return a.right >= visible.left - margin && a.left < visible.right + margin &&
         a.bottom >= visible.top - margin && a.top < visible.bottom + margin;
}

PixelRect Around(Pixel centre, int radius) {
  return {centre.x - radius, centre.y - radius, centre.x + radius, centre.y + radius};
}

PixelRect Spanning(const PixelLine& line) {
  return {std::min(line.from.x, line.to.x), std::min(line.from.y, line.to.y),
          std::max(line.from.x, line.to.x), std::max(line.from.y, line.to.y)};
}

// A canvas takes the first column and row outside.
PixelRect WithLastPixels(PixelRect rect) {
  ++rect.right;
  ++rect.bottom;
  return rect;
}

void DrawCircle(Pixel centre, int radius, const Pen& pen, DrawContext& context) {
  const PixelRect rect = Around(centre, radius);
  if (!Touches(rect, context.visible, pen.width)) return;
  context.canvas.Ellipse(pen, std::nullopt, WithLastPixels(rect));
}

void AddFaceEdges(const Face& face, DrawContext& context, int margin) {
  const std::span<const WindingPoint> points = std::as_const(*face.w).Points();
  if (points.empty()) return;
  Pixel from = context.transform.ToScreen(points.back().Position());
  for (const WindingPoint& point : points) {
    const Pixel to = context.transform.ToScreen(point.Position());
    const PixelLine line = from < to ? PixelLine{from, to} : PixelLine{to, from};
    if (Touches(Spanning(line), context.visible, margin)) context.scratch.lines.push_back(line);
    from = to;
  }
}

// What is left is sorted; an edge seen end on is left out where another one covers its pixel.
void KeepEachLineOnce(std::vector<PixelLine>& lines) {
  std::sort(lines.begin(), lines.end());
  lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
  if (lines.size() > 1) {
    std::erase_if(lines, [](const PixelLine& line) { return line.from == line.to; });
  }
}

// Of the first face, which speaks for the brush.
std::optional<Colour> TextureColour(const Brush& brush, const DrawContext& context) {
  if (brush.getNumFaces() == 0) return std::nullopt;
  Texture* texture = brush.face(0).texture;
  if (texture == nullptr || texture->wad == nullptr) return std::nullopt;
  return texture->wad->RepresentativeColour(*texture, static_cast<OneColour>(context.oneColour));
}

Vec3 Centre(const Bounds& box) {
  return (box.mins + box.maxs) * 0.5f;
}

// Blue alone, none at the low end of the shaded depth and all of it at the high one. What lies
// beyond an end has that end's shade.
Colour DepthShade(const entity& e, const DrawContext& context) {
  const int depth = context.transform.DepthAxis();
  const float position = e.HasOrigin() ? e.Origin()[depth] : Centre(e.brush.Box())[depth];
  const double range = context.heighthi - static_cast<double>(context.heightlo);
  const double part = range == 0 ? 1 : (position - context.heightlo) / range;
  return {0, 0, static_cast<std::uint8_t>(255 * std::clamp(part, 0.0, 1.0))};
}

// What cannot be told from the background moves away from it, towards the foreground.
Colour MadeVisible(Colour colour, const DrawPens& pens) {
  const auto differs = [](int a, int b) { return std::abs(a - b) > SAME; };
  const Colour& back = pens.background;
  if (differs(colour.red, back.red) || differs(colour.green, back.green) ||
      differs(colour.blue, back.blue)) {
    return colour;
  }
  const auto moved = [](int part, int foreground) {
    return static_cast<std::uint8_t>(part + (foreground - part) * NUDGE);
  };
  const Colour& fore = pens.foreground.colour;
  return {moved(colour.red, fore.red), moved(colour.green, fore.green),
          moved(colour.blue, fore.blue)};
}

Pen BrushPen(const entity& e, const DrawContext& context) {
  if (context.flags & DRAW_KEEP_PEN) return context.pen;
  if (context.flags & DRAW_1X1MIPMAP) {
    if (const auto colour = TextureColour(e.brush, context)) {
      return {MadeVisible(*colour, context.pens), Scaled(2)};
    }
  } else if (context.flags & DRAW_HEIGHTS) {
    return {DepthShade(e, context)};
  } else if ((context.flags & DRAW_LAYER_COLOUR) && context.layerColour) {
    return {*context.layerColour};
  }
  return context.pen;
}

Bounds SizeBox(const entity& e, const EntityClass& entityClass) {
  Bounds box{e.Origin(), e.Origin()};
  for (int axis = 0; axis < 3; ++axis) {
    box.mins[axis] += entityClass.Min(axis);
    box.maxs[axis] += entityClass.Max(axis);
  }
  return box;
}

PixelSize NameSize(std::string_view name, DrawContext& context) {
  const auto [size, isNew] = context.scratch.nameSizes.try_emplace(name);
  if (isNew) size->second = context.canvas.MeasureText(FontFace::Label, name);
  return size->second;
}

Vec3 FacingVector(int angle) {
  if (angle == -1) return {0, 0, 1};
  if (angle == -2) return {0, 0, -1};
  return Vec3(DVec3(CosDegrees(angle), SinDegrees(angle), 0));
}

// Seen from the front or the side the triangle of a level entity points away from where it looks.
// That is meant: it is how maps have always been read here.
int MarkerAngle(float across, float up, bool top, int angle) {
  if (top) return angle;
  if (across == 0) return up >= 0 ? 90 : 270;
  if (up == 0) return across >= 0 ? 180 : 0;
  return angle;
}

void DrawMarkerAlongDepth(const entity& e, bool near, const Pen& pen, DrawContext& context) {
  const Vec3 reach(MARKER_SIZE, MARKER_SIZE, MARKER_SIZE);
  const PixelRect rect = context.transform.ToScreen(e.Origin() - reach, e.Origin() + reach);
  if (!Touches(rect, context.visible, pen.width)) return;
  if (near) {
    context.canvas.Ellipse(pen, std::nullopt, WithLastPixels(rect));
    return;
  }
  const std::array cross{PixelLine{{rect.left, rect.top}, {rect.right, rect.bottom}},
                         PixelLine{{rect.left, rect.bottom}, {rect.right, rect.top}}};
  context.canvas.Lines(pen, cross);
}

void DrawFacingMarker(const entity& e, const Pen& pen, DrawContext& context) {
  if (e.angle() == NO_ANGLE) return;
  const ViewTransform& transform = context.transform;
  const Vec3 facing = FacingVector(e.angle());
  const float across = facing[transform.orienu];
  const float up = facing[transform.orienv];
  if (across == 0 && up == 0) {
    DrawMarkerAlongDepth(e, facing[transform.DepthAxis()] >= 0, pen, context);
    return;
  }

  const bool top = transform.orienu == 0 && transform.orienv == 1;
  const int turn = MarkerAngle(across, up, top, e.angle());
  const auto corner = [&](double x, double y) {
    Vec3 point = e.Origin();
    point[transform.orienu] += static_cast<float>(x * CosDegrees(turn) - y * SinDegrees(turn));
    point[transform.orienv] += static_cast<float>(x * SinDegrees(turn) + y * CosDegrees(turn));
    return transform.ToScreen(point);
  };
  const std::array triangle{corner(0, -MARKER_SIZE), corner(MARKER_LENGTH, 0),
                            corner(0, MARKER_SIZE)};
  const auto [left, right] = std::minmax({triangle[0].x, triangle[1].x, triangle[2].x});
  const auto [upper, lower] = std::minmax({triangle[0].y, triangle[1].y, triangle[2].y});
  if (!Touches({left, upper, right, lower}, context.visible, pen.width)) return;
  context.canvas.Polygon(pen, pen.colour, triangle);
}

// Pixels; 0 for what is no light.
int LightRadius(const entity& e, const ViewTransform& transform) {
  return RoundToInt(std::abs(LightValue(e) / static_cast<double>(transform.scaleu)));
}

void DrawLightRadius(const entity& e, DrawContext& context) {
  if (!(context.flags & DRAW_LIGHT_RADIUS) || !(e.flags() & ENTITY_IS_LIGHT)) return;
  DrawCircle(context.transform.ToScreen(e.Origin()), LightRadius(e, context.transform),
             PenFor(context.pens.light, context), context);
}

// Of the line back from the target to the source, on the screen.
int ArrowAngle(int dx, int dy) {
  if (dx == 0) return dy < 0 ? 270 : 90;
  int angle = static_cast<int>(std::atan(dy / static_cast<double>(dx)) * 180 / std::numbers::pi);
  if (dx < 0) angle += 180;
  return angle < 0 ? angle + 360 : angle;
}

void DrawArrow(Pixel source, Pixel target, DrawContext& context) {
  const PixelLine line{source, target};
  const int length = Scaled(HEAD_LENGTH);
  if (Touches(Spanning(line), context.visible, length)) {
    context.canvas.Lines(PenFor(context.pens.targetLine, context), std::array{line});
  }
  if (!Touches(Around(target, length), context.visible, 1)) return;
  const int angle = ArrowAngle(source.x - target.x, source.y - target.y);
  const auto stroke = [&](int degrees) {
    return PixelLine{target,
                     {RoundToInt(target.x + length * CosDegrees(degrees)),
                      RoundToInt(target.y + length * SinDegrees(degrees))}};
  };
  const std::array head{stroke(angle + HEAD_ANGLE), stroke(angle - HEAD_ANGLE)};
  context.canvas.Lines(PenFor(context.pens.targetHead, context), head);
}

const std::vector<const entity*>& TargetsNamed(std::string_view name, const Map& map,
                                               DrawScratch& scratch) {
  static const std::vector<const entity*> NONE;
  if (scratch.targetMap != &map) {
    scratch.targetMap = &map;
    scratch.targets.clear();
    ForEachEntity(map, [&](const entity& e) {
      if (const char* targetname = e.GetKey("targetname"))
        scratch.targets[targetname].push_back(&e);
    });
  }
  const auto found = scratch.targets.find(name);
  return found == scratch.targets.end() ? NONE : found->second;
}

}  // namespace

int LightValue(const entity& e) {
  if ((e.flags() & ENTITY_IS_LIGHT) == 0) return 0;
  const char* light = e.GetKey("light");
  return light ? std::clamp(ParseInt(light), -MAX_LIGHT, MAX_LIGHT) : DEFAULT_LIGHT;
}

PixelRect LightPlace(const entity& e, const ViewTransform& transform) {
  const int radius = LightRadius(e, transform);
  return radius == 0 ? PixelRect{}
                     : WithLastPixels(Around(transform.ToScreen(e.Origin()), radius + 1));
}

std::optional<Vec3> ArrowPoint(const entity& e) {
  if (e.HasOrigin()) return e.Origin();
  const Bounds box = e.GetBounds();
  if (box.IsEmpty()) return std::nullopt;
  return Centre(box);
}

const Pen& PenFor(const Pen& pen, const DrawContext& context) {
  return context.flags & DRAW_KEEP_PEN ? context.pen : pen;
}

void DrawBrushOutline(const Brush& brush, const Pen& pen, DrawContext& context) {
  if (brush.getNumFaces() == 0 || brush.Box().IsEmpty()) return;
  const PixelRect box = context.transform.ToScreen(brush.Box().mins, brush.Box().maxs);
  if (!Touches(box, context.visible, pen.width)) return;

  std::vector<PixelLine>& lines = context.scratch.lines;
  lines.clear();
  for (const Face& face : brush.Faces()) {
    if (face.w) AddFaceEdges(face, context, pen.width);
  }
  KeepEachLineOnce(lines);
  if (!lines.empty()) context.canvas.Lines(pen, lines);
}

void DrawOwnBrush(const entity& e, DrawContext& context) {
  if (e.brush.getNumFaces() == 0) return;
  DrawBrushOutline(e.brush, BrushPen(e, context), context);
  if (context.centreDots && !e.brush.Box().IsEmpty()) {
    DrawCircle(context.transform.ToScreen(Centre(e.brush.Box())), Scaled(DOT_RADIUS),
               PenFor(context.pens.centreDot, context), context);
  }
}

void DrawBox(const Bounds& box, const Pen& pen, DrawContext& context) {
  const PixelRect rect = context.transform.ToScreen(box.mins, box.maxs);
  if (!Touches(rect, context.visible, pen.width)) return;
  context.canvas.Rectangle(pen, std::nullopt, WithLastPixels(rect));
}

void DrawPointOutline(const entity& e, const EntityClass& look, const Pen& pen,
                      DrawContext& context) {
  if (look.HasSizeBox()) DrawBox(SizeBox(e, look), pen, context);
  DrawFacingMarker(e, pen, context);
}

void DrawPointPart(const entity& e, const EntityClass& look, DrawContext& context) {
  const Pen pen = PenFor(context.overridePen.value_or(Pen{look.ClassColour()}), context);
  DrawPointOutline(e, look, pen, context);
  DrawClassname(e, context);
  DrawLightRadius(e, context);
}

void DrawClassname(const entity& e, DrawContext& context) {
  if (!(context.flags & DRAW_CLASSNAMES)) return;
  const char* name = e.GetKey("classname");
  if (name == nullptr) return;
  const PixelSize size = NameSize(name, context);
  const Pixel origin = context.transform.ToScreen(e.Origin());
  const Pixel topLeft{origin.x - size.width / 2, origin.y - Scaled(TEXT_RISE) - size.height};
  const PixelRect place{topLeft.x, topLeft.y, topLeft.x + size.width, topLeft.y + size.height};
  if (!context.scratch.names.Take(place) || !Touches(place, context.visible, 0)) return;
  const Colour colour = context.flags & DRAW_WHITE_TEXT ? Colour{255, 255, 255} : Colour{0, 0, 0};
  context.canvas.Text(FontFace::Label, colour, topLeft, name);
}

void DrawTargetArrows(const entity& e, DrawContext& context) {
  if (!(context.flags & DRAW_TARGETS) && !(e.flags() & ENTITY_DRAWS_TARGETS)) return;
  const char* target = e.GetKey("target");
  const Map* map = target ? e.OwningMap() : nullptr;
  if (map == nullptr) return;
  const std::vector<const entity*>& targets = TargetsNamed(target, *map, context.scratch);
  if (targets.empty()) return;
  const std::optional<Vec3> from = ArrowPoint(e);
  if (!from) return;
  const ViewTransform& screen = context.transform;
  for (const entity* other : targets) {
    if (const auto to = ArrowPoint(*other)) {
      DrawArrow(screen.ToScreen(*from), screen.ToScreen(*to), context);
    }
  }
}

}  // namespace ferrowand
