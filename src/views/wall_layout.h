// Where the textures of a wall stand: side by side in rows, each above its name, group after group.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "platform/pixel.h"

namespace ferrowand {

struct TextureWall;

// Pixels, the zoom aside.
struct WallMeasures {
  int zoom = 100;       // per cent
  int gap = 0;          // around each
  int caption = 0;      // below each; 0 for none
  int heading = 0;      // above a group that has a title
  int leastWidth = 1;   // of a cell, so that its name can be read
  PixelSize missing{};  // of the picture of what has none, before the zoom
};

enum class WallStep { Left, Right, Up, Down, PageUp, PageDown, First, Last };

class WallLayout {
 public:
  WallLayout() = default;
  // In so many pixels across. A cell wider than that stands alone in its row.
  WallLayout(const TextureWall& wall, int width, const WallMeasures& measures);

  int Height() const { return height_; }
  // (0, 0) is the wall's own corner.
  const PixelRect& Cell(std::size_t item) const { return cells_[item].place; }
  const PixelRect& Picture(std::size_t item) const { return cells_[item].picture; }
  // Of the group's title; empty without one.
  const PixelRect& Heading(std::size_t group) const { return headings_[group]; }

  std::optional<std::size_t> At(Pixel place) const;
  // The first and the one behind the last of those that reach into the stripe.
  std::pair<std::size_t, std::size_t> Within(int top, int bottom) const;
  // From one item to another; up and down to the nearest of the row there, by pages of that height.
  std::size_t Beside(std::size_t item, WallStep step, int page) const;

 private:
  struct PlacedCell {
    PixelRect place, picture;
    std::size_t row;
  };
  struct Row {
    int top, bottom;
    std::size_t begin, end;
  };

  void PlaceGroup(const TextureWall& wall, std::size_t begin, std::size_t end, int width,
                  const WallMeasures& measures);
  void CloseRow(const WallMeasures& measures);
  std::size_t NearestIn(std::size_t row, std::size_t item) const;

  std::vector<PlacedCell> cells_;
  std::vector<Row> rows_;
  std::vector<PixelRect> headings_;
  int height_ = 0;
};

}  // namespace ferrowand
