// The game's 256 colours, bent by one gamma a channel, and the way back from a colour to an index.
#pragma once

#include <array>
#include <cstdint>

#include "platform/colour.h"

namespace ferrowand {

class Reporter;
class SearchPath;

struct PaletteEntry {
  std::uint8_t red = 0, green = 0, blue = 0;
  std::uint8_t used = 1;

  Colour ToColour() const { return {red, green, blue}; }
};

struct Gamma {
  float red = 1, green = 1, blue = 1;  // each above 0
};

class Palette {
 public:
  // Grey: entry i is i, i, i.
  Palette();

  // Reads "quake.pal" from the first folder of the path that has one: a header of 17 bytes, then
  // 768 numbers from 0 to 255. When no folder has it, says so and turns grey. A file that ends
  // early leaves the rest black.
  void Load(const SearchPath& path, const Gamma& gamma, Reporter& reporter);

  const PaletteEntry& operator[](std::uint8_t index) const { return entries_[index]; }
  // The entry, none behind `last`, at the smallest sum of squared differences; of equals, the
  // lowest.
  std::uint8_t NearestColour(int red, int green, int blue, int last = 255) const;
  // The colours as the file has them, without gamma.
  const std::array<Colour, 256>& Unbent() const { return unbent_; }

 private:
  std::array<PaletteEntry, 256> entries_;
  std::array<Colour, 256> unbent_;
};

// gamma x v^(1 - log gamma / log 255), cut to a whole number: 0 and 255 stay where they are.
std::uint8_t GammaCorrect(int value, float gamma);

}  // namespace ferrowand
