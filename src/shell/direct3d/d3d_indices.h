// Which vertices a picture is drawn from, in which order: gathered, handed to the device at once,
// and drawn in parts.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "shell/direct3d/d3d.h"
#include "views/camera/camera_renderer.h"

namespace ferrowand {

enum class Primitive { Triangles, Lines };

// Of what has been gathered.
struct IndexRun {
  Primitive kind = Primitive::Triangles;
  UINT first = 0, count = 0;
};

// Adds what the polygon is made of, `firstVertex` being that of its shape.
void AddPrimitives(const ShapePolygon& polygon, UINT firstVertex, Primitive kind,
                   std::vector<std::uint32_t>& indices);

class D3dIndices {
 public:
  void Clear() { gathered_.clear(); }
  IndexRun Add(Primitive kind, std::span<const std::uint32_t> indices);

  // False where the device has no room.
  bool Use(IDirect3DDevice9& device);
  // Of the vertices that the device draws from, so many are there.
  static void Draw(IDirect3DDevice9& device, const IndexRun& run, UINT vertexCount);
  // What was made with the device goes.
  void DropBuffer() { buffer_.reset(); }

 private:
  std::vector<std::uint32_t> gathered_;
  OwnedD3d<IDirect3DIndexBuffer9> buffer_;
  std::size_t capacity_ = 0;
};

}  // namespace ferrowand
