#include "views/camera/camera_shapes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <string>

#include "document/classes/entity_class.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "document/texture_projection.h"

namespace ferrowand {
namespace {

constexpr float MARKER_REACH = 4;  // world units: half the box of a class that has none
constexpr double POINT_LENGTH = 14, POINT_WIDTH = 4;  // of what shows where an entity faces
constexpr Colour EMBED_COLOUR{200, 0, 0};
// Where the light would be that tells sides from tops where no texture does.
const DVec3 LIGHT = Normalise({0.35, 0.5, 0.8});
constexpr double WHITE_IN_LINES = 0.4, WHITE_IN_FACES = 0.2, WHITE_IN_POINTERS = 0.5;
constexpr double DARKEST = 0.55;

std::uint8_t Part(double value) {
  return static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0));
}

Colour Shaded(Colour colour, const DVec3& normal) {
  const double lit = DARKEST + (1 - DARKEST) * (Dot(normal, LIGHT) + 1) / 2;
  return {Part(colour.red * lit), Part(colour.green * lit), Part(colour.blue * lit)};
}

// With that part of white in it.
Colour Paler(Colour colour, double white) {
  const auto pale = [white](std::uint8_t part) { return Part(part + (255 - part) * white); };
  return {pale(colour.red), pale(colour.green), pale(colour.blue)};
}

class ShapeMaker {
 public:
  explicit ShapeMaker(const ShapeStyle& style) : style_(style) {}

  void AddBrush(const Brush& brush) {
    for (const Face& face : brush.Faces()) {
      if (face.HasShape() && face.plane.HasNormal()) AddFace(face, brush.Outline());
    }
  }

  void AddBox(const Bounds& box, Colour colour) {
    const DVec3 low(box.mins), high(box.maxs);
    for (int axis = 0; axis < 3; ++axis) {
      DVec3 u, v;
      u[(axis + 1) % 3] = high[(axis + 1) % 3] - low[(axis + 1) % 3];
      v[(axis + 2) % 3] = high[(axis + 2) % 3] - low[(axis + 2) % 3];
      AddPlain({high, high - u, high - u - v, high - v}, colour);
      AddPlain({low, low + v, low + v + u, low + u}, colour);
    }
  }

  void AddDiamond(const Bounds& box, Colour colour) {
    const DVec3 middle = (DVec3(box.mins) + DVec3(box.maxs)) * 0.5;
    const DVec3 reach = DVec3(box.maxs) - middle;
    for (unsigned octant = 0; octant < 8; ++octant) {
      const auto tip = [&](int axis) {
        DVec3 at = middle;
        at[axis] += (octant >> axis & 1) != 0 ? -reach[axis] : reach[axis];
        return at;
      };
      if (std::popcount(octant) % 2 == 1) {
        AddPlain({tip(0), tip(2), tip(1)}, colour);
      } else {
        AddPlain({tip(0), tip(1), tip(2)}, colour);
      }
    }
  }

  // A pyramid on the side of the box that the direction leaves it by.
  void AddPointer(const Bounds& box, const DVec3& direction, Colour colour) {
    const DVec3 middle = (DVec3(box.mins) + DVec3(box.maxs)) * 0.5;
    const DVec3 reach = DVec3(box.maxs) - middle;
    double depth = POINT_LENGTH;
    for (int axis = 0; axis < 3; ++axis) {
      if (std::abs(direction[axis]) < 0.5) continue;
      depth = reach[axis] / std::abs(direction[axis]);
      break;
    }
    const DVec3 base = middle + direction * depth;
    const DVec3 tip = base + direction * POINT_LENGTH;
    const DVec3 side = std::abs(direction.z) > 0.5 ? DVec3(1, 0, 0) : DVec3(0, 0, 1);
    const DVec3 u = Normalise(Cross(direction, side)) * POINT_WIDTH;
    const DVec3 v = Normalise(Cross(direction, u)) * POINT_WIDTH;
    const std::array corners{base + u, base + v, base - u, base - v};
    for (std::size_t i = 0; i < corners.size(); ++i) {
      AddPlain({tip, corners[i], corners[(i + 1) % corners.size()]}, colour);
    }
    AddPlain({corners[3], corners[2], corners[1], corners[0]}, colour);
  }

  Shape Take() { return std::move(shape_); }

 private:
  void AddFace(const Face& face, Colour own) {
    const TextureProjection projection(face);
    Texture* texture = ShownTexture(face.texture);
    const auto points = std::as_const(*face.w).Points();
    // Whole textures do not matter: near 0 the numbers are finest.
    const TexturePoint first = projection.Textures(DVec3(points.front().Position()));
    const double s = std::floor(first.s), t = std::floor(first.t);
    Begin(texture, ColourOf(texture, own, face.plane.normal));
    for (auto p = points.rbegin(); p != points.rend(); ++p) {
      const TexturePoint at = projection.Textures(DVec3(p->Position()));
      shape_.points.push_back(
          {p->Position(), static_cast<float>(at.s - s), static_cast<float>(at.t - t)});
    }
    End();
  }

