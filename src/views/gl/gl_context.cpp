#include "views/gl/gl_context.h"

#include "views/gl/gl.h"

namespace ferrowand {

void ReadPicture(PixelSize size, std::vector<std::uint8_t>& pixels) {
  pixels.resize(std::size_t{4} * static_cast<std::size_t>(size.width) *
                static_cast<std::size_t>(size.height));
  glPixelStorei(GL_PACK_ALIGNMENT, 4);
  glReadPixels(0, 0, size.width, size.height, GL_BGRA, GL_UNSIGNED_BYTE, pixels.data());
}

}  // namespace ferrowand
