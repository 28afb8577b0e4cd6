// Places and shapes on a surface of pixels; (0, 0) is at the top left.
#pragma once

#include <compare>

namespace ferrowand {

struct Pixel {
  int x = 0;
  int y = 0;

  friend bool operator==(const Pixel&, const Pixel&) = default;
  friend auto operator<=>(const Pixel&, const Pixel&) = default;
};

struct PixelSize {
  int width = 0;
  int height = 0;

  friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

// Right and bottom are the first column and row outside.
struct PixelRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  bool Empty() const { return right <= left || bottom <= top; }

  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

// Both ends are drawn.
struct PixelLine {
  Pixel from;
  Pixel to;

  friend bool operator==(const PixelLine&, const PixelLine&) = default;
  friend auto operator<=>(const PixelLine&, const PixelLine&) = default;
};

}  // namespace ferrowand
