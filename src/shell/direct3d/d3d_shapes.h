// The shapes of a camera as vertices of one buffer. The shapes themselves are kept: they say what a
// picture is made of, and fill the buffer of the next device.
#pragma once

#include <vector>

#include "geometry/winding.h"
#include "shell/direct3d/d3d.h"
#include "shell/direct3d/light_pages.h"
#include "views/camera/camera_renderer.h"

namespace ferrowand {

class D3dShapes {
 public:
  void Set(ShapeName name, const Shape& shape);
  void Drop(ShapeName name);
  void Clear();

  std::span<const Shape> Shapes() const { return shapes_; }
  // Of each of the shape's polygons, and where its light is.
  const std::vector<Plane>& PlanesOf(ShapeName name) const { return places_[name].planes; }
  const std::vector<LightPlace>& LightOf(ShapeName name) const { return places_[name].light; }
  LightPages& Light() { return light_; }
  // In the buffer, of the shape's first point; the others follow in their order.
  UINT FirstVertex(ShapeName name) const { return places_[name].begin; }
  UINT VertexCount() const { return end_; }

  // Makes the buffer hold them all, and the device draw from it. False where it has no room.
  bool Use(IDirect3DDevice9& device);
  // What was made with the device goes.
  void DropBuffer();

 private:
  struct Place {
    UINT begin = 0, room = 0;  // vertices
    bool isStale = false;
    std::vector<Plane> planes;
    std::vector<LightPlace> light;
  };

  void FreeLight(ShapeName name);
  bool FindRoom(ShapeName name);
  bool MakeBuffer(IDirect3DDevice9& device);
  bool Fill(ShapeName name);

  std::vector<Shape> shapes_;  // by name
  std::vector<Place> places_;  // by name
  std::vector<ShapeName> stale_;
  LightPages light_;
  OwnedD3d<IDirect3DVertexBuffer9> buffer_;
  UINT capacity_ = 0, end_ = 0;  // vertices
};

}  // namespace ferrowand
