// A picture as a texture of the game: its colours, its size, its holes.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "gamedata/picture.h"
#include "gamedata/wad_file.h"

namespace ferrowand {

class Palette;

// What is done with a picture whose sides are no multiples of 16.
enum class PictureFit : std::uint8_t {
  Crop,  // at the right and below
  Pad,   // there, with its own outermost pixels
  Scale  // to the nearest such size
};

struct ImportRules {
  PictureFit fit = PictureFit::Scale;
  // Whether colours may become those of 224 to 255, which no shadow of the game darkens.
  bool takesFullbrights = false;
};

// What the picture's size becomes under the rules and that name; a sky is 256 x 128.
struct TextureSize {
  std::uint16_t width = 0, height = 0;
};
TextureSize ImportedSize(const Picture& picture, std::string_view name, PictureFit fit);

// For WadFile::AddTexture; at most 15 bytes of the name are taken. A picture in the game's palette
// keeps its indices, others get the nearest colours of the palette without gamma. Where the name
// begins with "{", and only there, pixels of less than half alpha become 255, and others never do;
// in the left half of a sky they become 0.
std::unique_ptr<Texture> MakeTexture(const Picture& picture, std::string_view name,
                                     const ImportRules& rules, const Palette& palette);

}  // namespace ferrowand
