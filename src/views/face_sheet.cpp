#include "views/face_sheet.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "gamedata/wad_file.h"

namespace ferrowand {
namespace {

constexpr double FILLED = 0.8;           // of the picture, by the first face
constexpr std::size_t MOST_FACES = 200;  // that are drawn
constexpr std::uint32_t NO_TEXTURE = 0x808080;

std::vector<TexturePoint> TexelsOf(const Face& face) {
  std::vector<TexturePoint> texels;
  if (!face.HasShape() || !face.plane.HasNormal()) return texels;
  const TextureProjection projection(face);
  for (const WindingPoint& p : std::as_const(*face.w).Points()) {
    texels.push_back(projection.Texels(DVec3(p.Position())));
  }
  return texels;
}

struct TexelBox {
  TexturePoint least, most;

  TexturePoint Middle() const { return {(least.s + most.s) / 2, (least.t + most.t) / 2}; }
};

TexelBox BoxOf(const std::vector<TexturePoint>& texels) {
  TexelBox box{texels.front(), texels.front()};
  for (const TexturePoint& p : texels) {
    box.least = {std::min(box.least.s, p.s), std::min(box.least.t, p.t)};
    box.most = {std::max(box.most.s, p.s), std::max(box.most.t, p.t)};
  }
  return box;
}

// By whole textures as near to the place as it goes.
double Nearest(double texel, double place, int size) {
  return size > 0 ? texel + std::round((place - texel) / size) * size : texel;
}

// Which of the texels of a row, or a column, that is padded.
std::size_t PaddedIndex(double texel, int size, int padded) {
  const double part = texel / size - std::floor(texel / size);
  return static_cast<std::size_t>(std::min(static_cast<int>(part * padded), padded - 1));
}

// The move that is left to the nearest edge of the texture, if one is near.
double SnapOf(const std::vector<double>& places, int size, double reach) {
  double best = HUGE_VAL;
  for (const double place : places) {
    const double rest = size > 0 ? std::round(place / size) * size - place : HUGE_VAL;
    if (std::abs(rest) < std::abs(best)) best = rest;
  }
  return std::abs(best) <= reach ? best : 0;
}

}  // namespace

FaceSheet::FaceSheet(std::span<const PickedFace> faces, PixelSize area) : area_(area) {
  if (faces.empty()) return;
  texture_ = faces.front().Get().texture;
  corners_ = TexelsOf(faces.front().Get());
  if (corners_.empty()) return;
  const TexelBox box = BoxOf(corners_);
  middle_ = box.Middle();
  const double across = (box.most.s - box.least.s) / std::max(area.width, 1);
  const double down = (box.most.t - box.least.t) / std::max(area.height, 1);
  const double scale = std::max(across, down) / FILLED;
  if (scale > 0) texelsPerPixel_ = scale;
  for (const PickedFace& face : faces.first(std::min(faces.size(), MOST_FACES))) {
    std::vector<TexturePoint> texels = TexelsOf(face.Get());
    if (texels.empty() || face.Get().texture != texture_) continue;
    const TexturePoint own = BoxOf(texels).Middle();
    const int width = texture_ ? texture_->width : 0, height = texture_ ? texture_->height : 0;
    const TexturePoint to{Nearest(own.s, middle_.s, width), Nearest(own.t, middle_.t, height)};
    std::vector<Pixel> outline;
    outline.reserve(texels.size());
    for (const TexturePoint& p : texels) {
      outline.push_back(ToPixel({p.s + to.s - own.s, p.t + to.t - own.t}));
    }
    outlines_.push_back(std::move(outline));
  }
}

TexturePoint FaceSheet::TexelAt(Pixel at) const {
  return {middle_.s + (at.x + 0.5 - area_.width / 2.0) * texelsPerPixel_,
          middle_.t + (at.y + 0.5 - area_.height / 2.0) * texelsPerPixel_};
}

Pixel FaceSheet::ToPixel(const TexturePoint& texel) const {
  return {RoundToInt((texel.s - middle_.s) / texelsPerPixel_ + area_.width / 2.0),
          RoundToInt((texel.t - middle_.t) / texelsPerPixel_ + area_.height / 2.0)};
}

std::vector<std::uint32_t> FaceSheet::Pixels() const {
  const auto width = static_cast<std::size_t>(std::max(area_.width, 0));
  std::vector<std::uint32_t> pixels(width * static_cast<std::size_t>(std::max(area_.height, 0)),
                                    NO_TEXTURE);
  if (IsEmpty() || !texture_ || texture_->width == 0 || texture_->height == 0) return pixels;
  const std::span<const std::uint8_t> rgb = texture_->wad->Rgb(*texture_);
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    const Pixel at{static_cast<int>(i % width), static_cast<int>(i / width)};
    const TexturePoint texel = TexelAt(at);
    const std::size_t x = PaddedIndex(texel.s, texture_->width, texture_->paddedWidth);
    const std::size_t y = PaddedIndex(texel.t, texture_->height, texture_->paddedHeight);
    const std::size_t place = (y * texture_->paddedWidth + x) * 3;
    pixels[i] = static_cast<std::uint32_t>(rgb[place] << 16 | rgb[place + 1] << 8 | rgb[place + 2]);
  }
  return pixels;
}

int FaceSheet::CornerAt(Pixel at, int reach) const {
  if (IsEmpty()) return PickedFace::MIDDLE;
  for (std::size_t i = 0; i < outlines_.front().size(); ++i) {
    const Pixel corner = outlines_.front()[i];
    if (std::max(std::abs(corner.x - at.x), std::abs(corner.y - at.y)) <= reach) {
      return static_cast<int>(i);
    }
  }
  return PickedFace::MIDDLE;
}

TexturePoint FaceSheet::OffsetsOf(Pixel from, Pixel to, int reach) const {
  TexturePoint moved{(from.x - to.x) * texelsPerPixel_, (from.y - to.y) * texelsPerPixel_};
  std::vector<double> across, down;
  for (const TexturePoint& corner : corners_) {
    across.push_back(corner.s + moved.s);
    down.push_back(corner.t + moved.t);
  }
  moved.s += SnapOf(across, texture_ ? texture_->width : 0, reach * texelsPerPixel_);
  moved.t += SnapOf(down, texture_ ? texture_->height : 0, reach * texelsPerPixel_);
  return {std::round(moved.s), std::round(moved.t)};
}

}  // namespace ferrowand
