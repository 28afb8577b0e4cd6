#include <cmath>

#include "textures.h"

namespace ferrowand::generator {
namespace {

constexpr Rgb PANEL{76, 78, 84}, DARK{36, 36, 42}, BLACK{10, 10, 12}, COPPER{120, 74, 40},
    TEAL{56, 76, 72}, WHITE_LIGHT{255, 255, 255}, AMBER{247, 200, 120}, COLD{171, 231, 255},
    RED_LIGHT{255, 0, 0}, OFF_LIGHT{70, 62, 50};

Surface Casing(int width, int height, const Rgb& base, unsigned seed) {
  Surface s(width, height, base);
  s.Grain(20, 20, 0.09, 0, seed)
      .Grain(3, 3, 0.05, 0.06, seed + 1)
      .Scratches(width * height / 700, seed + 2);
  return s;
}

// A pane of glass with a lamp behind it: full light inside, falling off to the rim.
void Lamp(Surface& s, int x, int y, int width, int height, const Rgb& light) {
  for (int dy = 0; dy < height; ++dy) {
    for (int dx = 0; dx < width; ++dx) {
      const double u = (dx + 0.5) / width * 2 - 1, v = (dy + 0.5) / height * 2 - 1;
      s.Colour(x + dx, y + dy) =
          light * (1 - 0.45 * Smooth(0.2, 1.2, std::sqrt(u * u * u * u + v * v * v * v)));
    }
  }
}

Image LightPanel(const char* name, const Palette& palette, int width, int height, const Rgb& light,
                 Ramps ramps) {
  Surface s = Casing(width, height, PANEL * 0.8, 401);
  s.Block(1, 1, width - 2, height - 2, 2, 2).Block(4, 4, width - 8, height - 8, -2, 1).Shade(0.2);
  Lamp(s, 5, 5, width - 10, height - 10, light);
  for (int y = 12; y < height - 6; y += 11) s.Tint(5, y, width - 10, 1, DARK, 0.7);
  return s.Finish(name, palette, ramps | GREY | STEEL);
}

// Frame `step` of four: one of the four lamps is lit after the other.
Image RunningLight(const std::string& name, const Palette& palette, int lit) {
  Surface s = Casing(32, 32, PANEL * 0.7, 411);
  s.Block(1, 1, 30, 30, 2, 2).Shade(0.2);
  for (int lamp = 0; lamp < 4; ++lamp) {
    const int x = 4 + lamp % 2 * 13, y = 4 + lamp / 2 * 13;
    static constexpr int ROUND[] = {0, 1, 3, 2};
    s.Tint(x, y, 11, 11, BLACK);
    Lamp(s, x + 1, y + 1, 9, 9, lit >= 0 && ROUND[lit] == lamp ? AMBER : OFF_LIGHT);
  }
  return s.Finish(name, palette, GREY | BROWN | SAND | GLOW);
}

Image Button(const std::string& name, const Palette& palette, double glow) {
  Surface s = Casing(32, 32, PANEL * 0.8, 421);
  s.Block(1, 1, 30, 30, 2, 2).Block(6, 6, 20, 20, -2, 2).Tint(7, 7, 18, 18, DARK);
  s.Rivet(4, 4, 1.6, 2).Rivet(28, 4, 1.6, 2).Rivet(4, 28, 1.6, 2).Rivet(28, 28, 1.6, 2).Shade(0.2);
  s.Disc(16, 16, 8, Mix({80, 8, 4}, RED_LIGHT, glow))
      .Disc(15, 15, 4, Mix({110, 16, 8}, {255, 90, 60}, glow), 0.7);
  return s.Finish(name, palette, GREY | STEEL | RED | GLOW);
}

// A screen with a trace that runs on from frame to frame.
Image Screen(const std::string& name, const Palette& palette, int frame) {
  Surface s = Casing(64, 64, TEAL, 431);
  s.Block(1, 1, 62, 62, 2, 2).Block(6, 6, 52, 40, -2.5, 2).Tint(8, 8, 48, 36, {10, 20, 14});
  for (int x = 10; x < 56; x += 12) s.Rivet(x, 53, 3, 2.2);
  s.Shade(0.2);
  const Rgb dim{26, 54, 34}, line{127, 191, 255};
  for (int y = 12; y < 44; y += 8) s.Tint(8, y, 48, 1, dim);
  for (int x = 12; x < 56; x += 8) s.Tint(x, 8, 1, 36, dim);
  for (int x = 8; x < 56; ++x) {
    const double t = (x + frame * 12) / 48.0;
    const int y = 26 + static_cast<int>(std::floor(9 * Wave(t) + 4 * Wave(t * 3)));
    s.Tint(x, y, 1, 2, line);
  }
  s.Tint(45, 51, 5, 4, frame % 2 != 0 ? RED_LIGHT : Rgb{90, 10, 8});
  return s.Finish(name, palette, GREY | MOSS | STEEL | RED | GLOW);
}

Image Computer(const char* name, const Palette& palette) {
  Surface s = Casing(64, 64, PANEL, 441);
  s.Block(1, 1, 62, 62, 2, 2);
  for (int row = 0; row < 3; ++row) {
    const int y = 6 + row * 19;
    s.Block(5, y, 54, 16, -1.8, 1.5).Tint(6, y + 1, 52, 14, DARK, 0.9);
    for (int column = 0; column < 8; ++column) {
      const double kind = Hash(column, row, 442);
      const int x = 9 + column * 6;
      s.Tint(x, y + 3, 3, 3,
             kind < 0.3   ? Rgb{150, 30, 12}
             : kind < 0.6 ? Rgb{160, 140, 40}
                          : Rgb{50, 70, 54});
      s.Tint(x, y + 9, 3, 4, PANEL * (0.8 + 0.6 * Hash(column, row, 443)));
    }
  }
  s.Grime(0.2, 444).Shade(0.19);
  return s.Finish(name, palette, GREY | STEEL | RED | RUST | YELLOW | MOSS);
}

Image TechWall(const char* name, const Palette& palette) {
  Surface s = Casing(128, 128, PANEL * 0.9, 451);
  s.Block(1, 1, 78, 62, 2, 2).Block(81, 1, 46, 126, 2, 2).Block(1, 65, 78, 62, 2, 2);
  s.Block(10, 10, 60, 20, -1.8, 2).Tint(12, 12, 56, 16, DARK, 0.7);
  for (int x = 14; x < 66; x += 8) s.Tint(x, 14, 4, 12, PANEL * 0.6).Block(x, 14, 4, 12, 1.4, 1);
  s.Tint(10, 84, 60, 6, COPPER, 0.8).Block(10, 84, 60, 6, 1.8, 2);
  s.Tint(10, 98, 60, 6, COPPER, 0.8).Block(10, 98, 60, 6, 1.8, 2);
  s.Block(88, 12, 32, 104, -2, 2).Tint(90, 14, 28, 100, DARK * 1.2, 0.6);
  for (int y = 20; y < 112; y += 14) s.Tint(92, y, 24, 8, PANEL * 0.85).Block(92, y, 24, 8, 2.2, 3);
  for (const int y : {6, 58, 70, 122})
    s.Rivet(6, y, 2, 2).Rivet(74, y, 2, 2).Rivet(86, y, 2, 2).Rivet(122, y, 2, 2);
  s.Grime(0.3, 452).Shade(0.19);
  return s.Finish(name, palette, GREY | STEEL | RUST | BROWN);
}

Image TechPanel(const char* name, const Palette& palette) {
  Surface s = Casing(48, 80, TEAL, 461);
  s.Block(1, 1, 46, 78, 2, 2).Block(7, 7, 34, 28, -2, 2).Block(7, 45, 34, 28, -2, 2);
  s.Tint(9, 9, 30, 24, TEAL * 0.6, 0.8).Tint(9, 47, 30, 24, TEAL * 0.6, 0.8);
  for (int y = 50; y < 70; y += 5) s.Tint(12, y, 24, 2, BLACK);
  s.Rivet(24, 21, 8, 4).Grime(0.3, 462).Shade(0.19);
  return s.Finish(name, palette, GREY | MOSS);
}

Image TechFloor(const char* name, const Palette& palette) {
  Surface s = Casing(64, 64, PANEL * 0.75, 471);
  s.Block(1, 1, 62, 62, 1.8, 2);
  for (int y = 10; y < 54; y += 9)
    s.Block(8, y, 48, 5, -1.6, 1.5).Tint(9, y + 1, 46, 3, BLACK, 0.6);
  s.Rivet(5, 5, 2, 2).Rivet(59, 5, 2, 2).Rivet(5, 59, 2, 2).Rivet(59, 59, 2, 2);
  s.Stain(COPPER * 0.6, 24, 0.58, 0.5, 472).Shade(0.19);
  return s.Finish(name, palette, GREY | STEEL | BROWN);
}

Image Checkered(const char* name, const Palette& palette) {
  Surface s(64, 64, {96, 92, 84});
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) {
      if ((x / 16 + y / 16) % 2 != 0) s.Colour(x, y) = s.Colour(x, y) * 0.5;
    }
  }
  for (int y = 0; y < 64; y += 16) {
    for (int x = 0; x < 64; x += 16) s.Block(x, y, 16, 16, 1.2, 1.5);
  }
  s.Grain(8, 8, 0.12, 0, 481)
      .Grain(1, 1, 0.06, 0, 482)
      .Stain({50, 42, 32}, 24, 0.55, 0.5, 483)
      .Shade(0.16);
  return s.Finish(name, palette, GREY | SAND | BROWN);
}

