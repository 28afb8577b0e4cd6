// What of the world a camera can see: the room between the four sides of its picture, from the near
// to the back clip.
#pragma once

#include <array>
#include <span>

#include "geometry/winding.h"
#include "platform/pixel.h"
#include "views/camera/camera_renderer.h"

namespace ferrowand {

// The planes look inwards.
using Frustum = std::array<Plane, 6>;
Frustum FrustumOf(const CameraPicture& picture);
// Of what may come within `reach` pixels of the one.
Frustum FrustumAround(const CameraPicture& picture, Pixel at, double reach);

// Of length 1, through the middle of the pixel.
DVec3 DirectionThrough(const CameraPicture& picture, Pixel at);

}  // namespace ferrowand
