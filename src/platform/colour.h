// A colour, as screens and palettes have them.
#pragma once

#include <cstdint>

namespace ferrowand {

struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  friend bool operator==(const Colour&, const Colour&) = default;
};

}  // namespace ferrowand
