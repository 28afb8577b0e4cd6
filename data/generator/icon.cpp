#include "icon.h"

#include <algorithm>
#include <cmath>

namespace ferrowand::generator {
namespace {

constexpr double UNITS = 48;
constexpr int SAMPLES = 4;  // each way, in a pixel

void Put(std::vector<std::uint8_t>& out, unsigned long value, int bytes) {
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

// Six steps a channel: the 216 colours that every system of 256 colours can show.
std::uint8_t CubeIndex(const std::uint8_t* pixel) {
  const auto step = [](std::uint8_t value) { return (value + 25) / 51; };
  return static_cast<std::uint8_t>(step(pixel[2]) * 36 + step(pixel[1]) * 6 + step(pixel[0]));
}

void PutCube(std::vector<std::uint8_t>& out) {
  for (int i = 0; i < 256; ++i) {
    const int colour = i < 216 ? i : 0;
    Put(out, static_cast<unsigned long>(colour % 6 * 51), 1);
    Put(out, static_cast<unsigned long>(colour / 6 % 6 * 51), 1);
    Put(out, static_cast<unsigned long>(colour / 36 * 51), 1);
    Put(out, 0, 1);
  }
}

// Rows from the bottom, each on a multiple of four bytes; then a mask, one bit a pixel, set where
// the picture is seen through.
std::vector<std::uint8_t> EncodeImage(const Picture& picture, int bits) {
  const int size = picture.Size();
  const std::vector<std::uint8_t> pixels = picture.Pixels();
  const int maskRow = (size + 31) / 32 * 4;
  std::vector<std::uint8_t> out;
  Put(out, 40, 4);
  Put(out, static_cast<unsigned long>(size), 4);
  Put(out, static_cast<unsigned long>(size) * 2, 4);  // the mask counts too
  Put(out, 1, 2);
  Put(out, static_cast<unsigned long>(bits), 2);
  Put(out, 0, 4);
  Put(out, static_cast<unsigned long>(size * size * bits / 8 + maskRow * size), 4);
  out.insert(out.end(), 16, 0);
  if (bits == 8) PutCube(out);
  for (int y = size - 1; y >= 0; --y) {
    for (int x = 0; x < size; ++x) {
      const std::uint8_t* pixel = &pixels[static_cast<std::size_t>(y * size + x) * 4];
      if (bits == 8) {
        out.push_back(pixel[3] < 128 ? 0 : CubeIndex(pixel));
      } else {
        out.insert(out.end(), pixel, pixel + 4);
      }
    }
  }
  for (int y = size - 1; y >= 0; --y) {
    std::vector<std::uint8_t> row(static_cast<std::size_t>(maskRow));
    for (int x = 0; x < size; ++x) {
      const bool through = pixels[static_cast<std::size_t>(y * size + x) * 4 + 3] < 128;
      if (through) row[static_cast<std::size_t>(x / 8)] |= static_cast<std::uint8_t>(0x80 >> x % 8);
    }
    out.insert(out.end(), row.begin(), row.end());
  }
  return out;
}

bool IsInside(const std::vector<Point>& corners, double x, double y) {
  bool inside = false;
  for (std::size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
    const Point &a = corners[i], &b = corners[j];
    if ((a.y > y) != (b.y > y) && x < (b.x - a.x) * (y - a.y) / (b.y - a.y) + a.x) inside = !inside;
  }
  return inside;
}

}  // namespace

Picture::Picture(int size) : size_(size), texels_(static_cast<std::size_t>(size) * size) {}

template <typename Inside>
void Picture::Fill(Inside inside, const Paint& paint, double gloss) {
  const double unit = UNITS / size_;
  for (int y = 0; y < size_; ++y) {
    for (int x = 0; x < size_; ++x) {
      int hits = 0;
      for (int sample = 0; sample < SAMPLES * SAMPLES; ++sample) {
        const double u = (x + (sample % SAMPLES + 0.5) / SAMPLES) * unit;
        const double v = (y + (sample / SAMPLES + 0.5) / SAMPLES) * unit;
        hits += inside(u, v) ? 1 : 0;
      }
      if (hits == 0) continue;
      const double cover = static_cast<double>(hits) / (SAMPLES * SAMPLES);
      const double light = 1 + gloss * (1 - (x + y + 1.0) / size_);
      Texel& texel = texels_[static_cast<std::size_t>(y * size_ + x)];
      const double whole = cover + texel.cover * (1 - cover);
      const auto blend = [&](double over, double under) {
        return (std::min(255.0, over * light) * cover + under * texel.cover * (1 - cover)) / whole;
      };
      texel = {{blend(paint.red, texel.paint.red), blend(paint.green, texel.paint.green),
                blend(paint.blue, texel.paint.blue)},
               whole};
    }
  }
}

void Picture::Polygon(const std::vector<Point>& corners, const Paint& paint, double gloss) {
  Fill([&](double x, double y) { return IsInside(corners, x, y); }, paint, gloss);
}

void Picture::Disc(Point centre, double radius, const Paint& paint, double gloss) {
  Fill(
      [&](double x, double y) {
        return (x - centre.x) * (x - centre.x) + (y - centre.y) * (y - centre.y) < radius * radius;
      },
      paint, gloss);
}

std::vector<std::uint8_t> Picture::Pixels() const {
  std::vector<std::uint8_t> out;
  for (const Texel& texel : texels_) {
    for (const double value :
         {texel.paint.blue, texel.paint.green, texel.paint.red, texel.cover * 255}) {
      out.push_back(static_cast<std::uint8_t>(std::clamp(value + 0.5, 0.0, 255.0)));
    }
  }
  return out;
}

std::vector<std::uint8_t> EncodeIcon(const std::vector<Picture>& pictures) {
  std::vector<std::uint8_t> directory, images;
  const std::size_t count = pictures.size() * 2;
  Put(directory, 0, 2);
  Put(directory, 1, 2);  // an icon, not a cursor
  Put(directory, count, 2);
  for (const int bits : {8, 32}) {
    for (const Picture& picture : pictures) {
      const std::vector<std::uint8_t> image = EncodeImage(picture, bits);
      Put(directory, static_cast<unsigned long>(picture.Size()), 1);
      Put(directory, static_cast<unsigned long>(picture.Size()), 1);
      Put(directory, 0, 2);  // 256 colours and above are written as none
      Put(directory, 1, 2);
      Put(directory, static_cast<unsigned long>(bits), 2);
      Put(directory, image.size(), 4);
      Put(directory, 6 + count * 16 + images.size(), 4);
      images.insert(images.end(), image.begin(), image.end());
    }
  }
  directory.insert(directory.end(), images.begin(), images.end());
  return directory;
}

}  // namespace ferrowand::generator
