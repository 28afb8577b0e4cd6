// Textures that go where their faces go. What a texture does on a face is known by where the
// texture lies at three points of the face's plane.
#pragma once

#include <functional>
#include <vector>

#include "document/brush.h"
#include "document/texture_projection.h"

namespace ferrowand {

class entity;

// Made before an object moves, applied after it.
class TextureLock {
 public:
  // Every face of the object and of all below it.
  explicit TextureLock(const entity& e);

  // The object has been moved by `move`, which is affine, its faces and their order kept. Gives the
  // texels by which the worst of its textures misses where it was on its face: no file holds
  // fractions of offsets and degrees, and no face can hold what shears a texture.
  double Apply(entity& e, const std::function<DVec3(const DVec3&)>& move) const;

 private:
  struct Pin {
    DVec3 points[3];         // of the plane: the middle of the face, and to two sides of it
    TexturePoint texels[3];  // there
    bool isValid;            // a face without shape has none
  };

  static Pin PinOf(const Face& face);
  static double Hold(Face& face, const Pin& pin, const DVec3 (&moved)[3]);

  std::vector<Pin> pins_;
};

// The same for a move by a whole vector that has been made. It changes offsets only, unless
// StretchesTextures.
double ShiftTextures(entity& e, const DVec3& by);
// Whether a texture would come to lie between whole texels, which its scales have to make up for.
bool StretchesTextures(const entity& e, const DVec3& by);

}  // namespace ferrowand
