// The mapping between the world and the pixels of an orthographic view.
#pragma once

#include <cstdint>

#include "geometry/vec.h"
#include "platform/pixel.h"

namespace ferrowand {

struct ViewTransform {
  std::uint8_t orienu = 0;   // world axis shown across: 0 X, 1 Y, 2 Z
  std::uint8_t orienv = 1;   // world axis shown upwards
  std::int16_t originu = 0;  // world units at the top left pixel
  std::int16_t originv = 0;
  float scaleu = 4.0f;   // world units a pixel
  float scalev = -4.0f;  // negative: up in the world is up on the screen

  // The axis that is not shown.
  int DepthAxis() const;

  int ToScreenU(float world) const;
  int ToScreenV(float world) const;
  Pixel ToScreen(const Vec3& world) const {
    return {ToScreenU(world[orienu]), ToScreenV(world[orienv])};
  }
  // Sides in order, whatever the signs of the scales.
  PixelRect ToScreen(const Vec3& corner, const Vec3& opposite) const;

  // World units, rounded half away from zero.
  int ToWorldU(int pixel) const {
    return RoundToInt(originu + static_cast<double>(pixel) * scaleu);
  }
  int ToWorldV(int pixel) const {
    return RoundToInt(originv + static_cast<double>(pixel) * scalev);
  }
};

// "Top", "Front" or "Side"; "Invalid - possible error!" for two equal axes.
const char* OrientationName(int orienu, int orienv);

}  // namespace ferrowand
