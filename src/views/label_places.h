// Which names of a picture are drawn: whoever comes first has its place, and what would cover it
// waits until there is room, at another zoom.
#pragma once

#include <unordered_map>
#include <vector>

#include "platform/pixel.h"

namespace ferrowand {

class LabelPlaces {
 public:
  // False, and nothing is taken, where that would cover what has been.
  bool Take(const PixelRect& place);

 private:
  std::unordered_map<int, std::vector<PixelRect>> taken_;  // by the bands of rows they touch
};

}  // namespace ferrowand
