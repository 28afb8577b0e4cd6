#include <algorithm>
#include <cstdlib>

#include "textures.h"

namespace ferrowand::generator {
namespace {

constexpr Rgb IRON{84, 84, 90}, DARK_IRON{52, 52, 58}, RUSTED{78, 52, 34}, GREEN_IRON{66, 80, 68},
    BRONZE{98, 78, 50}, HAZARD{176, 150, 20}, BLACK{14, 12, 12};

Surface Sheet(int width, int height, const Rgb& base, unsigned seed) {
  Surface s(width, height, base);
  s.Grain(24, 24, 0.1, 0, seed).Grain(6, 6, 0.06, 0.1, seed + 1).Grain(1, 3, 0.05, 0, seed + 2);
  s.Scratches(width * height / 500, seed + 3);
  return s;
}

void RivetCorners(Surface& s, int x, int y, int width, int height, double radius) {
  for (const int cy : {y, y + height}) {
    for (const int cx : {x, x + width}) s.Rivet(cx, cy, radius, 2.4);
  }
}

Image Plate(const char* name, const Palette& palette, int width, int height, int plate,
            const Rgb& base, double rust, Ramps ramps, unsigned seed) {
  Surface s = Sheet(width, height, base, seed);
  for (int y = 0; y < height; y += plate) {
    for (int x = 0; x < width; x += plate) {
      s.Tint(x, y, plate, plate, base * (0.85 + 0.3 * Hash(x, y, seed)), 0.5);
      s.Block(x + 1, y + 1, plate - 2, plate - 2, 2, 1.5);
      RivetCorners(s, x + 5, y + 5, plate - 10, plate - 10, 2.2);
    }
  }
  s.Stain(RUSTED, 32, 0.6 - 0.12 * rust, 0.8 * rust, seed + 6)
      .Stain(RUSTED * 0.7, 12, 0.66 - 0.1 * rust, 0.7 * rust, seed + 8)
      .Grime(0.3, seed + 7)
      .Shade(0.2);
  return s.Finish(name, palette, ramps);
}

Image Ribbed(const char* name, const Palette& palette, int width, int height, int rib,
             const Rgb& base, Ramps ramps, unsigned seed) {
  Surface s = Sheet(width, height, base, seed);
  for (int x = 0; x < width; x += rib) s.Tube(true, x + 1, rib - 2, rib * 0.35);
  s.Shade(0.22);  // no grime: ribs and pipes run on from one patch to the next
  return s.Finish(name, palette, ramps);
}

Image Tread(const char* name, const Palette& palette) {
  Surface s = Sheet(64, 64, IRON * 0.85, 210);
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) {
      const bool falling = (x / 8 + y / 8) % 2 == 0;
      const int across = falling ? x % 8 - y % 8 : x % 8 + y % 8 - 7;
      const int along = falling ? x % 8 + y % 8 - 7 : x % 8 - y % 8;
      if (std::abs(across) <= 1 && std::abs(along) <= 5) s.Level(x, y) += 1.6;
    }
  }
  s.Stain(RUSTED, 20, 0.6, 0.5, 215).Shade(0.22);
  return s.Finish(name, palette, GREY | STEEL | BROWN);
}

Image Grate(const char* name, const Palette& palette) {
  Surface s(32, 32, BLACK);
  for (int along = 0; along < 32; along += 8) {
    s.Tint(along, 0, 3, 32, IRON * 0.9).Tint(0, along, 32, 3, IRON);
    s.Block(along, 0, 3, 32, 2, 1).Block(0, along, 32, 3, 2.4, 1);
  }
  s.Grain(4, 4, 0.14, 0, 221).Shade(0.2);
  return s.Finish(name, palette, GREY | STEEL);
}

Image Beam(const char* name, const Palette& palette) {
  Surface s = Sheet(32, 128, RUSTED * 1.1, 231);
  s.Block(0, 0, 6, 128, 3, 2).Block(26, 0, 6, 128, 3, 2);
  s.Tint(6, 0, 20, 128, RUSTED * 0.55, 0.6);
  for (int y = 8; y < 128; y += 16) s.Rivet(3, y, 1.8, 2).Rivet(29, y, 1.8, 2);
  for (int y = 0; y < 128; y += 32) s.Block(8, y + 5, 16, 22, -2.2, 2);
  s.Grime(0.3, 233).Shade(0.2);
  return s.Finish(name, palette, BROWN | SAND);
}

Image Stripes(const char* name, const Palette& palette) {
  Surface s(64, 32, HAZARD);
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 64; ++x) {
      if ((x + y) / 16 % 2 != 0) s.Colour(x, y) = BLACK * 1.6;
    }
  }
  s.Tint(0, 0, 64, 3, DARK_IRON).Tint(0, 29, 64, 3, DARK_IRON);
  s.Block(0, 0, 64, 3, 1.6, 1).Block(0, 29, 64, 3, 1.6, 1);
  s.Grain(6, 6, 0.16, 0.2, 241).Stain(DARK_IRON, 16, 0.6, 0.8, 242).Scratches(10, 243).Shade(0.18);
  return s.Finish(name, palette, GREY | YELLOW | BROWN);
}

Image Trim(const char* name, const Palette& palette, const Rgb& base, Ramps ramps, unsigned seed) {
  Surface s = Sheet(64, 16, base, seed);
  s.Block(0, 0, 64, 16, 2, 2).Block(0, 4, 64, 8, -1.6, 1.5);
  for (int x = 8; x < 64; x += 16) s.Rivet(x, 8, 2.4, 2.4);
  s.Shade(0.2);
  return s.Finish(name, palette, ramps);
}

