// A small picture of picked faces on their texture: the texture lies upright, the faces lie on it
// as it lies on them. It can be drawn, asked and dragged without a window.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "document/face_selection.h"
#include "document/texture_projection.h"
#include "platform/pixel.h"

namespace ferrowand {

struct Texture;

class FaceSheet {
 public:
  // Of the first face and those with the same texture, which fill the picture.
  FaceSheet(std::span<const PickedFace> faces, PixelSize area);

  bool IsEmpty() const { return outlines_.empty(); }
  // Rows from the top, a pixel as 0x00rrggbb. What the cache of textures may have to load.
  std::vector<std::uint32_t> Pixels() const;
  // The first one is that of the first face, corner by corner.
  const std::vector<std::vector<Pixel>>& Outlines() const { return outlines_; }
  // Of the first face, near the pixel; PickedFace::MIDDLE for none.
  int CornerAt(Pixel at, int reach) const;

  // By how much the offsets change when the texture is dragged that far. An edge of the texture
  // that comes near a corner of the first face, within so many pixels, snaps onto it.
  TexturePoint OffsetsOf(Pixel from, Pixel to, int reach) const;

 private:
  TexturePoint TexelAt(Pixel at) const;
  Pixel ToPixel(const TexturePoint& texel) const;

  PixelSize area_;
  Texture* texture_ = nullptr;
  std::vector<TexturePoint> corners_;  // of the first face
  std::vector<std::vector<Pixel>> outlines_;
  TexturePoint middle_;
  double texelsPerPixel_ = 1;
};

}  // namespace ferrowand
