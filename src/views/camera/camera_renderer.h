// Who draws what a camera sees. A renderer keeps the shapes that it is given, draws those that a
// picture names and tells which of them lie under a pixel. It knows no map, and the camera knows
// nothing of what it draws with.
#pragma once

#include <cstdint>
#include <optional>
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

// How what is tinted or selected stands out: its faces, its edges, those behind something else.
// Violet is what is selected, orange what is of a brush entity, as in the 2D views.
inline constexpr Colour SELECTION_TINT{210, 90, 255}, ENTITY_TINT{220, 140, 60};
inline constexpr Colour SELECTION_EDGES{240, 80, 255}, HIDDEN_EDGES{110, 30, 130};
inline constexpr Colour PREVIEW_EDGES{255, 255, 255};
inline constexpr int SELECTION_EDGE_WIDTH = 2;  // pixels at the usual size of letters

// The number of a shape, by which its camera names it.
using ShapeName = std::uint32_t;
// Those of what is drawn over the map: the box that is being drawn, the map's marks, picked faces.
inline constexpr ShapeName DRAFT_SHAPE = 0, LEAK_SHAPE = 1, PORTAL_SHAPE = 2, FACE_SHAPE = 3;
inline constexpr ShapeName PICKED_SHAPE = 4, FIRST_OBJECT_SHAPE = 5;

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

// The light that falls on a polygon, as a picture that lies along two of the world's axes.
struct LightImage {
  int axisU = 0, axisV = 1;
  float beginU = 0, beginV = 0;  // of the first luxel's middle, world units
  float step = 1;                // world units from one luxel to the next
  int width = 0, height = 0;     // luxels; 0 for what is bright by itself
  // By rows; 128 shows a texture as it is. Beyond the edges the outermost ones go on.
  std::vector<std::uint8_t> luxels;
};

struct Shape {
  std::vector<ShapePoint> points;
  std::vector<ShapePolygon> polygons;
  std::vector<LightImage> light;  // of each polygon; none at all where no light was asked for
};

// A shape of which all edges are drawn, also those behind something.
struct Outline {
  ShapeName name = DRAFT_SHAPE;
  Colour colour;
};

// One picture. Shapes that a list names are there; what is tinted or selected is also seen.
struct CameraPicture {
  CameraPose pose = {};
  PixelSize size = {};
  double backClip = 0;  // world units: what lies farther is not seen
  RenderMode mode = RenderMode::Textured;
  bool dither = false;
  bool lamp = false;                     // a lamp shines from the eye
  bool isLit = false;                    // what is filled shows the light that falls on it
  std::span<const ShapeName> seen = {};  // the nearest first
  std::span<const ShapeName> tinted = {}, selected = {};
  std::optional<Vec3> preview = {};  // the selected ones' edges, moved that far, once more
  std::span<const Outline> outlines = {};
};

class CameraRenderer {
 public:
  virtual ~CameraRenderer() = default;

  // Whether it knows lamp and light; others show every picture without.
  virtual bool CanLight() const { return false; }

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
