// A small picture drawn with smooth edges at any size, and the icon file that holds several.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ferrowand::generator {

struct Point {
  double x = 0, y = 0;
};

struct Paint {
  double red = 0, green = 0, blue = 0;  // 0 .. 255
};

// The picture's own units run from 0 to 48 on both axes, whatever its size in pixels.
class Picture {
 public:
  explicit Picture(int size);

  int Size() const { return size_; }
  // The side towards the upper left is drawn brighter by `gloss` (0 .. 1).
  void Polygon(const std::vector<Point>& corners, const Paint& paint, double gloss = 0);
  void Disc(Point centre, double radius, const Paint& paint, double gloss = 0);

  // Blue, green, red and cover, rows from the top.
  std::vector<std::uint8_t> Pixels() const;

 private:
  template <typename Inside>
  void Fill(Inside inside, const Paint& paint, double gloss);

  struct Texel {
    Paint paint;
    double cover = 0;
  };
  int size_;
  std::vector<Texel> texels_;
};

// For each picture an image of 32 bits, and one of 256 colours for systems that know no better.
std::vector<std::uint8_t> EncodeIcon(const std::vector<Picture>& pictures);

}  // namespace ferrowand::generator
