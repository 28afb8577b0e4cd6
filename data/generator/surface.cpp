#include "surface.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "gamedata/palette.h"

namespace ferrowand::generator {

Rgb operator*(const Rgb& colour, double factor) {
  return {colour.red * factor, colour.green * factor, colour.blue * factor};
}

Rgb Mix(const Rgb& from, const Rgb& to, double amount) {
  return {from.red + (to.red - from.red) * amount, from.green + (to.green - from.green) * amount,
          from.blue + (to.blue - from.blue) * amount};
}

double Hash(int x, int y, unsigned seed) {
  std::uint32_t h = static_cast<std::uint32_t>(x) * 0x9E3779B1u ^
                    static_cast<std::uint32_t>(y) * 0x85EBCA77u ^ seed * 0xC2B2AE3Du;
  h = (h ^ (h >> 15)) * 0x2C1B3C6Du;
  h = (h ^ (h >> 12)) * 0x297A2D39u;
  return (h ^ (h >> 15)) / 4294967296.0;
}

double Clamp01(double value) {
  return std::clamp(value, 0.0, 1.0);
}

double Smooth(double from, double to, double value) {
  const double t = Clamp01((value - from) / (to - from));
  return t * t * (3 - 2 * t);
}

double Wave(double turns) {
  const double t = (turns - std::floor(turns)) * 2;  // 0 .. 2, half a wave each
  return t < 1 ? 4 * t * (1 - t) : -4 * (t - 1) * (2 - t);
}

Surface::Surface(int width, int height, const Rgb& base)
    : width_(width),
      height_(height),
      colours_(static_cast<std::size_t>(width) * height, base),
      levels_(colours_.size(), 0.0) {}

std::size_t Surface::Index(int x, int y) const {
  x = (x % width_ + width_) % width_;
  y = (y % height_ + height_) % height_;
  return static_cast<std::size_t>(y) * width_ + x;
}

double Surface::Noise(double x, double y, int cellx, int celly, unsigned seed) const {
  const int columns = std::max(1, width_ / cellx);
  const int rows = std::max(1, height_ / celly);
  const double u = x * columns / width_, v = y * rows / height_;
  const int iu = static_cast<int>(std::floor(u)), iv = static_cast<int>(std::floor(v));
  const double fu = Smooth(0, 1, u - iu), fv = Smooth(0, 1, v - iv);
  const auto corner = [&](int du, int dv) {
    return Hash(((iu + du) % columns + columns) % columns, ((iv + dv) % rows + rows) % rows, seed);
  };
  const double top = corner(0, 0) + (corner(1, 0) - corner(0, 0)) * fu;
  const double bottom = corner(0, 1) + (corner(1, 1) - corner(0, 1)) * fu;
  return top + (bottom - top) * fv;
}

double Surface::Cloud(double x, double y, int cell, unsigned seed) const {
  double sum = 0, weight = 0.5;
  for (unsigned octave = 0; octave < 4; ++octave, weight /= 2, cell = std::max(1, cell / 2)) {
    sum += weight * Noise(x, y, cell, cell, seed + octave * 101);
  }
  return sum / 0.9375;
}

Surface& Surface::Grain(int cellx, int celly, double amount, double relief, unsigned seed) {
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) {
      const double noise = Noise(x, y, cellx, celly, seed) * 2 - 1;
      Colour(x, y) = Colour(x, y) * (1 + amount * noise);
      Level(x, y) += relief * noise;
    }
  }
  return *this;
}

Surface& Surface::Stain(const Rgb& colour, int cell, double threshold, double amount,
                        unsigned seed) {
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) {
      const double cover = Smooth(threshold, threshold + 0.18, Cloud(x, y, cell, seed));
      Colour(x, y) = Mix(Colour(x, y), colour, cover * amount);
    }
  }
  return *this;
}

Surface& Surface::Block(int x, int y, int width, int height, double lift, double bevel) {
  for (int dy = 0; dy < height; ++dy) {
    for (int dx = 0; dx < width; ++dx) {
      const int edge = std::min({dx + 1, dy + 1, width - dx, height - dy});
      Level(x + dx, y + dy) += lift * std::min(1.0, edge / bevel);
    }
  }
  return *this;
}

Surface& Surface::Tint(int x, int y, int width, int height, const Rgb& colour, double amount) {
  for (int dy = 0; dy < height; ++dy) {
    for (int dx = 0; dx < width; ++dx) {
      Colour(x + dx, y + dy) = Mix(Colour(x + dx, y + dy), colour, amount);
    }
  }
  return *this;
}

