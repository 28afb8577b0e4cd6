// The textures of one device, made when they are first asked for.
#pragma once

#include <unordered_map>

#include "shell/direct3d/d3d.h"

namespace ferrowand {

class Palette;
struct Texture;

class D3dTextures {
 public:
  explicit D3dTextures(const Palette& palette) : palette_(palette) {}

  // Of the device that is given until DropAll. Null where it makes none.
  IDirect3DTexture9* Get(IDirect3DDevice9& device, Texture& texture);
  // They and the palette are asked for anew.
  void DropAll() { made_.clear(); }

 private:
  OwnedD3d<IDirect3DTexture9> Make(IDirect3DDevice9& device, Texture& texture) const;

  const Palette& palette_;
  std::unordered_map<const Texture*, OwnedD3d<IDirect3DTexture9>> made_;
};

// Of one level, which the device keeps through a reset. Null where it makes none.
OwnedD3d<IDirect3DTexture9> MakeTexture(IDirect3DDevice9& device, UINT width, UINT height);

}  // namespace ferrowand
