#include "views/label_places.h"

#include <algorithm>

namespace ferrowand {
namespace {

constexpr int BAND_SHIFT = 5;  // of 32 rows: a name touches one or two

bool Overlap(const PixelRect& a, const PixelRect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

}  // namespace

bool LabelPlaces::Take(const PixelRect& place) {
  const int first = place.top >> BAND_SHIFT, last = place.bottom >> BAND_SHIFT;
  for (int band = first; band <= last; ++band) {
    const auto covers = [&](const PixelRect& taken) { return Overlap(taken, place); };
    if (std::ranges::any_of(taken_[band], covers)) return false;
  }
  for (int band = first; band <= last; ++band) taken_[band].push_back(place);
  return true;
}

}  // namespace ferrowand
