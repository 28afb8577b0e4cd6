#include "views/wall_layout.h"

#include <algorithm>
#include <cstdlib>

#include "gamedata/wad_file.h"
#include "operations/texture_wall.h"

namespace ferrowand {
namespace {

PixelSize SizeOf(const WallItem& item, const WallMeasures& measures) {
  const PixelSize size =
      item.texture ? PixelSize{item.texture->width, item.texture->height} : measures.missing;
  return {std::max(size.width * measures.zoom / 100, 1),
          std::max(size.height * measures.zoom / 100, 1)};
}

int Middle(const PixelRect& place) {
  return (place.left + place.right) / 2;
}

}  // namespace

WallLayout::WallLayout(const TextureWall& wall, int width, const WallMeasures& measures) {
  cells_.reserve(wall.items.size());
  for (const WallGroup& group : wall.groups) {
    PixelRect heading{};
    if (!group.title.empty()) {
      heading = {0, height_, width, height_ + measures.heading};
      height_ = heading.bottom;
    }
    headings_.push_back(heading);
    PlaceGroup(wall, group.begin, group.end, width, measures);
  }
}

void WallLayout::PlaceGroup(const TextureWall& wall, std::size_t begin, std::size_t end, int width,
                            const WallMeasures& measures) {
  rows_.push_back({height_, height_, begin, begin});
  int left = measures.gap;
  for (std::size_t i = begin; i < end; ++i) {
    const PixelSize picture = SizeOf(wall.items[i], measures);
    const int across = std::max(picture.width, measures.leastWidth);
    if (left + across + measures.gap > width && rows_.back().begin < i) {
      CloseRow(measures);
      rows_.push_back({height_, height_, i, i});
      left = measures.gap;
    }
    const int top = rows_.back().top + measures.gap;
    const PixelRect place{left, top, left + across, top + picture.height + measures.caption};
    cells_.push_back(
        {place, {left, top, left + picture.width, top + picture.height}, rows_.size() - 1});
    rows_.back().end = i + 1;
    rows_.back().bottom = std::max(rows_.back().bottom, place.bottom);
    left += across + measures.gap;
  }
  CloseRow(measures);
}

void WallLayout::CloseRow(const WallMeasures& measures) {
  rows_.back().bottom += measures.gap;
  height_ = rows_.back().bottom;
}

std::optional<std::size_t> WallLayout::At(Pixel place) const {
  const auto [begin, end] = Within(place.y, place.y + 1);
  for (std::size_t i = begin; i < end; ++i) {
    const PixelRect& cell = cells_[i].place;
    if (place.x >= cell.left && place.x < cell.right && place.y >= cell.top &&
        place.y < cell.bottom) {
      return i;
    }
  }
  return std::nullopt;
}

std::pair<std::size_t, std::size_t> WallLayout::Within(int top, int bottom) const {
  const auto first =
      std::ranges::partition_point(rows_, [top](const Row& row) { return row.bottom <= top; });
  const auto last =
      std::partition_point(first, rows_.end(), [bottom](const Row& r) { return r.top < bottom; });
  if (first == last) return {0, 0};
  return {first->begin, (last - 1)->end};
}

std::size_t WallLayout::NearestIn(std::size_t row, std::size_t item) const {
  std::size_t best = rows_[row].begin;
  for (std::size_t i = best; i < rows_[row].end; ++i) {
    const auto distance = [&](std::size_t other) {
      return std::abs(Middle(cells_[other].place) - Middle(cells_[item].place));
    };
    if (distance(i) < distance(best)) best = i;
  }
  return best;
}

std::size_t WallLayout::Beside(std::size_t item, WallStep step, int page) const {
  if (cells_.empty()) return item;
  const std::size_t last = cells_.size() - 1;
  if (item > last) return step == WallStep::Last ? last : 0;
  const std::size_t row = cells_[item].row, lastRow = rows_.size() - 1;
  const auto rowAt = [&](int top) {
    const auto found =
        std::ranges::partition_point(rows_, [top](const Row& r) { return r.bottom <= top; });
    return std::min(static_cast<std::size_t>(found - rows_.begin()), lastRow);
  };
  switch (step) {
    case WallStep::Left:
      return item == 0 ? 0 : item - 1;
    case WallStep::Right:
      return std::min(item + 1, last);
    case WallStep::Up:
      return row == 0 ? item : NearestIn(row - 1, item);
    case WallStep::Down:
      return row == lastRow ? item : NearestIn(row + 1, item);
    case WallStep::PageUp:
      return row == 0 ? item : NearestIn(std::min(rowAt(rows_[row].top - page), row - 1), item);
    case WallStep::PageDown:
      return row == lastRow ? item
                            : NearestIn(std::max(rowAt(rows_[row].top + page), row + 1), item);
    case WallStep::First:
      return 0;
    case WallStep::Last:
      return last;
  }
  return item;
}

}  // namespace ferrowand
