#include "shell/direct3d/d3d_shapes.h"

#include <algorithm>
#include <utility>

#include "views/camera/shape_picking.h"

namespace ferrowand {
namespace {

struct Vertex {
  Vec3 at, normal;
  D3DCOLOR colour;
  float s, t;  // whole textures
  float u, v;  // whole light pages
};
constexpr DWORD VERTEX_FORMAT = D3DFVF_XYZ | D3DFVF_NORMAL | D3DFVF_DIFFUSE | D3DFVF_TEX2;

// A place along one side of an image of light. What lies outside takes the outermost luxel.
float LightCoordinate(float at, float begin, float step, int size, int place) {
  const float luxel = std::clamp((at - begin) / step, 0.0f, static_cast<float>(size - 1));
  return (luxel + 0.5f + static_cast<float>(place)) / LIGHT_PAGE_SIDE;
}

}  // namespace

void D3dShapes::Set(ShapeName name, const Shape& shape) {
  if (name >= shapes_.size()) {
    shapes_.resize(name + 1);
    places_.resize(name + 1);
  }
  FreeLight(name);
  shapes_[name] = shape;
  Place& place = places_[name];
  place.planes.clear();
  for (const ShapePolygon& polygon : shape.polygons) {
    place.planes.push_back(PlaneOf(shape, polygon));
  }
  for (LightImage& image : shapes_[name].light) {
    place.light.push_back(light_.Add(image));
    image.luxels = {};
  }
  if (!std::exchange(place.isStale, true)) stale_.push_back(name);
}

void D3dShapes::FreeLight(ShapeName name) {
  Place& place = places_[name];
  for (std::size_t i = 0; i < place.light.size(); ++i) {
    light_.Free(shapes_[name].light[i], place.light[i]);
  }
  place.light.clear();
}

void D3dShapes::Drop(ShapeName name) {
  if (name >= shapes_.size()) return;
  FreeLight(name);
  shapes_[name] = {};
  places_[name].planes.clear();
}

void D3dShapes::Clear() {
  shapes_.clear();
  places_.clear();
  stale_.clear();
  light_.Clear();
  buffer_.reset();
  end_ = 0;
}

void D3dShapes::DropBuffer() {
  buffer_.reset();
  light_.DropTextures();
}

// Where it was, or behind all others; what it leaves stays empty until there is a new buffer.
bool D3dShapes::FindRoom(ShapeName name) {
  const UINT needed = static_cast<UINT>(shapes_[name].points.size());
  Place& place = places_[name];
  if (needed <= place.room) return true;
  if (end_ + needed > capacity_) return false;
  place.begin = end_;
  place.room = needed;
  end_ += needed;
  return true;
}

bool D3dShapes::MakeBuffer(IDirect3DDevice9& device) {
  std::size_t needed = 0;
  for (const Shape& shape : shapes_) needed += shape.points.size();
  capacity_ = static_cast<UINT>(std::max<std::size_t>(needed + needed / 2, 1024));
  end_ = 0;
  buffer_.reset();
  IDirect3DVertexBuffer9* made = nullptr;
  device.CreateVertexBuffer(capacity_ * sizeof(Vertex), D3DUSAGE_WRITEONLY, VERTEX_FORMAT,
                            D3DPOOL_MANAGED, &made, nullptr);
  buffer_.reset(made);
  stale_.clear();
  for (ShapeName name = 0; name < shapes_.size(); ++name) {
    places_[name].room = 0;
    places_[name].isStale = true;
    stale_.push_back(name);
    FindRoom(name);
  }
  return buffer_ != nullptr;
}

bool D3dShapes::Fill(ShapeName name) {
  const Shape& shape = shapes_[name];
  places_[name].isStale = false;
  if (shape.points.empty()) return true;
  void* room = nullptr;
  if (FAILED(buffer_->Lock(places_[name].begin * sizeof(Vertex),
                           static_cast<UINT>(shape.points.size() * sizeof(Vertex)), &room, 0))) {
    return false;
  }
  auto* vertex = static_cast<Vertex*>(room);
  for (std::size_t i = 0; i < shape.polygons.size(); ++i) {
    const ShapePolygon& polygon = shape.polygons[i];
    const auto [red, green, blue] = polygon.colour;
    const Vec3 normal(places_[name].planes[i].normal);
    const LightPlace place = shape.light.empty() ? LightPlace() : places_[name].light[i];
    for (std::uint32_t p = polygon.begin; p < polygon.end; ++p) {
      const ShapePoint& point = shape.points[p];
      Vertex made{point.at, normal, D3DCOLOR_XRGB(red, green, blue), point.s, point.t, 0, 0};
      if (place.page >= 0) {
        const LightImage& image = shape.light[i];
        made.u =
            LightCoordinate(point.at[image.axisU], image.beginU, image.step, image.width, place.x);
        made.v =
            LightCoordinate(point.at[image.axisV], image.beginV, image.step, image.height, place.y);
      }
      vertex[p] = made;
    }
  }
  buffer_->Unlock();
  return true;
}

bool D3dShapes::Use(IDirect3DDevice9& device) {
  const auto fits = [this](ShapeName name) { return FindRoom(name); };
  if ((!buffer_ || !std::ranges::all_of(stale_, fits)) && !MakeBuffer(device)) return false;
  for (const ShapeName name : std::exchange(stale_, {})) {
    if (!Fill(name)) return false;
  }
  device.SetFVF(VERTEX_FORMAT);
  return SUCCEEDED(device.SetStreamSource(0, buffer_.get(), 0, sizeof(Vertex)));
}

}  // namespace ferrowand
