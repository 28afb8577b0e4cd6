#include "shell/direct3d/d3d_textures.h"

#include <algorithm>
#include <span>

#include "gamedata/palette.h"
#include "gamedata/wad_file.h"

namespace ferrowand {
namespace {

// The pixels of an image with `inEach` x `inEach` of them made one.
class ReducedImage {
 public:
  ReducedImage(const Texture& texture, std::span<const std::uint8_t> pixels, const Palette& palette,
               unsigned inEach)
      : width_(texture.paddedWidth), pixels_(pixels), palette_(palette), inEach_(inEach) {}

  D3DCOLOR At(unsigned x, unsigned y) const {
    unsigned red = 0, green = 0, blue = 0;
    for (unsigned row = y * inEach_; row < (y + 1) * inEach_; ++row) {
      for (unsigned column = x * inEach_; column < (x + 1) * inEach_; ++column) {
        const PaletteEntry& entry = palette_[pixels_[row * width_ + column]];
        red += entry.red;
        green += entry.green;
        blue += entry.blue;
      }
    }
    const unsigned count = inEach_ * inEach_;
    return D3DCOLOR_XRGB(red / count, green / count, blue / count);
  }

 private:
  const unsigned width_;
  const std::span<const std::uint8_t> pixels_;
  const Palette& palette_;
  const unsigned inEach_;
};

// How many texels on a side become one for the device to take the texture, at most all of the
// shorter one: no driver in use asks for more.
unsigned Reduction(IDirect3DDevice9& device, const Texture& texture) {
  D3DCAPS9 caps{};
  device.GetDeviceCaps(&caps);
  unsigned inEach = 1;
  while (texture.paddedWidth / inEach > caps.MaxTextureWidth ||
         texture.paddedHeight / inEach > caps.MaxTextureHeight) {
    inEach *= 2;
  }
  return std::min<unsigned>({inEach, texture.paddedWidth, texture.paddedHeight});
}

}  // namespace

OwnedD3d<IDirect3DTexture9> MakeTexture(IDirect3DDevice9& device, UINT width, UINT height) {
  IDirect3DTexture9* made = nullptr;
  device.CreateTexture(width, height, 1, 0, D3DFMT_X8R8G8B8, D3DPOOL_MANAGED, &made, nullptr);
  return OwnedD3d<IDirect3DTexture9>(made);
}

IDirect3DTexture9* D3dTextures::Get(IDirect3DDevice9& device, Texture& texture) {
  const auto [found, isNew] = made_.try_emplace(&texture);
  if (isNew) found->second = Make(device, texture);
  return found->second.get();
}

OwnedD3d<IDirect3DTexture9> D3dTextures::Make(IDirect3DDevice9& device, Texture& texture) const {
  const auto pixels = texture.wad->Pixels(texture);
  const unsigned inEach = Reduction(device, texture);
  const unsigned width = texture.paddedWidth / inEach, height = texture.paddedHeight / inEach;
  auto made = MakeTexture(device, width, height);
  D3DLOCKED_RECT rows;
  if (!made || FAILED(made->LockRect(0, &rows, nullptr, 0))) return nullptr;
  const ReducedImage image(texture, pixels, palette_, inEach);
  for (unsigned y = 0; y < height; ++y) {
    auto* row = reinterpret_cast<D3DCOLOR*>(static_cast<std::uint8_t*>(rows.pBits) +
                                            static_cast<std::ptrdiff_t>(y) * rows.Pitch);
    for (unsigned x = 0; x < width; ++x) row[x] = image.At(x, y);
  }
  made->UnlockRect(0);
  return made;
}

}  // namespace ferrowand
