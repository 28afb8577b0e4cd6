// Who draws what a camera sees. A renderer keeps the shapes that it is given, draws those that a
// picture names and tells which of them lie under a pixel. It knows no map, and the camera knows
// nothing of what it draws with.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/colour.h"
#include "platform/pixel.h"
#include "views/camera/camera_pose.h"

namespace ferrowand {

struct Texture;

// As the camera's popup menu lists them.
enum class RenderMode : std::uint8_t {
  Wireframe = 0,
  Solid = 1,
  Textured = 2,
  OneMip = 3,
  TexturedWireframe = 4,
  Uncorrected = 5
};

inline bool IsTextured(RenderMode mode) {
  return mode == RenderMode::Textured || mode == RenderMode::TexturedWireframe ||
         mode == RenderMode::Uncorrected;
}
inline bool IsOfLines(RenderMode mode) {
  return mode == RenderMode::Wireframe || mode == RenderMode::TexturedWireframe;
}

inline constexpr double FIELD_OF_VIEW = 60;  // degrees, from the lower to the upper edge
inline constexpr double NEAR_CLIP = 1;       // world units

// The number of a shape, by which its camera names it.
using ShapeName = std::uint32_t;

struct ShapePoint {
  Vec3 at;
  float s = 0, t = 0;  // whole textures
};

// Convex, and counter-clockwise seen from in front.
struct ShapePolygon {
  Texture* texture = nullptr;  // what lies on it where textures are drawn; null: its colour
  Colour colour;
  std::uint32_t begin = 0, end = 0;  // of the shape's points
};

struct Shape {
  std::vector<ShapePoint> points;
  std::vector<ShapePolygon> polygons;
};

// One picture. Shapes that a list names are there; what is tinted or selected is also seen.
struct CameraPicture {
  CameraPose pose;
  PixelSize size;
  double backClip = 0;  // world units: what lies farther is not seen
  RenderMode mode = RenderMode::Textured;
  bool dither = false;
  std::span<const ShapeName> seen = {};  // the nearest first
  std::span<const ShapeName> tinted = {}, selected = {};
};

class CameraRenderer {
 public:
  virtual ~CameraRenderer() = default;

  // Instead of an earlier one of that name.
  virtual void SetShape(ShapeName name, const Shape& shape) = 0;
  virtual void DropShape(ShapeName name) = 0;
  // Every shape, every texture and what it has taken from the palette: all of it is asked for anew.
  virtual void DropAll() = 0;

  virtual void Draw(const CameraPicture& picture) = 0;
  // Of the seen shapes those that lie within two pixels of the place, the nearest first.
  virtual std::vector<ShapeName> Pick(const CameraPicture& picture, Pixel at) = 0;
};

}  // namespace ferrowand
