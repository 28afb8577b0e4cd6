#include "textures.h"

namespace ferrowand::generator {
namespace {

// The left half drifts before the right one; the game does not draw its colour 0 there.
Image Sky(const char* name, const Palette& palette) {
  Surface layer(128, 128, {});
  Surface front(128, 128, {}), back(128, 128, {});
  for (int y = 0; y < 128; ++y) {
    for (int x = 0; x < 128; ++x) {
      const double high = layer.Cloud(x, y, 64, 601), low = layer.Cloud(x, y, 48, 611);
      back.Colour(x, y) = Mix({30, 22, 44}, {104, 76, 100}, Smooth(0.3, 0.75, high));
      front.Colour(x, y) = Mix({52, 36, 52}, {150, 112, 120}, Smooth(0.5, 0.8, low));
    }
  }
  const Image near = front.Finish("", palette, MAUVE | ROSE | SAND);
  const Image far = back.Finish("", palette, MAUVE | ROSE | STEEL);
  Image image{name, 256, 128, std::vector<std::uint8_t>(256 * 128)};
  for (int y = 0; y < 128; ++y) {
    for (int x = 0; x < 128; ++x) {
      const bool cloud = layer.Cloud(x, y, 48, 611) + 0.08 * Hash(x, y, 612) > 0.52;
      image.pixels[y * 256 + x] = cloud ? near.pixels[y * 128 + x] : 0;
      image.pixels[y * 256 + 128 + x] = far.pixels[y * 128 + x];
    }
  }
  return image;
}

// A mark for brushes that nobody sees in the game: a frame, and letters three by five.
Image Mark(const char* name, const Palette& palette, const Rgb& colour, const char* rows[5],
           Ramps ramps) {
  Surface s(64, 64, colour * 0.5);
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) {
      if ((x + y) / 8 % 2 != 0) s.Colour(x, y) = colour * 0.38;
    }
  }
  s.Tint(0, 0, 64, 2, colour)
      .Tint(0, 62, 64, 2, colour)
      .Tint(0, 0, 2, 64, colour)
      .Tint(62, 0, 2, 64, colour);
  int columns = 0;
  while (rows[0][columns] != 0) ++columns;
  const int size = 3, left = 32 - columns * size / 2;
  for (int row = 0; row < 5; ++row) {
    for (int column = 0; column < columns; ++column) {
      if (rows[row][column] == '#')
        s.Tint(left + column * size, 24 + row * size, size, size, colour * 1.6);
    }
  }
  return s.Finish(name, palette, ramps);
}

}  // namespace

std::vector<Image> MakeSpecials(const Palette& p) {
  const char* clip[5] = {"### #   ### ###", "#   #    #  # #", "#   #    #  ###", "#   #    #  #  ",
                         "### ### ### #  "};
  const char* skip[5] = {"### # # ### ###", "#   # #  #  # #", "### ##   #  ###", "  # # #  #  #  ",
                         "### # # ### #  "};
  const char* hint[5] = {"# # ### ### ###", "# #  #  # #  # ", "###  #  # #  # ", "# #  #  # #  # ",
                         "# # ### # #  # "};
  const char* trigger[5] = {"### ### ### ###", " #  # #  #  #  ", " #  ##   #  # #",
                            " #  # #  #  # #", " #  # # ### ###"};
  std::vector<Image> images;
  images.push_back(Sky("sky1", p));
  images.push_back(Mark("clip", p, {150, 60, 90}, clip, ROSE | MAUVE | RED));
  images.push_back(Mark("skip", p, {110, 110, 110}, skip, GREY));
  images.push_back(Mark("hint", p, {90, 90, 140}, hint, STEEL | BLUE));
  images.push_back(Mark("trigger", p, {160, 130, 30}, trigger, YELLOW | BRASS | BROWN));
  return images;
}

}  // namespace ferrowand::generator
