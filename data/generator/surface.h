// A patch of material: a colour and a height for every texel. What is drawn runs over one edge and
// in at the other, so that every patch tiles. Shading turns the heights into light and shadow;
// only then the patch is cut down to the palette.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ferrowand {

class Palette;

namespace generator {

// Components run from 0 to 255 and may leave that range until the palette is applied.
struct Rgb {
  double red = 0, green = 0, blue = 0;
};

Rgb operator*(const Rgb& colour, double factor);
Rgb Mix(const Rgb& from, const Rgb& to, double amount);

// A finished texture: palette indices, rows from the top.
struct Image {
  std::string name;
  int width = 0, height = 0;
  std::vector<std::uint8_t> pixels;
};

// Which of the sixteen rows of sixteen colours a texture may use.
using Ramps = unsigned;
inline constexpr Ramps GREY = 1 << 0, BROWN = 1 << 1, STEEL = 1 << 2, OLIVE = 1 << 3, RED = 1 << 4,
                       BRASS = 1 << 5, RUST = 1 << 6, SKIN = 1 << 7, MAUVE = 1 << 8, ROSE = 1 << 9,
                       SAND = 1 << 10, MOSS = 1 << 11, YELLOW = 1 << 12, BLUE = 1 << 13,
                       GLOW = 3 << 14;  // the last two shine in the dark

// Even in 0 .. 1, the same for the same place and seed on every machine.
double Hash(int x, int y, unsigned seed);
double Clamp01(double value);
// 0 below `from`, 1 above `to`, smooth between.
double Smooth(double from, double to, double value);
// A wave of period 1 between -1 and 1, close to a sine but made of parabolas.
double Wave(double turns);

class Surface {
 public:
  Surface(int width, int height, const Rgb& base);

  int Width() const { return width_; }
  int Height() const { return height_; }
  Rgb& Colour(int x, int y) { return colours_[Index(x, y)]; }
  double& Level(int x, int y) { return levels_[Index(x, y)]; }

  // Smooth noise in 0 .. 1 that tiles; features are about cellx by celly texels.
  double Noise(double x, double y, int cellx, int celly, unsigned seed) const;
  // Four octaves of it, the largest `cell` texels.
  double Cloud(double x, double y, int cell, unsigned seed) const;

  // Brightens and darkens by noise; `relief` also lifts and sinks.
  Surface& Grain(int cellx, int celly, double amount, double relief, unsigned seed);
  // Blotches of another colour where the clouds are thicker than `threshold` (0 .. 1).
  Surface& Stain(const Rgb& colour, int cell, double threshold, double amount, unsigned seed);
  // A rectangle raised (or, below 0, sunk) by `lift`, its edges sloped over `bevel` texels.
  Surface& Block(int x, int y, int width, int height, double lift, double bevel);
  Surface& Tint(int x, int y, int width, int height, const Rgb& colour, double amount = 1);
  // A round head of the given radius, raised or sunk.
  Surface& Rivet(double x, double y, double radius, double lift);
  Surface& Disc(double x, double y, double radius, const Rgb& colour, double amount = 1);
  // A cylinder along one axis, from `from` to `from + size` on the other.
  Surface& Tube(bool vertical, int from, int size, double lift);
  // Scratches of one texel, brighter below and darker above.
  Surface& Scratches(int count, unsigned seed);
  // Light from the upper left.
  Surface& Shade(double strength);
  // Darkens towards the bottom, as by dirt and damp.
  Surface& Grime(double amount, unsigned seed);

  // Nearest colours of the allowed ramps, with a light pattern to hide the steps.
  Image Finish(const std::string& name, const Palette& palette, Ramps ramps) const;

 private:
  std::size_t Index(int x, int y) const;

  int width_, height_;
  std::vector<Rgb> colours_;
  std::vector<double> levels_;
};

}  // namespace generator
}  // namespace ferrowand
