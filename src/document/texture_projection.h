// How the texture of a face lies on it. Everything that needs texture coordinates asks here: they
// are those that the game's own tools compute.
#pragma once

#include "geometry/vec.h"

namespace ferrowand {

struct Face;

// Along which a texture lies on a face: the projection that the game's own tools make, from the
// nearest of the six directions of the world.
struct TextureAxes {
  DVec3 normal, s, t;
};
const TextureAxes& TextureAxesOf(const DVec3& normal);

// Of a texture's rotation on a face, which any number of degrees may be.
struct TextureTurn {
  explicit TextureTurn(float degrees);

  double cosine = 1, sine = 0;
};

// Texels, or whole textures: s to the right, t downwards.
struct TexturePoint {
  double s = 0, t = 0;
};

class TextureProjection {
 public:
  // By the face's plane, rotation, scales, of which 0 counts as 1, and offsets.
  explicit TextureProjection(const Face& face);
  // On a face with that normal, turned so: a texel a unit of the projection, from the world's
  // origin.
  TextureProjection(const DVec3& normal, float degrees);

  const TextureAxes& Axes() const { return axes_; }
  // Texels at a point of the world, and on a way in it, which no offset changes.
  TexturePoint Texels(const DVec3& point) const;
  TexturePoint Along(const DVec3& way) const;
  // Whole textures at a point, by the texture's real size; of a face without texture texels.
  TexturePoint Textures(const DVec3& point) const;

 private:
  const TextureAxes& axes_;
  TextureTurn turn_;
  double xscale_ = 1, yscale_ = 1;
  double xoff_ = 0, yoff_ = 0;
  double width_ = 1, height_ = 1;
};

}  // namespace ferrowand
