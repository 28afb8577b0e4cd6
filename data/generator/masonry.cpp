#include <algorithm>
#include <cmath>

#include "textures.h"

namespace ferrowand::generator {
namespace {

constexpr Rgb BROWN_STONE{92, 74, 48}, GREY_STONE{92, 90, 88}, BLUE_STONE{74, 76, 92},
    MOSS_GREEN{52, 68, 48}, SAND_STONE{128, 102, 84}, DAMP{36, 32, 26};

struct Course {
  int width, height;  // of one brick, joint included; both divide the texture, rows go in pairs
  double joint;       // texels
  double wear;        // 0 sharp edges .. 1 crumbling ones
  double variety;     // how far one brick's brightness strays from the next
};

void LayBricks(Surface& s, const Course& course, const Rgb& mortar, unsigned seed) {
  for (int y = 0; y < s.Height(); ++y) {
    const int row = y / course.height;
    for (int x = 0; x < s.Width(); ++x) {
      const int along = x + (row % 2) * course.width / 2;
      const int column = along % s.Width() / course.width;
      const int dx = along % course.width, dy = y % course.height;
      const double wear = course.wear * 3 * (s.Noise(x, y, 5, 5, seed + 7) - 0.4);
      const double edge =
          std::min({dx + 0.5, course.width - dx - 0.5, dy + 0.5, course.height - dy - 0.5}) -
          course.joint / 2 - std::max(0.0, wear);
      const double inside = Smooth(-0.7, 0.9, edge);
      const double own = 1 + course.variety * (Hash(column, row, seed) * 2 - 1);
      s.Colour(x, y) = Mix(mortar, s.Colour(x, y) * own, inside);
      s.Level(x, y) += 2.2 * Smooth(-0.8, 2.6, edge) * (0.9 + 0.2 * Hash(column, row, seed + 1));
    }
  }
}

// Stones of any shape: each texel belongs to the nearest of a jittered grid of centres.
void LayRubble(Surface& s, int cell, double joint, double variety, const Rgb& mortar,
               unsigned seed) {
  const int columns = s.Width() / cell, rows = s.Height() / cell;
  for (int y = 0; y < s.Height(); ++y) {
    for (int x = 0; x < s.Width(); ++x) {
      double nearest = 1e9, second = 1e9, tone = 0;
      for (int cy = y / cell - 2; cy <= y / cell + 2; ++cy) {
        for (int cx = x / cell - 2; cx <= x / cell + 2; ++cx) {
          const int hx = (cx + columns) % columns, hy = (cy + rows) % rows;
          const double ex = (cx + 0.15 + 0.7 * Hash(hx, hy, seed)) * cell - x;
          const double ey = (cy + 0.15 + 0.7 * Hash(hx, hy, seed + 1)) * cell - y;
          const double distance = std::sqrt(ex * ex + ey * ey);
          if (distance < nearest) {
            second = nearest;
            nearest = distance;
            tone = Hash(hx, hy, seed + 2);
          } else {
            second = std::min(second, distance);
          }
        }
      }
      const double edge = second - nearest - joint;
      s.Colour(x, y) =
          Mix(mortar, s.Colour(x, y) * (1 + variety * (tone * 2 - 1)), Smooth(-0.8, 1.2, edge));
      s.Level(x, y) += 3.2 * Smooth(-1, cell * 0.35, edge);
    }
  }
}

Surface Rock(int width, int height, const Rgb& base, double relief, double cracks, unsigned seed) {
  Surface s(width, height, base);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const double ridge = std::abs(s.Cloud(x, y, 32, seed) * 2 - 1);
      s.Level(x, y) =
          relief * s.Cloud(x, y, 24, seed + 40) * 2 - cracks * 2 * Smooth(0.07, 0, ridge);
      s.Colour(x, y) = base * (0.72 + 0.5 * s.Cloud(x, y, 40, seed + 80)) *
                       (1 - 0.4 * cracks * Smooth(0.07, 0, ridge));
    }
  }
  s.Grain(2, 2, 0.1, 0.25, seed + 3);
  return s;
}

