#include "shell/direct3d/d3d_renderer.h"

#include "platform/display.h"
#include "shell/direct3d/d3d_states.h"
#include "shell/direct3d/d3d_surface.h"
#include "views/camera/shape_picking.h"

namespace ferrowand {
namespace {

bool ShowsLight(const CameraPicture& picture) {
  return picture.isLit && !IsOfLines(picture.mode);
}
bool ShowsLamp(const CameraPicture& picture) {
  return picture.lamp && !IsOfLines(picture.mode);
}
Primitive KindOf(RenderMode mode) {
  return IsOfLines(mode) ? Primitive::Lines : Primitive::Triangles;
}

}  // namespace

D3dRenderer::D3dRenderer(D3dSurface& surface, const Palette& palette)
    : surface_(surface), generation_(surface.Generation()), textures_(palette) {}

void D3dRenderer::DropAll() {
  shapes_.Clear();
  indices_.DropBuffer();
  textures_.DropAll();
  byLook_.clear();
}

// What the device before has made goes with it.
IDirect3DDevice9* D3dRenderer::Prepare(PixelSize size) {
  IDirect3DDevice9* device = surface_.Prepare(size);
  if (std::exchange(generation_, surface_.Generation()) != generation_) {
    shapes_.DropBuffer();
    indices_.DropBuffer();
    textures_.DropAll();
  }
  return device;
}

void D3dRenderer::GatherScene(const CameraPicture& picture, std::vector<Batch>& scene) {
  const bool isTextured = IsTextured(picture.mode), isLit = ShowsLight(picture);
  for (const ShapeName name : picture.seen) {
    const Shape& shape = shapes_.Shapes()[name];
    const std::vector<Plane>& planes = shapes_.PlanesOf(name);
    const std::vector<LightPlace>& light = shapes_.LightOf(name);
    for (std::size_t i = 0; i < shape.polygons.size(); ++i) {
      if (!(planes[i].DistanceTo(picture.pose.eye) > 0)) continue;
      const Look look{isTextured ? shape.polygons[i].texture : nullptr,
                      isLit && !light.empty() ? light[i].page : -1};
      AddPrimitives(shape.polygons[i], shapes_.FirstVertex(name), KindOf(picture.mode),
                    byLook_[look]);
    }
  }
  for (auto& [look, indices] : byLook_) {
    if (indices.empty()) continue;
    scene.push_back({look, indices_.Add(KindOf(picture.mode), indices)});
    indices.clear();
  }
}

// Those that are seen from in front, or, without an eye, all.
IndexRun D3dRenderer::GatherAll(std::span<const ShapeName> names, Primitive kind,
                                const DVec3* eye) {
  found_.clear();
  for (const ShapeName name : names) {
    const Shape& shape = shapes_.Shapes()[name];
    for (std::size_t i = 0; i < shape.polygons.size(); ++i) {
      if (eye && !(shapes_.PlanesOf(name)[i].DistanceTo(*eye) > 0)) continue;
      AddPrimitives(shape.polygons[i], shapes_.FirstVertex(name), kind, found_);
    }
  }
  return indices_.Add(kind, found_);
}

D3dRenderer::Gathered D3dRenderer::Gather(const CameraPicture& picture) {
  indices_.Clear();
  Gathered gathered;
  GatherScene(picture, gathered.scene);
  gathered.tinted = GatherAll(picture.tinted, KindOf(picture.mode), &picture.pose.eye);
  gathered.selected = GatherAll(picture.selected, KindOf(picture.mode), &picture.pose.eye);
  gathered.edges = GatherAll(picture.selected, Primitive::Lines, nullptr);
  for (const auto& [name, colour] : picture.outlines) {
    gathered.outlines.push_back({colour, GatherAll({&name, 1}, Primitive::Lines, nullptr)});
  }
  return gathered;
}

void D3dRenderer::Draw(const CameraPicture& picture) {
  IDirect3DDevice9* device = Prepare(picture.size);
  if (!device) return;
  const auto [width, height] = picture.size;
  const D3DVIEWPORT9 viewport{0,    0,   static_cast<DWORD>(width), static_cast<DWORD>(height),
                              0.0f, 1.0f};
  device->SetViewport(&viewport);
  device->Clear(0, nullptr, D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, 0, 1, 0);
  if (picture.seen.empty() || !shapes_.Use(*device)) return;
  // After that: where the buffer is a new one, the vertices lie elsewhere in it.
  const Gathered gathered = Gather(picture);
  if (!indices_.Use(*device) || FAILED(device->BeginScene())) return;
  DrawAll(*device, picture, gathered);
  device->EndScene();
}

void D3dRenderer::DrawAll(IDirect3DDevice9& device, const CameraPicture& picture,
                          const Gathered& gathered) {
  SetPlain(device, picture.dither);
  SetProjection(device, picture);
  SetView(device, picture.pose);
  SetWorld(device);
  const bool isInLampAlone = ShowsLamp(picture) && !ShowsLight(picture);
  if (!isInLampAlone) DrawScene(device, gathered.scene);
  if (ShowsLamp(picture)) {
    SetBlend(device, isInLampAlone ? Blend::None : Blend::Add);
    device.SetRenderState(D3DRS_ZFUNC, D3DCMP_LESSEQUAL);
    DrawInLamp(device, picture, gathered.scene);
    SetPlain(device, picture.dither);
  }
  device.SetRenderState(D3DRS_ZFUNC, D3DCMP_LESSEQUAL);
  SetBlend(device, IsOfLines(picture.mode) ? Blend::None : Blend::DoubleProduct);
  DrawTint(device, gathered.tinted, ENTITY_TINT);
  DrawTint(device, gathered.selected, SELECTION_TINT);
  SetBlend(device, Blend::None);
  device.SetRenderState(D3DRS_ZWRITEENABLE, FALSE);
  DrawEdges(device, picture, gathered.edges, {HIDDEN_EDGES, SELECTION_EDGES, {0, 0, 0}});
  for (const auto& [colour, run] : gathered.outlines) {
    DrawEdges(device, picture, run, {colour, colour, {0, 0, 0}});
  }
  if (!picture.preview) return;
  DrawEdges(device, picture, gathered.edges, {PREVIEW_EDGES, PREVIEW_EDGES, *picture.preview});
}

void D3dRenderer::DrawScene(IDirect3DDevice9& device, const std::vector<Batch>& scene) {
  for (const Batch& batch : scene) {
    Texture* texture = batch.look.texture;
    const int page = batch.look.lightPage;
    SetLook(device, texture ? textures_.Get(device, *texture) : nullptr,
            page >= 0 ? shapes_.Light().Get(device, page) : nullptr);
    D3dIndices::Draw(device, batch.run, shapes_.VertexCount());
  }
}

void D3dRenderer::DrawInLamp(IDirect3DDevice9& device, const CameraPicture& picture,
                             const std::vector<Batch>& scene) {
  SetLamp(device, picture.pose);
  for (const Batch& batch : scene) {
    Texture* texture = batch.look.texture;
    SetLookInLamp(device, texture ? textures_.Get(device, *texture) : nullptr);
    D3dIndices::Draw(device, batch.run, shapes_.VertexCount());
  }
}

// Over what is there already, twice as bright where the tint is full.
void D3dRenderer::DrawTint(IDirect3DDevice9& device, const IndexRun& run, Colour tint) {
  SetColour(device, tint);
  D3dIndices::Draw(device, run, shapes_.VertexCount());
}

// All edges, also those behind something.
void D3dRenderer::DrawEdges(IDirect3DDevice9& device, const CameraPicture& picture,
                            const IndexRun& run, const EdgeLook& look) {
  SetMovedWorld(device, picture.pose.eye, look.by);
  device.SetRenderState(D3DRS_ZFUNC, D3DCMP_GREATER);
  SetColour(device, look.hidden);
  D3dIndices::Draw(device, run, shapes_.VertexCount());
  device.SetRenderState(D3DRS_ZFUNC, D3DCMP_LESSEQUAL);
  SetColour(device, look.seen);
  // Lines are one pixel wide: thicker ones are several, beside and below each other.
  for (int shift = 0; shift < Scaled(SELECTION_EDGE_WIDTH); ++shift) {
    SetProjection(device, picture, {-shift, 0});
    D3dIndices::Draw(device, run, shapes_.VertexCount());
    SetProjection(device, picture, {0, shift});
    D3dIndices::Draw(device, run, shapes_.VertexCount());
  }
  SetProjection(device, picture);
}

std::vector<ShapeName> D3dRenderer::Pick(const CameraPicture& picture, Pixel at) {
  return PickShapes(picture, at, shapes_.Shapes());
}

}  // namespace ferrowand
