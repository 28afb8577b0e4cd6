#include <cmath>

#include "textures.h"

namespace ferrowand::generator {
namespace {

constexpr Rgb OAK{100, 74, 48}, DARK_OAK{70, 48, 28}, PALE{134, 100, 62}, IRON{70, 70, 74},
    BLACK{14, 10, 8};

// Planks side by side, upright or lying, each with its own tone, grain and ends.
Surface Planks(int width, int height, int plank, bool upright, const Rgb& base, unsigned seed) {
  Surface s(width, height, base);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int across = upright ? x : y, along = upright ? y : x;
      const int number = across / plank, within = across % plank;
      const int length = upright ? height : width;
      const int end = static_cast<int>(Hash(number, 0, seed) * length);
      const double shift = Hash(number, 1, seed) * 64;
      const double sway =
          2 * s.Noise(upright ? x + shift : x, upright ? y : y + shift, 24, 24, seed + 1);
      const double u = across + sway + shift;
      const double rings =
          Wave(u / 5.0 + 0.4 * s.Noise(x, y, upright ? 3 : 32, upright ? 32 : 3, seed + 2));
      const double tone = 0.82 + 0.34 * Hash(number, 2, seed) + 0.09 * rings;
      const int toEnd = std::abs((along - end + length) % length);
      const bool gap = within == 0 || toEnd == 0;
      s.Colour(x, y) = gap ? base * 0.28 : base * tone;
      s.Level(x, y) = gap ? 0 : (within == 1 || within == plank - 1 ? 1.1 : 1.7) + 0.15 * rings;
      const bool nail = (toEnd == 3 || toEnd == length - 3) && (within == 3 || within == plank - 3);
      if (nail) s.Colour(x, y) = BLACK;
    }
  }
  s.Grain(upright ? 1 : 12, upright ? 12 : 1, 0.13, 0.12, seed + 3);
  return s;
}

void Frame(Surface& s, int border, const Rgb& colour) {
  const int w = s.Width(), h = s.Height();
  for (const int y : {0, h - border})
    s.Tint(0, y, w, border, colour, 0.85).Block(0, y, w, border, 2.6, 2);
  for (const int x : {0, w - border}) {
    s.Tint(x, border, border, h - 2 * border, colour, 0.85)
        .Block(x, border, border, h - 2 * border, 2.6, 2);
  }
}

Image Crate(const char* name, const Palette& palette, bool brace) {
  Surface s = Planks(64, 64, 16, false, OAK * 0.9, 311);
  Frame(s, 9, PALE * 0.8);
  for (int y = 9; brace && y < 55; ++y) {
    for (int x = 9; x < 55; ++x) {
      const int off = x - y;
      if (off > 5 || off < -5) continue;
      s.Colour(x, y) = Mix(s.Colour(x, y), PALE * 0.8, 0.85);
      s.Level(x, y) += off == 5 || off == -5 ? 1.2 : 2.4;
    }
  }
  for (const int y : {4, 60}) {
    for (const int x : {4, 60}) s.Rivet(x, y, 1.8, 2);
  }
  s.Grain(12, 1, 0.1, 0, 312).Grime(0.2, 313).Shade(0.19);
  return s.Finish(name, palette, BROWN | SAND | BRASS);
}

Image IronCrate(const char* name, const Palette& palette) {
  Surface s(64, 64, IRON);
  s.Grain(16, 16, 0.12, 0, 321).Grain(2, 2, 0.06, 0.1, 322);
  s.Block(8, 8, 48, 48, -2, 2).Tint(10, 10, 44, 44, IRON * 0.75, 0.6);
  s.Block(16, 16, 32, 32, 2, 2);
  for (const int y : {4, 60}) {
    for (int x = 4; x < 64; x += 14) s.Rivet(x, y, 1.8, 2).Rivet(y, x, 1.8, 2);
  }
  s.Stain({96, 56, 32}, 16, 0.6, 0.7, 323).Scratches(12, 324).Shade(0.2);
  return s.Finish(name, palette, GREY | STEEL | BROWN);
}

Image PlankDoor(const char* name, const Palette& palette) {
  Surface s = Planks(64, 128, 16, true, DARK_OAK * 1.15, 331);
  for (const int y : {14, 62, 106}) {
    s.Tint(0, y, 60, 9, IRON * 0.75, 0.9).Block(0, y, 60, 9, 2, 2);
    for (int x = 6; x < 60; x += 10) s.Rivet(x, y + 4.5, 2, 2.2);
  }
  s.Disc(54, 80, 4.5, IRON * 0.6).Disc(54, 80, 2.5, BLACK).Rivet(54, 80, 5, 2);
  s.Grime(0.35, 332).Shade(0.19);
  return s.Finish(name, palette, BROWN | SAND | GREY | RUST);
}