Surface& Surface::Rivet(double x, double y, double radius, double lift) {
  const int reach = static_cast<int>(radius) + 1;
  for (int dy = -reach; dy <= reach; ++dy) {
    for (int dx = -reach; dx <= reach; ++dx) {
      const int px = static_cast<int>(x) + dx, py = static_cast<int>(y) + dy;
      const double ex = px + 0.5 - x, ey = py + 0.5 - y;
      const double rest = 1 - (ex * ex + ey * ey) / (radius * radius);
      if (rest > 0) Level(px, py) += lift * std::sqrt(rest);
    }
  }
  return *this;
}

Surface& Surface::Disc(double x, double y, double radius, const Rgb& colour, double amount) {
  const int reach = static_cast<int>(radius) + 1;
  for (int dy = -reach; dy <= reach; ++dy) {
    for (int dx = -reach; dx <= reach; ++dx) {
      const int px = static_cast<int>(x) + dx, py = static_cast<int>(y) + dy;
      const double ex = px + 0.5 - x, ey = py + 0.5 - y;
      const double cover = Clamp01(radius + 0.5 - std::sqrt(ex * ex + ey * ey));
      Colour(px, py) = Mix(Colour(px, py), colour, cover * amount);
    }
  }
  return *this;
}

Surface& Surface::Tube(bool vertical, int from, int size, double lift) {
  const int length = vertical ? height_ : width_;
  for (int across = 0; across < size; ++across) {
    const double t = (across + 0.5) / size * 2 - 1;
    const double rise = lift * std::sqrt(1 - t * t);
    for (int along = 0; along < length; ++along) {
      (vertical ? Level(from + across, along) : Level(along, from + across)) += rise;
    }
  }
  return *this;
}

Surface& Surface::Scratches(int count, unsigned seed) {
  for (int i = 0; i < count; ++i) {
    const int x = static_cast<int>(Hash(i, 0, seed) * width_);
    const int y = static_cast<int>(Hash(i, 1, seed) * height_);
    const int length = 4 + static_cast<int>(Hash(i, 2, seed) * width_ / 5);
    const int slope = static_cast<int>(Hash(i, 3, seed) * 5) - 2;
    for (int step = 0; step < length; ++step) {
      const int py = y + step * slope / 4;
      Colour(x + step, py) = Colour(x + step, py) * 1.18;
      Colour(x + step, py - 1) = Colour(x + step, py - 1) * 0.86;
    }
  }
  return *this;
}

Surface& Surface::Shade(double strength) {
  std::vector<Rgb> lit(colours_.size());
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) {
      const double slope = Level(x + 1, y + 1) - Level(x - 1, y - 1);
      lit[Index(x, y)] = Colour(x, y) * std::clamp(1 + strength * slope, 0.25, 1.9);
    }
  }
  colours_ = std::move(lit);
  return *this;
}

Surface& Surface::Grime(double amount, unsigned seed) {
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) {
      const double streak = Noise(x, y, 3, height_ / 2, seed);
      const double depth = static_cast<double>(y) / height_;
      Colour(x, y) = Colour(x, y) * (1 - amount * Smooth(0.45, 0.95, streak * 0.7 + depth * 0.4));
    }
  }
  return *this;
}

Image Surface::Finish(const std::string& name, const Palette& palette, Ramps ramps) const {
  static constexpr int PATTERN[4][4] = {
      {0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
  Image image{name, width_, height_, std::vector<std::uint8_t>(colours_.size())};
  for (std::size_t i = 0; i < colours_.size(); ++i) {
    const std::size_t x = i % width_, y = i / width_;
    const double shift = (PATTERN[y & 3][x & 3] - 7.5) * 0.5;
    double best = std::numeric_limits<double>::max();
    for (unsigned index = 0; index < 255; ++index) {
      if (!(ramps >> (index / 16) & 1)) continue;
      const PaletteEntry& entry = palette[static_cast<std::uint8_t>(index)];
      const double red = colours_[i].red + shift - entry.red;
      const double green = colours_[i].green + shift - entry.green;
      const double blue = colours_[i].blue + shift - entry.blue;
      const double distance = 2 * red * red + 3 * green * green + blue * blue;
      if (distance < best) {
        best = distance;
        image.pixels[i] = static_cast<std::uint8_t>(index);
      }
    }
  }
  return image;
}

}  // namespace ferrowand::generator
