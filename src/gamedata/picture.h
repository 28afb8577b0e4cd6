// Pictures of other programs: what is brought into a WAD, before it is a texture of the game's
// colours.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ferrowand {

struct PictureColour {
  std::uint8_t red = 0, green = 0, blue = 0;
  std::uint8_t alpha = 255;  // 255: nothing shines through

  friend bool operator==(const PictureColour&, const PictureColour&) = default;
};

// Rows from the top, each from the left.
struct Picture {
  int width = 0, height = 0;  // pixels
  // One a pixel, for a picture of a palette, which `colours` is then; without any it is the game's.
  std::vector<std::uint8_t> indices;
  // For a picture of true colours one a pixel.
  std::vector<PictureColour> colours;

  bool HasPalette() const { return !indices.empty(); }
};

struct NamedPicture {
  std::string name;
  Picture picture;
};

// Of a picture that is taken at all. A texture has far less.
inline constexpr int MAXPICTURESIDE = 4096;
// Whether a picture may be so large, pixels; 0 x 0 is none.
inline bool IsPictureSize(std::int64_t width, std::int64_t height) {
  return width > 0 && height > 0 && width <= MAXPICTURESIDE && height <= MAXPICTURESIDE;
}

// Truevision's format: palettes, grey, 15 to 32 bits, run-length encoded or not, from any corner.
// Nothing for what is none, is larger than that, or ends early.
std::optional<Picture> ReadTga(std::string_view bytes);

// The textures of a compiled level (of the game, or of its offspring with palettes of their own)
// and of a WAD3; those that are cut off or have no possible size are left out, and what comes
// behind 64 million pixels. Nothing for any
// other file. What stands for a hole, index 255 where the name begins with "{", is transparent.
std::optional<std::vector<NamedPicture>> ReadTexturesOfGames(std::string_view bytes);

}  // namespace ferrowand
