// A place on a face that a camera shows: how something new stands on it, and the box that is drawn
// there with the mouse.
#pragma once

#include "geometry/vec.h"
#include "views/camera/camera_renderer.h"
#include "views/camera/selection_drag.h"

namespace ferrowand {

class FacePlace {
 public:
  // Of the face with that normal, outwards and of length 1.
  FacePlace(const DVec3& point, const DVec3& normal, const SpaceRules& rules)
      : point_(point), normal_(normal), rules_(rules) {}

  // The way in whole units by which the box comes to stand on the face, its middle over the place;
  // across the face in steps of the grid where that is on.
  Vec3 WayFor(const Bounds& box) const;

  // Drawn from the place to where the pixel shows its floor, and so high away from the face; empty
  // on an axis along which it is not drawn yet. The floor is square to the world's axes, through
  // the place.
  Bounds BoxTo(Pixel at, const CameraPicture& picture, int height) const;

 private:
  int Across() const;  // the axis that the face looks along most
  float OnGrid(double coordinate) const;

  DVec3 point_, normal_;
  SpaceRules rules_;
};

}  // namespace ferrowand
