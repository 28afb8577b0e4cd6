#include "shell/direct3d/d3d_indices.h"

#include <algorithm>
#include <cstring>

namespace ferrowand {
namespace {

constexpr std::size_t LEAST_CAPACITY = 16384;

}  // namespace

void AddPrimitives(const ShapePolygon& polygon, UINT firstVertex, Primitive kind,
                   std::vector<std::uint32_t>& indices) {
  const std::uint32_t begin = firstVertex + polygon.begin, end = firstVertex + polygon.end;
  if (kind == Primitive::Lines) {
    for (std::uint32_t i = begin; i < end; ++i) {
      indices.insert(indices.end(), {i, i + 1 < end ? i + 1 : begin});
    }
    return;
  }
  for (std::uint32_t i = begin + 1; i + 1 < end; ++i) {
    indices.insert(indices.end(), {begin, i, i + 1});
  }
}

IndexRun D3dIndices::Add(Primitive kind, std::span<const std::uint32_t> indices) {
  const IndexRun run{kind, static_cast<UINT>(gathered_.size()), static_cast<UINT>(indices.size())};
  gathered_.insert(gathered_.end(), indices.begin(), indices.end());
  return run;
}

bool D3dIndices::Use(IDirect3DDevice9& device) {
  if (gathered_.empty()) return true;
  if (!buffer_ || capacity_ < gathered_.size()) {
    capacity_ = std::max(gathered_.size() + gathered_.size() / 2, LEAST_CAPACITY);
    buffer_.reset();
    IDirect3DIndexBuffer9* made = nullptr;
    device.CreateIndexBuffer(static_cast<UINT>(capacity_ * sizeof(std::uint32_t)),
                             D3DUSAGE_WRITEONLY, D3DFMT_INDEX32, D3DPOOL_MANAGED, &made, nullptr);
    buffer_.reset(made);
  }
  const std::size_t bytes = gathered_.size() * sizeof(std::uint32_t);
  void* room = nullptr;
  if (!buffer_ || FAILED(buffer_->Lock(0, static_cast<UINT>(bytes), &room, 0))) return false;
  std::memcpy(room, gathered_.data(), bytes);
  buffer_->Unlock();
  return SUCCEEDED(device.SetIndices(buffer_.get()));
}

void D3dIndices::Draw(IDirect3DDevice9& device, const IndexRun& run, UINT vertexCount) {
  if (run.count == 0) return;
  const bool isOfLines = run.kind == Primitive::Lines;
  device.DrawIndexedPrimitive(isOfLines ? D3DPT_LINELIST : D3DPT_TRIANGLELIST, 0, 0, vertexCount,
                              run.first, run.count / (isOfLines ? 2 : 3));
}

}  // namespace ferrowand
