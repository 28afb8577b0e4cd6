#include "shell/frame/tool_pictures.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/command_table.h"
#include "shell/resources/resource.h"
#include "shell/system/display_scale.h"
#include "shell/system/handles.h"

namespace ferrowand {
namespace {

constexpr int DRAWN = 16;  // width and height of a picture in the program's bitmap, pixels
constexpr int PICTURES = static_cast<int>(NUMTOOLBUTTONS);
constexpr std::uint32_t TRANSPARENT_COLOUR = 0xFF00FF, COLOURS = 0xFFFFFF;

// 0xAARRGGBB, rows from the top.
BITMAPINFO RowsOf(int width, int height) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  return info;
}

std::vector<std::uint32_t> PixelsOfStrip(HINSTANCE instance) {
  std::vector<std::uint32_t> pixels(std::size_t{DRAWN} * DRAWN * PICTURES, TRANSPARENT_COLOUR);
  const OwnedBitmap strip(static_cast<HBITMAP>(
      LoadImageA(instance, MAKEINTRESOURCEA(ID_TOOLBAR_BITMAP), IMAGE_BITMAP, 0, 0, 0)));
  const OwnedDc dc(CreateCompatibleDC(nullptr));
  BITMAPINFO info = RowsOf(DRAWN * PICTURES, DRAWN);
  GetDIBits(dc.get(), strip.get(), 0, DRAWN, pixels.data(), &info, DIB_RGB_COLORS);
  return pixels;
}

// What a pixel of a scaled picture covers of the drawn one. Both are measured in parts of which a
// drawn pixel has `size` and a scaled one DRAWN.
struct Covered {
  int first, last;  // drawn pixels
  int firstParts;   // the rest is the last one's
};

Covered CoveredBy(int at, int size) {
  const int from = at * DRAWN, to = from + DRAWN;
  const int first = from / size, last = (to - 1) / size;
  return {first, last, std::min(to, (first + 1) * size) - from};
}

// The middle of what it covers. What is transparent gives no colour, but lets through.
std::uint32_t ScaledPixel(const std::vector<std::uint32_t>& drawn, int left, Covered x, Covered y) {
  std::uint32_t sums[3]{}, opaque = 0;
  for (int row = y.first; row <= y.last; ++row) {
    for (int column = x.first; column <= x.last; ++column) {
      const auto at = static_cast<std::size_t>(left) + static_cast<std::size_t>(column);
      const std::uint32_t pixel =
          drawn[static_cast<std::size_t>(row) * DRAWN * PICTURES + at] & COLOURS;
      if (pixel == TRANSPARENT_COLOUR) continue;
      const int high = row == y.first ? y.firstParts : DRAWN - y.firstParts;
      const int wide = column == x.first ? x.firstParts : DRAWN - x.firstParts;
      const auto parts = static_cast<std::uint32_t>(high * wide);
      for (int i = 0; i < 3; ++i) sums[i] += parts * (pixel >> 8 * i & 0xFF);
      opaque += parts;
    }
  }
  if (opaque == 0) return 0;
  const std::uint32_t alpha = opaque * 0xFF / (DRAWN * DRAWN);
  return alpha << 24 | sums[2] / opaque << 16 | sums[1] / opaque << 8 | sums[0] / opaque;
}

// Without colour, and two thirds let through.
std::uint32_t Grey(std::uint32_t pixel) {
  const std::uint32_t red = pixel >> 16 & 0xFF, green = pixel >> 8 & 0xFF, blue = pixel & 0xFF;
  const std::uint32_t light = (3 * red + 6 * green + blue) / 10;
  return (pixel >> 24) / 3 << 24 | light << 16 | light << 8 | light;
}

OwnedBitmap ScaledStrip(const std::vector<std::uint32_t>& drawn, int size, bool isGrey) {
  const int width = size * PICTURES;
  const BITMAPINFO info = RowsOf(width, size);
  void* bits = nullptr;
  OwnedBitmap strip(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!strip) return nullptr;
  auto* pixel = static_cast<std::uint32_t*>(bits);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < width; ++x) {
      const int left = x / size * DRAWN;
      const std::uint32_t scaled =
          ScaledPixel(drawn, left, CoveredBy(x % size, size), CoveredBy(y, size));
      *pixel++ = isGrey ? Grey(scaled) : scaled;
    }
  }
  return strip;
}

}  // namespace

int ToolPictureSize() {
  return Scaled(DRAWN);
}

HIMAGELIST LoadToolPictures(HINSTANCE instance, bool isGrey) {
  const int size = ToolPictureSize();
  const OwnedBitmap strip = ScaledStrip(PixelsOfStrip(instance), size, isGrey);
  const HIMAGELIST pictures = ImageList_Create(size, size, ILC_COLOR32, PICTURES, 0);
  ImageList_Add(pictures, strip.get(), nullptr);
  return pictures;
}

}  // namespace ferrowand
