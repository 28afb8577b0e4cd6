// Where a camera draws with OpenGL: the system's window, or a picture in memory.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/pixel.h"

namespace ferrowand {

class GlContext {
 public:
  virtual ~GlContext() = default;

  // False when there is none to draw with.
  virtual bool MakeCurrent() = 0;
};

// What has been drawn in the current context, not yet presented: blue, green, red and a byte of no
// meaning for each pixel, the lowest row first.
void ReadPicture(PixelSize size, std::vector<std::uint8_t>& pixels);

}  // namespace ferrowand
