// Textures that go where their faces go. What a texture does on a face is known by where the
// texture lies at three points of the face's plane.
#pragma once

#include <functional>
#include <vector>

#include "document/brush.h"

namespace ferrowand {

class entity;

// Made before an object moves, applied after it.
class TextureLock {
 public:
  // Every face of the object and of all below it.
  explicit TextureLock(const entity& e);

  // The object has been moved by `move`, which is affine, its faces and their order kept. Offsets
  // and scales come out as near as numbers get, a rotation in whole degrees: no file holds others.
  // What shears a texture only turns and stretches it, since no face can hold that.
  void Apply(entity& e, const std::function<DVec3(const DVec3&)>& move) const;

 private:
  struct Pin {
    DVec3 at;     // where the texture is held: the middle of the face
    DVec3 u, v;   // two directions of the plane
    double s[3];  // texels at `at`, at `at + u`, at `at + v`
    double t[3];
    bool isValid;  // a face without shape has none
  };

  static Pin PinOf(const Face& face);
  static void Hold(Face& face, const Pin& pin, const DVec3 (&moved)[3]);

  std::vector<Pin> pins_;
};

// The same for a move by a whole vector, which changes offsets only.
void ShiftTextures(entity& e, const DVec3& by);

}  // namespace ferrowand