Image BrickWall(const char* name, const Palette& palette, int width, int height, const Rgb& base,
                const Course& course, Ramps ramps, unsigned seed) {
  Surface s(width, height, base);
  s.Grain(16, 12, 0.12, 0.3, seed).Grain(2, 2, 0.11, 0.28, seed + 1);
  LayBricks(s, course, base * 0.42, seed);
  s.Grime(0.3, seed + 5).Shade(0.17);
  return s.Finish(name, palette, ramps);
}

Image Slabs(const char* name, const Palette& palette, int size, const Rgb& base, int slab,
            Ramps ramps, unsigned seed) {
  Surface s(size, size, base);
  s.Grain(12, 12, 0.13, 0.3, seed).Grain(2, 2, 0.09, 0.22, seed + 1);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      const int dx = x % slab, dy = y % slab;
      const double edge = std::min({dx, slab - 1 - dx, dy, slab - 1 - dy}) + 0.5;
      const double own = 0.88 + 0.24 * Hash(x / slab, y / slab, seed);
      s.Colour(x, y) = s.Colour(x, y) * own * (0.45 + 0.55 * Smooth(0, 1.6, edge));
      s.Level(x, y) += 1.8 * Smooth(0, 2.4, edge);
    }
  }
  s.Stain(base * 0.6, 32, 0.56, 0.5, seed + 9).Shade(0.18);
  return s.Finish(name, palette, ramps);
}

Image Block(const char* name, const Palette& palette, int width, int height, const Rgb& base,
            Ramps ramps, unsigned seed) {
  Surface s = Rock(width, height, base, 1.4, 0.15, seed);
  s.Block(1, 1, width - 2, height - 2, 3, 3).Shade(0.18);
  s.Grime(0.25, seed);
  return s.Finish(name, palette, ramps);
}

Image Trim(const char* name, const Palette& palette, int width, int height, const Rgb& base,
           Ramps ramps, unsigned seed) {
  Surface s(width, height, base);
  s.Grain(8, 8, 0.12, 0.2, seed).Grain(2, 2, 0.1, 0.2, seed + 1);
  s.Block(0, 1, width, height - 2, 2, 2);
  for (int x = 0; x < width; x += height) {
    s.Block(x + 3, 4, height - 6, height - 8, -2.2, 1.5);
    s.Tint(x + 4, 5, height - 8, height - 10, base * 0.6, 0.6);
    s.Rivet(x + height / 2.0, height / 2.0, height * 0.16, 2.2);
  }
  s.Shade(0.2);
  return s.Finish(name, palette, ramps);
}

Image Step(const char* name, const Palette& palette, const Rgb& base, Ramps ramps, unsigned seed) {
  Surface s(64, 16, base);
  s.Grain(10, 6, 0.12, 0.3, seed).Grain(2, 2, 0.09, 0.25, seed + 1);
  s.Block(0, 0, 64, 4, 2.5, 2).Tint(0, 5, 64, 2, base * 0.45, 0.7);
  for (int x = 0; x < 64; x += 32) s.Tint(x, 0, 1, 16, base * 0.5, 0.6);
  s.Shade(0.18);
  return s.Finish(name, palette, ramps);
}

Image Cobble(const char* name, const Palette& palette, int size, int cell, const Rgb& base,
             Ramps ramps, unsigned seed) {
  Surface s(size, size, base);
  s.Grain(3, 3, 0.1, 0.25, seed);
  LayRubble(s, cell, 2.2, 0.24, base * 0.36, seed);
  s.Shade(0.2);
  return s.Finish(name, palette, ramps);
}

Image MossyWall(const char* name, const Palette& palette) {
  Surface s(64, 64, GREY_STONE * 0.9);
  s.Grain(12, 12, 0.12, 0.3, 31).Grain(2, 2, 0.1, 0.25, 32);
  LayBricks(s, {32, 16, 1.6, 0.8, 0.14}, GREY_STONE * 0.36, 33);
  s.Stain(MOSS_GREEN, 24, 0.47, 0.85, 34).Grime(0.3, 35).Shade(0.18);
  return s.Finish(name, palette, GREY | MOSS | OLIVE);
}

Image Rubble(const char* name, const Palette& palette) {
  Surface s(128, 128, BROWN_STONE * 1.06);
  s.Grain(20, 20, 0.14, 0.4, 51).Grain(2, 2, 0.1, 0.3, 52);
  LayRubble(s, 32, 2.6, 0.22, DAMP, 53);
  s.Shade(0.17);
  return s.Finish(name, palette, BROWN | SAND | RUST);
}

