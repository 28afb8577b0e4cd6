#include "document/texture_projection.h"

#include <cmath>
#include <numbers>

#include "document/brush.h"
#include "gamedata/wad_file.h"

namespace ferrowand {
namespace {

// Beyond, no float tells one degree from the next.
constexpr float LARGEST_ROTATION = 1 << 24;

// The game's own table: which way up a texture lies on a face that looks along the normal.
constexpr TextureAxes TEXTURE_AXES[] = {
    {{0, 0, 1}, {1, 0, 0}, {0, -1, 0}}, {{0, 0, -1}, {1, 0, 0}, {0, -1, 0}},
    {{1, 0, 0}, {0, 1, 0}, {0, 0, -1}}, {{-1, 0, 0}, {0, 1, 0}, {0, 0, -1}},
    {{0, 1, 0}, {1, 0, 0}, {0, 0, -1}}, {{0, -1, 0}, {1, 0, 0}, {0, 0, -1}},
};

double ScaleOf(float scale) {
  return scale == 0 ? 1 : scale;
}

}  // namespace

// Of directions as near as each other the first one of the table.
const TextureAxes& TextureAxesOf(const DVec3& normal) {
  const TextureAxes* best = &TEXTURE_AXES[0];
  double greatest = 0;
  for (const TextureAxes& axes : TEXTURE_AXES) {
    const double likeness = Dot(normal, axes.normal);
    if (likeness > greatest) {
      greatest = likeness;
      best = &axes;
    }
  }
  return *best;
}

TextureTurn::TextureTurn(float degrees) {
  if (degrees == 0) return;  // as on most faces
  if (std::abs(degrees) < LARGEST_ROTATION && degrees == std::trunc(degrees)) {
    cosine = CosDegrees(static_cast<int>(degrees));
    sine = SinDegrees(static_cast<int>(degrees));
  } else {
    const double radians = degrees * (std::numbers::pi / 180);
    cosine = std::cos(radians);
    sine = std::sin(radians);
  }
}

TextureProjection::TextureProjection(const Face& face)
    : axes_(TextureAxesOf(face.plane.normal)),
      turn_(face.rotation),
      xscale_(ScaleOf(face.xscale)),
      yscale_(ScaleOf(face.yscale)),
      xoff_(face.xoff),
      yoff_(face.yoff) {
  if (face.texture && face.texture->width) width_ = face.texture->width;
  if (face.texture && face.texture->height) height_ = face.texture->height;
}

TextureProjection::TextureProjection(const DVec3& normal, float degrees)
    : axes_(TextureAxesOf(normal)), turn_(degrees) {}

TexturePoint TextureProjection::Along(const DVec3& way) const {
  const double across = Dot(way, axes_.s);
  const double down = Dot(way, axes_.t);
  return {(turn_.cosine * across - turn_.sine * down) / xscale_,
          (turn_.sine * across + turn_.cosine * down) / yscale_};
}

TexturePoint TextureProjection::Texels(const DVec3& point) const {
  const TexturePoint along = Along(point);
  return {along.s + xoff_, along.t + yoff_};
}

TexturePoint TextureProjection::Textures(const DVec3& point) const {
  const TexturePoint texels = Texels(point);
  return {texels.s / width_, texels.t / height_};
}

}  // namespace ferrowand
