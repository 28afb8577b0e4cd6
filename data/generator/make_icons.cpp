// Draws the icons of the program and of its documents: make_icons FOLDER.
#include <cstdio>
#include <string>

#include "icon.h"
#include "platform/file.h"

namespace ferrowand::generator {
namespace {

constexpr Paint INK{26, 24, 28}, TOP{222, 146, 62}, LEFT{176, 88, 30}, RIGHT{116, 52, 20},
    STEEL{150, 162, 182}, BRIGHT{236, 240, 248}, PAPER{244, 242, 234}, FOLD{198, 194, 182},
    LINE{150, 160, 178};

// A cube of glowing iron seen from a corner: centre of its top at (x, y), half width `half`.
void DrawCube(Picture& picture, double x, double y, double half) {
  const double rise = half * 0.5, depth = half * 1.05, rim = half * 0.09;
  picture.Polygon({{x, y - rise - rim},
                   {x + half + rim, y - rim / 2},
                   {x + half + rim, y + depth + rim / 2},
                   {x, y + rise + depth + rim},
                   {x - half - rim, y + depth + rim / 2},
                   {x - half - rim, y - rim / 2}},
                  INK);
  picture.Polygon({{x, y - rise}, {x + half, y}, {x, y + rise}, {x - half, y}}, TOP, 0.2);
  picture.Polygon({{x - half, y}, {x, y + rise}, {x, y + rise + depth}, {x - half, y + depth}},
                  LEFT, 0.25);
  picture.Polygon({{x + half, y}, {x, y + rise}, {x, y + rise + depth}, {x + half, y + depth}},
                  RIGHT, 0.25);
}

// A rod from one point to another with a dark rim.
void DrawRod(Picture& picture, Point from, Point to, double width, const Paint& paint) {
  const double dx = to.x - from.x, dy = to.y - from.y;
  const double scale = width / (dx < 0 ? -dx - dy : dx - dy);  // drawn towards the upper right
  const Point side{-dy * scale, dx * scale};
  const auto strip = [&](double grow) {
    return std::vector<Point>{{from.x + side.x * grow, from.y + side.y * grow},
                              {to.x + side.x * grow, to.y + side.y * grow},
                              {to.x - side.x * grow, to.y - side.y * grow},
                              {from.x - side.x * grow, from.y - side.y * grow}};
  };
  picture.Polygon(strip(1.5), INK);
  picture.Polygon(strip(1), paint, 0.3);
}

void DrawSpark(Picture& picture, double x, double y, double reach) {
  const double waist = reach * 0.2;
  picture.Polygon({{x, y - reach},
                   {x + waist, y - waist},
                   {x + reach, y},
                   {x + waist, y + waist},
                   {x, y + reach},
                   {x - waist, y + waist},
                   {x - reach, y},
                   {x - waist, y - waist}},
                  {255, 236, 150});
  picture.Disc({x, y}, reach * 0.28, BRIGHT);
}

// The wand touches the iron cube.
Picture DrawProgram(int size) {
  Picture picture(size);
  DrawCube(picture, 20, 21, 16.5);
  DrawRod(picture, {26, 20}, {43, 3}, 2.2, STEEL);
  DrawSpark(picture, 25, 21, 9);
  return picture;
}

// A sheet with a folded corner, a grid, and the cube on it.
Picture DrawDocument(int size) {
  Picture picture(size);
  picture.Polygon({{7, 1}, {31, 1}, {42, 12}, {42, 47}, {7, 47}}, INK);
  picture.Polygon({{8.5, 2.5}, {30, 2.5}, {40.5, 13}, {40.5, 45.5}, {8.5, 45.5}}, PAPER);
  for (double line = 13; line < 45; line += 8) {
    picture.Polygon({{9, line}, {40, line}, {40, line + 0.8}, {9, line + 0.8}}, LINE);
    if (line < 40)
      picture.Polygon({{line, 3}, {line + 0.8, 3}, {line + 0.8, 45}, {line, 45}}, LINE);
  }
  picture.Polygon({{30, 2.5}, {40.5, 13}, {30, 13}}, FOLD);
  DrawCube(picture, 24.5, 23, 11);
  return picture;
}

bool WriteIcon(const std::string& name, Picture (*draw)(int)) {
  const std::vector<std::uint8_t> bytes = EncodeIcon({draw(16), draw(32), draw(48)});
  const FileHandle handle = file::Create(name);
  if (handle == INVALID_FILE) return false;
  const bool written = file::Write(handle, bytes.data(), bytes.size());
  file::Close(handle);
  return written;
}

}  // namespace
}  // namespace ferrowand::generator

int main(int argc, char** argv) {
  using namespace ferrowand::generator;
  if (argc != 2) {
    std::fprintf(stderr, "make_icons FOLDER\n");
    return 2;
  }
  const std::string folder = std::string(argv[1]) + "/";
  if (WriteIcon(folder + "ferrowand.ico", DrawProgram) &&
      WriteIcon(folder + "document.ico", DrawDocument)) {
    return 0;
  }
  std::fprintf(stderr, "the icons could not be made in %s\n", argv[1]);
  return 1;
}
