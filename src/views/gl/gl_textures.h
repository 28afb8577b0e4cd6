// The textures of one OpenGL context. Whoever calls has made that current.
#pragma once

#include <cstddef>
#include <unordered_map>

#include "platform/colour.h"
#include "views/gl/gl.h"

namespace ferrowand {

class Palette;
struct Texture;

class GlTextures {
 public:
  explicit GlTextures(const Palette& palette) : palette_(palette) {}

  // Takes the texture's pixels from its WAD when it is first asked for: palette indices where the
  // driver takes the image as it is, an image in red, green and blue, made smaller, otherwise.
  void Bind(Texture& texture);
  // One texel of that colour: what is drawn with it is of that colour, whatever its own is.
  void BindColour(Colour colour);
  // They and the palette are asked for anew.
  void DropAll();
  std::size_t Count() const { return ids_.size() + colours_.size(); }

 private:
  void LoadPalette();
  GLsizei LargestSide();
  bool UploadIndices(Texture& texture);
  void UploadReduced(Texture& texture);

  const Palette& palette_;
  bool hasPalette_ = false;
  GLint largestSide_ = 0;  // 0 until it is known
  std::unordered_map<const Texture*, GLuint> ids_;
  std::unordered_map<unsigned, GLuint> colours_;
};

}  // namespace ferrowand