  // The colours of brushes are made for lines on white.
  Colour ColourOf(Texture* texture, Colour own, const DVec3& normal) const {
    if (style_.colours == ShapeColours::OfLines) return Paler(own, WHITE_IN_LINES);
    const bool standsForTexture = style_.colours == ShapeColours::OfTextures && texture;
    return Shaded(standsForTexture ? texture->wad->RepresentativeColour(*texture, style_.oneColour)
                                   : Paler(own, WHITE_IN_FACES),
                  normal);
  }

  // Counter-clockwise seen from in front.
  void AddPlain(std::initializer_list<DVec3> points, Colour colour) {
    const DVec3* p = points.begin();
    Begin(nullptr, Shaded(colour, Normalise(Cross(p[1] - p[0], p[2] - p[0]))));
    for (const DVec3& point : points) shape_.points.push_back({Vec3(point)});
    End();
  }

  void Begin(Texture* texture, Colour colour) {
    shape_.polygons.push_back({texture, colour, Count(), 0});
  }
  void End() { shape_.polygons.back().end = Count(); }
  std::uint32_t Count() const { return static_cast<std::uint32_t>(shape_.points.size()); }

  const ShapeStyle& style_;
  Shape shape_;
};

DVec3 FacingOf(std::int16_t angle) {
  if (angle == -1) return {0, 0, 1};
  if (angle == -2) return {0, 0, -1};
  return {CosDegrees(angle), SinDegrees(angle), 0};
}

// Whatever the class of an entity without brushes says, it can be found.
Bounds MarkerBox(const entity& e) {
  const Bounds box = PointBox(e);
  const bool isSeenOtherwise = !e.getEntityList().empty() || e.brush.getNumFaces() > 0;
  if (!box.IsEmpty() || isSeenOtherwise) return box;
  const Vec3 reach(MARKER_REACH, MARKER_REACH, MARKER_REACH);
  return {e.Origin() - reach, e.Origin() + reach};
}

void AddPoint(const entity& e, ShapeMaker& maker) {
  const Bounds box = MarkerBox(e);
  if (box.IsEmpty()) return;
  const bool isEmbed = e.getClass()->Kind() == EntityKind::Embed;
  const Colour colour = isEmbed ? EMBED_COLOUR : e.getClass()->ClassColour();
  if ((e.flags() & ENTITY_IS_LIGHT) != 0) {
    maker.AddDiamond(box, colour);
  } else {
    maker.AddBox(box, colour);
  }
  if (e.angle() != NO_ANGLE)
    maker.AddPointer(box, FacingOf(e.angle()), Paler(colour, WHITE_IN_POINTERS));
}

void AddExpansion(const entity& e, ShapeMaker& maker) {
  maker.AddBrush(e.brush);
  for (const EntityPtr& child : e.getEntityList()) {
    if (child->IsVisible()) AddExpansion(*child, maker);
  }
}

}  // namespace

Shape ShapeOf(const entity& e, const ShapeStyle& style) {
  ShapeMaker maker(style);
  maker.AddBrush(e.brush);
  const Map* map = e.OwningMap();
  const ShownKinds shown = map ? map->Data().shown : ShownKinds();
  if (e.HasOrigin() && shown.pointEntities) AddPoint(e, maker);
  const bool isInstance = e.getClass()->Kind() == EntityKind::TemplateInstance;
  if (isInstance && shown.templates && e.IsEnabled()) {
    if (const entity* expansion = ExpandInstance(e)) AddExpansion(*expansion, maker);
  }
  return maker.Take();
}

Shape BoxShape(const Bounds& box) {
  const ShapeStyle style;
  ShapeMaker maker(style);
  maker.AddBox(box, {});
  return maker.Take();
}

Bounds BoxOf(const Shape& shape) {
  Bounds box;
  for (const ShapePoint& point : shape.points) box.Add(point.at);
  return box;
}

Texture* ShownTexture(Texture* texture) {
  if (!texture || !texture->wad) return texture;
  std::string name(texture->Name());
  if (name.size() < 2 || name[0] != '+') return texture;
  const bool isCounted = name[1] >= '0' && name[1] <= '9';
  name[1] = isCounted ? '0' : 'a';
  Texture* first = texture->wad->FindTexture(name);
  return first == texture->wad->BadTexture() ? texture : first;
}

}  // namespace ferrowand
