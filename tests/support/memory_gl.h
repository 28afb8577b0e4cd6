// OpenGL that draws in memory, for tests and benchmarks of what draws with it.
#pragma once

#include <GL/osmesa.h>

#include <cstdint>
#include <vector>

#include "platform/colour.h"
#include "views/gl/gl_context.h"

namespace ferrowand {

// Pictures of that size. All share one context: the library does not bear many after each other.
class MemoryGl : public GlContext {
 public:
  explicit MemoryGl(PixelSize size)
      : size_(size),
        pixels_(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height)) {}

  bool MakeCurrent() override {
    static const OSMesaContext CONTEXT = OSMesaCreateContextExt(OSMESA_BGRA, 24, 0, 0, nullptr);
    return OSMesaMakeCurrent(CONTEXT, pixels_.data(), GL_UNSIGNED_BYTE, size_.width,
                             size_.height) == GL_TRUE;
  }

  void TakePicture() { ReadPicture(size_, picture_); }
  // Of the last picture taken, at a pixel from the upper left corner.
  Colour At(int x, int y) const {
    const auto row = static_cast<std::size_t>(size_.height - 1 - y);
    const std::uint8_t* p =
        &picture_[4 * (row * static_cast<std::size_t>(size_.width) + static_cast<std::size_t>(x))];
    return {p[2], p[1], p[0]};
  }

 private:
  PixelSize size_;
  std::vector<std::uint32_t> pixels_;
  std::vector<std::uint8_t> picture_;
};

}  // namespace ferrowand
