#include "views/gl/gl_textures.h"

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

#include "gamedata/palette.h"
#include "gamedata/wad_file.h"

namespace ferrowand {
namespace {

constexpr GLint SMALLEST_LARGEST_SIDE = 64;  // that every driver takes
constexpr int PALETTE_SIZE = 256;

GLuint NewTexture() {
  GLuint id = 0;
  glGenTextures(1, &id);
  glBindTexture(GL_TEXTURE_2D, id);
  // One level is all that there is of a texture.
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  return id;
}

void LoadMap(GLenum map, const Palette& palette, std::uint8_t PaletteEntry::*part) {
  std::array<GLfloat, PALETTE_SIZE> values;
  for (int i = 0; i < PALETTE_SIZE; ++i) {
    values[static_cast<std::size_t>(i)] = palette[static_cast<std::uint8_t>(i)].*part / 255.0f;
  }
  glPixelMapfv(map, PALETTE_SIZE, values.data());
}

// The side of a texture that is made of one: a power of two, as the driver wants it.
GLsizei ReducedSide(unsigned side, GLsizei largest) {
  return std::min(static_cast<GLsizei>(std::bit_floor(side)), largest);
}

}  // namespace

void GlTextures::LoadPalette() {
  LoadMap(GL_PIXEL_MAP_I_TO_R, palette_, &PaletteEntry::red);
  LoadMap(GL_PIXEL_MAP_I_TO_G, palette_, &PaletteEntry::green);
  LoadMap(GL_PIXEL_MAP_I_TO_B, palette_, &PaletteEntry::blue);
  hasPalette_ = true;
}

GLsizei GlTextures::LargestSide() {
  if (largestSide_ == 0) {
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largestSide_);
    largestSide_ = std::max(largestSide_, SMALLEST_LARGEST_SIDE);
  }
  return largestSide_;
}

void GlTextures::Bind(Texture& texture) {
  const auto [found, isNew] = ids_.try_emplace(&texture);
  if (!isNew) return glBindTexture(GL_TEXTURE_2D, found->second);
  if (!hasPalette_) LoadPalette();
  found->second = NewTexture();
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  if (!UploadIndices(texture)) UploadReduced(texture);
}

// False for what the driver does not take: images that are too large or not of powers of two, and,
// of some drivers, indices.
bool GlTextures::UploadIndices(Texture& texture) {
  const auto pixels = texture.wad->Pixels(texture);
  const bool fits = std::has_single_bit(texture.paddedWidth) &&
                    std::has_single_bit(texture.paddedHeight) &&
                    std::max(texture.paddedWidth, texture.paddedHeight) <= LargestSide();
  if (!fits) return false;
  while (glGetError() != GL_NO_ERROR) {
  }
  glTexImage2D(GL_TEXTURE_2D, 0, 3, texture.paddedWidth, texture.paddedHeight, 0, GL_COLOR_INDEX,
               GL_UNSIGNED_BYTE, pixels.data());
  return glGetError() == GL_NO_ERROR;
}

void GlTextures::UploadReduced(Texture& texture) {
  const auto rgb = texture.wad->Rgb(texture);
  const GLsizei width = ReducedSide(texture.paddedWidth, LargestSide());
  const GLsizei height = ReducedSide(texture.paddedHeight, LargestSide());
  std::vector<std::uint8_t> reduced(std::size_t{3} * static_cast<std::size_t>(width) *
                                    static_cast<std::size_t>(height));
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  gluScaleImage(GL_RGB, texture.paddedWidth, texture.paddedHeight, GL_UNSIGNED_BYTE, rgb.data(),
                width, height, GL_UNSIGNED_BYTE, reduced.data());
  glTexImage2D(GL_TEXTURE_2D, 0, 3, width, height, 0, GL_RGB, GL_UNSIGNED_BYTE, reduced.data());
}

void GlTextures::BindColour(Colour colour) {
  const unsigned key = static_cast<unsigned>(colour.red) << 16 |
                       static_cast<unsigned>(colour.green) << 8 | colour.blue;
  const auto [found, isNew] = colours_.try_emplace(key);
  if (!isNew) return glBindTexture(GL_TEXTURE_2D, found->second);
  found->second = NewTexture();
  const std::array<std::uint8_t, 3> texel{colour.red, colour.green, colour.blue};
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glTexImage2D(GL_TEXTURE_2D, 0, 3, 1, 1, 0, GL_RGB, GL_UNSIGNED_BYTE, texel.data());
}

void GlTextures::DropAll() {
  for (const auto& [texture, id] : ids_) glDeleteTextures(1, &id);
  for (const auto& [colour, id] : colours_) glDeleteTextures(1, &id);
  ids_.clear();
  colours_.clear();
  hasPalette_ = false;
}

}  // namespace ferrowand
