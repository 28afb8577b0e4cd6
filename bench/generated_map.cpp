#include "generated_map.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <random>
#include <string_view>

namespace ferrowand::bench {
namespace {

constexpr int CELLS = 40;  // along X and Y
constexpr int CELL = 200;  // world units

struct Point {
  int x, y, z;
};

void Append(std::string& text, const Point& p) {
  text +=
      "( " + std::to_string(p.x) + ' ' + std::to_string(p.y) + ' ' + std::to_string(p.z) + " ) ";
}

void AppendFace(std::string& text, const Point& a, const Point& b, const Point& c, int material) {
  static constexpr std::array<std::string_view, 8> NAMES = {
      "brick_dark1", "METAL1_3", "floor_tile02", "+0switch_wall",
      "wood_plank3", "sky1",     "*slime0",      "rock_moss_4"};
  Append(text, a);
  Append(text, b);
  Append(text, c);
  text += NAMES[static_cast<std::size_t>(material) % NAMES.size()];
  text += ' ' + std::to_string(material % 64) + " 0 " + std::to_string(material % 4 * 90) +
          " 1.000000 1.000000\n";
}

}  // namespace

// A grid of boxes of many sizes; every third has a sloping top.
std::string GeneratedMap() {
  std::minstd_rand random(1);
  const auto pick = [&random](int from, int to) {
    return from + static_cast<int>(random() % static_cast<unsigned>(to - from + 1));
  };
  std::string text =
      "{\n\"classname\" \"worldspawn\"\n\"message\" \"The generated city\"\n"
      "\"wad\" \"quake.wad\"\n";
  for (int i = 0; i < GENERATED_BRUSHES; ++i) {
    const int x = (i % CELLS - CELLS / 2) * CELL + pick(0, 60);
    const int y = (i / CELLS % CELLS - CELLS / 2) * CELL + pick(0, 60);
    const int z = (i / (CELLS * CELLS) - CELLS / 2) * CELL + pick(0, 60);
    const int right = x + pick(8, 120);
    const int back = y + pick(8, 120);
    const int top = z + pick(8, 120);
    const int slope = i % 3 == 0 ? pick(-6, 6) : 0;
    const int material = pick(0, 999);
    text += "{\n";
    AppendFace(text, {x, y, top}, {x, back, top}, {right, back, top + slope}, material);
    AppendFace(text, {x, y, z}, {right, y, z}, {right, back, z}, material + 1);
    AppendFace(text, {right, y, z}, {right, y, top}, {right, back, top}, material);
    AppendFace(text, {x, y, z}, {x, back, z}, {x, back, top}, material);
    AppendFace(text, {x, back, z}, {right, back, z}, {right, back, top}, material);
    AppendFace(text, {x, y, z}, {x, y, top}, {right, y, top}, material);
    text += "}\n";
  }
  return text + "}\n";
}

GeneratedMapFile::GeneratedMapFile() {
  std::random_device random;
  const std::string name = "ferrowand-bench-" + std::to_string(random()) + ".map";
  path_ = (std::filesystem::temp_directory_path() / name).string();
  std::ofstream(path_, std::ios::binary) << GeneratedMap();
}

GeneratedMapFile::~GeneratedMapFile() {
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

}  // namespace ferrowand::bench