Image RockFace(const char* name, const Palette& palette, const Rgb& base, Ramps ramps,
               unsigned seed) {
  return Rock(128, 128, base, 2.8, 0.9, seed).Shade(0.2).Finish(name, palette, ramps);
}

Image Ground(const char* name, const Palette& palette, const Rgb& base, const Rgb& patch,
             Ramps ramps, unsigned seed) {
  Surface s(64, 64, base);
  s.Grain(8, 8, 0.14, 0.5, seed).Grain(2, 2, 0.2, 0.5, seed + 1);
  s.Stain(patch, 20, 0.5, 0.7, seed + 2).Shade(0.22);
  return s.Finish(name, palette, ramps);
}

}  // namespace

std::vector<Image> MakeMasonry(const Palette& p) {
  std::vector<Image> images;
  const Course plain{32, 16, 1.6, 0.35, 0.13}, small{16, 8, 1.4, 0.25, 0.2},
      large{64, 32, 2, 0.5, 0.12};
  images.push_back(BrickWall("brick_brown", p, 64, 64, BROWN_STONE, plain, BROWN | SAND, 1));
  images.push_back(BrickWall("brick_grey", p, 64, 64, GREY_STONE, plain, GREY, 2));
  images.push_back(BrickWall("brick_blue", p, 64, 64, BLUE_STONE, plain, STEEL | GREY, 3));
  images.push_back(BrickWall("brick_red", p, 64, 64, {104, 50, 34}, small, RUST | SAND | BROWN, 4));
  images.push_back(BrickWall("brick_small", p, 48, 48, {110, 92, 66}, {24, 12, 1.4, 0.3, 0.18},
                             BROWN | SAND, 5));
  images.push_back(BrickWall("brick_large", p, 128, 128, GREY_STONE * 0.92, large, GREY | SAND, 6));
  images.push_back(BrickWall("brick_city", p, 128, 64, {96, 72, 58}, {32, 16, 1.6, 0.4, 0.2},
                             SAND | BROWN | RUST, 7));
  images.push_back(MossyWall("brick_moss", p));
  images.push_back(Slabs("floor_stone", p, 64, GREY_STONE * 0.85, 32, GREY | SAND, 11));
  images.push_back(Slabs("floor_flag", p, 96, SAND_STONE * 0.75, 48, SAND | BROWN, 12));
  images.push_back(Slabs("floor_blue", p, 64, BLUE_STONE * 0.8, 64, STEEL | GREY, 13));
  images.push_back(Slabs("ceiling_stone", p, 128, BROWN_STONE * 0.7, 64, BROWN | SAND, 14));
  images.push_back(Cobble("cobble", p, 64, 16, GREY_STONE * 0.9, GREY | STEEL, 21));
  images.push_back(Rubble("rubble", p));
  images.push_back(Block("block_brown", p, 64, 64, BROWN_STONE, BROWN | SAND, 61));
  images.push_back(Block("block_grey", p, 64, 64, GREY_STONE, GREY, 62));
  images.push_back(Block("block_tall", p, 48, 64, SAND_STONE * 0.9, SAND | BROWN, 63));
  images.push_back(Block("column_stone", p, 32, 128, SAND_STONE * 0.95, SAND | BROWN, 64));
  images.push_back(Trim("trim_stone", p, 64, 16, SAND_STONE * 0.9, SAND | BROWN, 71));
  images.push_back(Trim("trim_blue", p, 96, 32, BLUE_STONE, STEEL | GREY, 72));
  images.push_back(Step("step_stone", p, GREY_STONE * 0.95, GREY | SAND, 81));
  images.push_back(RockFace("rock_brown", p, BROWN_STONE * 0.95, BROWN | SAND, 91));
  images.push_back(RockFace("rock_grey", p, GREY_STONE * 0.85, GREY | STEEL, 92));
  images.push_back(Ground("ground_dirt", p, {74, 56, 34}, {50, 38, 24}, BROWN, 95));
  images.push_back(Ground("ground_grass", p, {50, 52, 14}, {56, 46, 26}, OLIVE | BROWN, 96));
  return images;
}

}  // namespace ferrowand::generator
