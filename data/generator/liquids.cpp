#include <cmath>

#include "textures.h"

namespace ferrowand::generator {
namespace {

// Bright veins that wander between darker pools: two clouds, each bent by the other.
Image Liquid(const char* name, const Palette& palette, const Rgb& deep, const Rgb& middle,
             const Rgb& crest, double sharpness, Ramps ramps, unsigned seed) {
  Surface s(64, 64, deep);
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) {
      const double bendx = 10 * (s.Noise(x, y, 16, 16, seed) - 0.5) + 3 * Wave(y / 32.0);
      const double bendy = 10 * (s.Noise(x, y, 16, 16, seed + 1) - 0.5) + 3 * Wave(x / 32.0);
      const double vein = std::abs(s.Noise(x + bendx, y + bendy, 12, 12, seed + 2) * 2 - 1);
      const double fine = s.Cloud(x + bendy, y + bendx, 16, seed + 3);
      s.Colour(x, y) = Mix(Mix(deep, middle, Smooth(0.25, 0.75, fine)), crest,
                           Smooth(sharpness, 0, vein) * 0.85);
    }
  }
  return s.Finish(name, palette, ramps);
}

Image Teleport(const char* name, const Palette& palette) {
  Surface s(64, 64, {4, 4, 8});
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) {
      const double haze = s.Cloud(x, y, 24, 521);
      s.Colour(x, y) = Mix({4, 4, 10}, {70, 70, 110}, Smooth(0.45, 0.85, haze));
      const double star = Hash(x, y, 522);
      if (star > 0.975) s.Colour(x, y) = Rgb{235, 235, 235} * (0.4 + 24 * (star - 0.975));
    }
  }
  return s.Finish(name, palette, GREY | STEEL);
}

}  // namespace

std::vector<Image> MakeLiquids(const Palette& p) {
  std::vector<Image> images;
  images.push_back(
      Liquid("*water1", p, {28, 30, 46}, {52, 56, 82}, {104, 108, 152}, 0.3, STEEL | GREY, 501));
  images.push_back(
      Liquid("*water2", p, {30, 32, 12}, {52, 54, 22}, {92, 92, 48}, 0.25, OLIVE | GREY, 505));
  images.push_back(Liquid("*slime1", p, {24, 34, 6}, {52, 66, 10}, {104, 112, 24}, 0.35,
                          OLIVE | MOSS | BLUE >> 3, 509));
  images.push_back(Liquid("*lava1", p, {75, 7, 0}, {163, 39, 11}, {247, 190, 100}, 0.4, GLOW, 513));
  images.push_back(Teleport("*teleport", p));
  return images;
}

}  // namespace ferrowand::generator
