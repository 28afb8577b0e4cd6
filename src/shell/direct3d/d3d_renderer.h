// Draws what a camera sees with Direct3D 9, without shaders, as OpenGL does it for the other
// camera; and, beyond that, lamp and light. All shapes lie in one buffer: what makes a picture is
// which of their polygons are named, sorted by texture.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "shell/direct3d/d3d_indices.h"
#include "shell/direct3d/d3d_shapes.h"
#include "shell/direct3d/d3d_textures.h"
#include "views/camera/camera_renderer.h"

namespace ferrowand {

class D3dSurface;

class D3dRenderer : public CameraRenderer {
 public:
  // Both outlive it. While the surface has no device nothing is drawn.
  D3dRenderer(D3dSurface& surface, const Palette& palette);
  D3dRenderer(const D3dRenderer&) = delete;
  D3dRenderer& operator=(const D3dRenderer&) = delete;

  bool CanLight() const override { return true; }
  void SetShape(ShapeName name, const Shape& shape) override { shapes_.Set(name, shape); }
  void DropShape(ShapeName name) override { shapes_.Drop(name); }
  void DropAll() override;
  void Draw(const CameraPicture& picture) override;
  std::vector<ShapeName> Pick(const CameraPicture& picture, Pixel at) override;

 private:
  // Polygons that look the same to the device.
  struct Look {
    Texture* texture = nullptr;
    int lightPage = -1;

    friend auto operator<=>(const Look&, const Look&) = default;
  };
  struct Batch {
    Look look;
    IndexRun run;
  };
  // Of what is moved by so much.
  struct EdgeLook {
    Colour hidden, seen;
    Vec3 by;
  };
  // What a picture is drawn from.
  struct Gathered {
    std::vector<Batch> scene;
    IndexRun tinted, selected, edges;
    std::vector<std::pair<Colour, IndexRun>> outlines;
  };

  IDirect3DDevice9* Prepare(PixelSize size);
  Gathered Gather(const CameraPicture& picture);
  void GatherScene(const CameraPicture& picture, std::vector<Batch>& scene);
  IndexRun GatherAll(std::span<const ShapeName> names, Primitive kind, const DVec3* eye);
  void DrawAll(IDirect3DDevice9& device, const CameraPicture& picture, const Gathered& gathered);
  void DrawScene(IDirect3DDevice9& device, const std::vector<Batch>& scene);
  void DrawInLamp(IDirect3DDevice9& device, const CameraPicture& picture,
                  const std::vector<Batch>& scene);
  void DrawTint(IDirect3DDevice9& device, const IndexRun& run, Colour tint);
  void DrawEdges(IDirect3DDevice9& device, const CameraPicture& picture, const IndexRun& run,
                 const EdgeLook& look);

  D3dSurface& surface_;
  unsigned generation_;
  D3dShapes shapes_;
  D3dIndices indices_;
  D3dTextures textures_;
  // Kept for their memory.
  std::map<Look, std::vector<std::uint32_t>> byLook_;
  std::vector<std::uint32_t> found_;
};

}  // namespace ferrowand