Image ExitSign(const char* name, const Palette& palette) {
  static constexpr const char* LETTERS[7] = {"##### #   # ##### #####", "#      # #    #     #  ",
                                             "#      # #    #     #  ", "####    #     #     #  ",
                                             "#      # #    #     #  ", "#      # #    #     #  ",
                                             "##### #   # #####   #  "};
  Surface s = Casing(64, 32, PANEL * 0.8, 491);
  s.Block(1, 1, 62, 30, 2, 2).Block(5, 5, 54, 22, -2, 1).Shade(0.2);
  s.Tint(6, 6, 52, 20, {56, 4, 2});
  for (int row = 0; row < 7; ++row) {
    for (int column = 0; LETTERS[row][column] != 0; ++column) {
      if (LETTERS[row][column] == '#') s.Tint(9 + column * 2, 9 + row * 2, 2, 2, RED_LIGHT);
    }
  }
  return s.Finish(name, palette, GREY | STEEL | RED | GLOW);
}

}  // namespace

std::vector<Image> MakeTech(const Palette& p) {
  std::vector<Image> images;
  images.push_back(TechWall("tech_wall", p));
  images.push_back(TechPanel("tech_panel", p));
  images.push_back(Computer("tech_computer", p));
  images.push_back(TechFloor("floor_tech", p));
  images.push_back(Checkered("floor_check", p));
  images.push_back(ExitSign("sign_exit", p));
  images.push_back(LightPanel("light_white", p, 32, 32, WHITE_LIGHT, GLOW));
  images.push_back(LightPanel("light_amber", p, 32, 32, AMBER, GLOW | RUST));
  images.push_back(LightPanel("light_cold", p, 64, 32, COLD, GLOW));
  images.push_back(LightPanel("light_strip", p, 16, 64, WHITE_LIGHT, GLOW));
  images.push_back(LightPanel("light_small", p, 32, 48, AMBER, GLOW | RUST));
  for (int frame = 0; frame < 4; ++frame) {
    const std::string digit = std::to_string(frame);
    images.push_back(RunningLight("+" + digit + "lite", p, frame));
    images.push_back(Screen("+" + digit + "screen", p, frame));
  }
  images.push_back(RunningLight("+alite", p, -1));
  images.push_back(Button("+0button", p, 0.1));
  images.push_back(Button("+1button", p, 0.55));
  images.push_back(Button("+abutton", p, 1));
  return images;
}

}  // namespace ferrowand::generator
