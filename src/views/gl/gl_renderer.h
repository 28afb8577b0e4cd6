// Draws what a camera sees with OpenGL 1.1 and GLU. Each shape is a display list for every texture
// on it; what makes a picture is which lists are called, and how.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "views/camera/camera_renderer.h"
#include "views/gl/gl.h"
#include "views/gl/gl_textures.h"

namespace ferrowand {

class GlContext;

class GlRenderer : public CameraRenderer {
 public:
  // Both outlive it. Where the context cannot be made current nothing is drawn, and nothing picked.
  GlRenderer(GlContext& context, const Palette& palette);
  ~GlRenderer() override;
  GlRenderer(const GlRenderer&) = delete;
  GlRenderer& operator=(const GlRenderer&) = delete;

  void SetShape(ShapeName name, const Shape& shape) override;
  void DropShape(ShapeName name) override;
  void DropAll() override;
  void Draw(const CameraPicture& picture) override;
  std::vector<ShapeName> Pick(const CameraPicture& picture, Pixel at) override;

 private:
  // Those of a shape's polygons that have the same texture, or none, and are all four-sided, or
  // none: Mesa's drivers end the program over lists of several primitives in selection mode.
  struct Part {
    Texture* texture;
    GLuint list;
  };
  // The lists of a picture that are drawn with one texture.
  struct Batch {
    Texture* texture;
    std::vector<GLuint> lists;
  };

  bool Prepare();
  void DropParts(std::vector<Part>& parts);
  void SetUp();
  void DrawTextured(std::span<const ShapeName> names);
  void CallAll(std::span<const ShapeName> names);
  void DrawTint(std::span<const ShapeName> names, Colour tint, RenderMode mode);
  void DrawEdges(std::span<const ShapeName> names, Colour hidden, Colour seen);
  void CollectHits(std::span<const ShapeName> names,
                   std::vector<std::pair<GLuint, ShapeName>>& hits);

  GlContext& context_;
  GlTextures textures_;
  bool isSetUp_ = false;
  std::vector<std::vector<Part>> shapes_;  // by name
  // Kept for their memory.
  std::unordered_map<const Texture*, std::size_t> batchOf_;
  std::vector<Batch> batches_;
  std::vector<GLuint> lists_;
};

}  // namespace ferrowand