Image Beam(const char* name, const Palette& palette) {
  Surface s(32, 128, DARK_OAK);
  for (int y = 0; y < 128; ++y) {
    for (int x = 0; x < 32; ++x) {
      const double rings = Wave(x / 6.0 + s.Noise(x, y, 8, 40, 341));
      s.Colour(x, y) = DARK_OAK * (1 + 0.16 * rings);
      s.Level(x, y) += 0.3 * rings;
    }
  }
  s.Grain(1, 16, 0.16, 0.2, 342).Block(0, 0, 32, 128, 2.4, 2).Grime(0.25, 343).Shade(0.2);
  return s.Finish(name, palette, BROWN | SAND);
}

Image Shelf(const char* name, const Palette& palette) {
  Surface s(64, 64, BLACK);
  static constexpr Rgb BINDINGS[] = {
      {104, 44, 30}, {60, 70, 50}, {84, 76, 104}, {120, 92, 40}, {72, 50, 36}};
  for (int shelf = 0; shelf < 2; ++shelf) {
    const int floor = shelf * 32 + 28;
    for (int x = 3, book = 0; x < 60; ++book) {
      const int width = 3 + static_cast<int>(Hash(book, shelf, 351) * 4);
      const int height = 17 + static_cast<int>(Hash(book, shelf, 352) * 8);
      const Rgb binding = BINDINGS[static_cast<int>(Hash(book, shelf, 353) * 5)];
      s.Tint(x, floor - height, width, height, binding * (0.8 + 0.4 * Hash(book, shelf, 354)));
      s.Block(x, floor - height, width, height, 2, 1.5);
      s.Tint(x, floor - height + 4, width, 1, {170, 134, 60})
          .Tint(x, floor - 5, width, 1, {150, 118, 50});
      x += width + (Hash(book, shelf, 355) > 0.88 ? 3 : 0);
    }
    s.Tint(0, floor, 64, 4, OAK).Block(0, floor, 64, 4, 3, 2);
  }
  s.Tint(0, 0, 3, 64, OAK)
      .Tint(61, 0, 3, 64, OAK)
      .Block(0, 0, 3, 64, 2, 1)
      .Block(61, 0, 3, 64, 2, 1);
  s.Grain(2, 6, 0.14, 0, 356).Shade(0.17);
  return s.Finish(name, palette, BROWN | SAND | RUST | STEEL | MOSS | BRASS);
}

Image Banner(const char* name, const Palette& palette) {
  Surface s(64, 128, {120, 18, 14});
  for (int y = 0; y < 128; ++y) {
    for (int x = 0; x < 64; ++x)
      s.Colour(x, y) = s.Colour(x, y) * (1 + 0.28 * Wave(x / 21.3 + 0.1));
  }
  const Rgb gold{176, 136, 48};
  s.Tint(0, 6, 64, 3, gold)
      .Tint(0, 119, 64, 3, gold)
      .Tint(4, 9, 2, 110, gold)
      .Tint(58, 9, 2, 110, gold);
  // A hammer: head and handle, with rays above.
  s.Tint(29, 50, 6, 48, gold).Tint(16, 40, 32, 16, gold).Tint(18, 42, 28, 12, gold * 1.2);
  for (int ray = 0; ray < 5; ++ray) {
    for (int step = 0; step < 10; ++step) {
      s.Tint(31 + (ray - 2) * (6 + step) / 2, 34 - step - (ray == 2 ? 2 : 0), 2, 1, gold);
    }
  }
  s.Grain(1, 1, 0.1, 0, 361).Grain(3, 40, 0.12, 0, 362);
  return s.Finish(name, palette, RED | BRASS | RUST);
}

}  // namespace

std::vector<Image> MakeWood(const Palette& p) {
  std::vector<Image> images;
  images.push_back(Planks(64, 64, 16, true, OAK, 301)
                       .Grime(0.25, 1)
                       .Shade(0.2)
                       .Finish("wood_plank", p, BROWN | SAND));
  images.push_back(Planks(96, 96, 12, false, PALE * 0.85, 302)
                       .Shade(0.2)
                       .Finish("wood_floor", p, BROWN | SAND | BRASS));
  images.push_back(Planks(64, 64, 32, false, DARK_OAK, 303)
                       .Grime(0.25, 2)
                       .Shade(0.22)
                       .Finish("wood_dark", p, BROWN | SAND));
  images.push_back(Beam("wood_beam", p));
  images.push_back(Crate("crate_wood", p, true));
  images.push_back(Crate("crate_top", p, false));
  images.push_back(IronCrate("crate_iron", p));
  images.push_back(PlankDoor("door_wood", p));
  images.push_back(Shelf("bookshelf", p));
  images.push_back(Banner("banner_red", p));
  return images;
}

}  // namespace ferrowand::generator