Image Vent(const char* name, const Palette& palette) {
  Surface s = Sheet(64, 48, IRON * 0.9, 251);
  s.Block(1, 1, 62, 46, 2, 2).Block(6, 6, 52, 36, -2, 1.5).Tint(7, 7, 50, 34, BLACK, 0.8);
  for (int y = 8; y < 40; y += 6) s.Tint(8, y, 48, 3, IRON * 1.05).Block(8, y, 48, 4, 3, 2);
  RivetCorners(s, 4, 4, 56, 40, 1.8);
  s.Grime(0.25, 252).Shade(0.18);
  return s.Finish(name, palette, GREY | STEEL);
}

Image Pipes(const char* name, const Palette& palette) {
  Surface s = Sheet(64, 64, DARK_IRON, 261);
  static constexpr Rgb COLOURS[] = {BRONZE, IRON, RUSTED, IRON};
  for (int pipe = 0; pipe < 4; ++pipe) {
    s.Tint(pipe * 16 + 2, 0, 12, 64, COLOURS[pipe], 0.9).Tube(true, pipe * 16 + 2, 12, 5);
    const int ring = 10 + static_cast<int>(Hash(pipe, 0, 262) * 40);
    s.Tint(pipe * 16 + 1, ring, 14, 6, COLOURS[pipe] * 1.15)
        .Block(pipe * 16 + 1, ring, 14, 6, 2, 1);
  }
  s.Grain(3, 6, 0.1, 0, 263).Grime(0.3, 264).Shade(0.17);
  return s.Finish(name, palette, GREY | STEEL | BROWN | SAND);
}

// Two leaves that meet in the middle, with a window slit in each.
Image Gate(const char* name, const Palette& palette) {
  Surface s = Sheet(128, 128, GREEN_IRON, 271);
  for (int leaf = 0; leaf < 2; ++leaf) {
    const int x = leaf * 64;
    s.Block(x + 1, 1, 62, 126, 2.4, 2);
    s.Block(x + 8, 10, 48, 46, -2, 2).Block(x + 8, 72, 48, 46, -2, 2);
    s.Tint(x + 10, 12, 44, 42, GREEN_IRON * 0.75, 0.7)
        .Tint(x + 10, 74, 44, 42, GREEN_IRON * 0.75, 0.7);
    s.Tint(x + 16, 24, 32, 10, BLACK).Block(x + 14, 22, 36, 14, -2, 2);
    s.Tint(x + 2, 60, 60, 8, HAZARD, 0.75);
    for (int stripe = 0; stripe < 60; ++stripe) {
      for (int y = 60; y < 68; ++y) {
        if ((stripe + y) / 6 % 2 != 0) s.Colour(x + 2 + stripe, y) = BLACK * 1.7;
      }
    }
    RivetCorners(s, x + 5, 5, 54, 118, 2.2);
  }
  s.Tint(63, 0, 2, 128, BLACK).Grime(0.35, 273).Shade(0.18);
  return s.Finish(name, palette, GREY | MOSS | YELLOW | BROWN);
}

Image IronDoor(const char* name, const Palette& palette) {
  Surface s = Sheet(64, 128, IRON * 0.8, 281);
  s.Stain(RUSTED, 24, 0.52, 0.6, 282).Block(1, 1, 62, 126, 2, 2);
  for (int y = 6; y < 128; y += 40) {
    s.Tint(2, y, 60, 10, DARK_IRON, 0.8).Block(2, y, 60, 10, 2.2, 2);
    for (int x = 8; x < 64; x += 12) s.Rivet(x, y + 5, 2.2, 2.2);
  }
  s.Disc(50, 70, 6, BLACK * 1.4).Rivet(50, 70, 7, 3).Disc(50, 70, 3, BLACK);
  s.Grime(0.35, 283).Shade(0.2);
  return s.Finish(name, palette, GREY | STEEL | BROWN | SAND);
}

}  // namespace

std::vector<Image> MakeMetal(const Palette& p) {
  std::vector<Image> images;
  images.push_back(Plate("metal_plate", p, 64, 64, 64, IRON, 0, GREY | STEEL, 201));
  images.push_back(Plate("metal_rivet", p, 64, 64, 32, IRON * 0.9, 0.3, GREY | STEEL | SAND, 202));
  images.push_back(Plate("metal_rust", p, 128, 128, 64, IRON * 0.8, 0.9, GREY | BROWN | SAND, 203));
  images.push_back(Plate("metal_green", p, 64, 64, 64, GREEN_IRON, 0.2, MOSS | GREY | BROWN, 204));
  images.push_back(Plate("metal_bronze", p, 48, 64, 16, BRONZE, 0, SAND | BROWN, 205));
  images.push_back(
      Plate("metal_panel", p, 96, 96, 48, {66, 68, 80}, 0.2, STEEL | GREY | SAND, 206));
  images.push_back(Ribbed("metal_rib", p, 64, 64, 16, IRON * 0.9, GREY | STEEL, 207));
  images.push_back(Ribbed("metal_pipe", p, 80, 64, 40, RUSTED * 1.15, BROWN | GREY, 208));
  images.push_back(Tread("metal_tread", p));
  images.push_back(Grate("metal_grate", p));
  images.push_back(Beam("metal_beam", p));
  images.push_back(Stripes("metal_stripes", p));
  images.push_back(Trim("trim_iron", p, IRON, GREY | STEEL, 245));
  images.push_back(Trim("trim_bronze", p, BRONZE, SAND | BROWN, 246));
  images.push_back(Vent("metal_vent", p));
  images.push_back(Pipes("metal_pipes", p));
  images.push_back(Gate("door_gate", p));
  images.push_back(IronDoor("door_iron", p));
  return images;
}

}  // namespace ferrowand::generator
