#include "shell/windows/window_place.h"

#include <algorithm>
#include <cstdio>

#include "base/report.h"

namespace ferrowand {

std::string PlaceText(HWND window, const std::string& before) {
  RECT place;
  if (IsIconic(window) || IsZoomed(window) || !GetWindowRect(window, &place)) return before;
  const bool isChild = (GetWindowLongA(window, GWL_STYLE) & WS_CHILD) != 0;
  if (isChild) {
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
  }
  return Format("%i %i %i %i", static_cast<int>(place.left), static_cast<int>(place.top),
                static_cast<int>(place.right - place.left),
                static_cast<int>(place.bottom - place.top));
}

ChildPlace PlaceOfText(const std::string& text, const ChildPlace& otherwise,
                       const PixelSize& area) {
  ChildPlace place{};
  if (std::sscanf(text.c_str(), "%d %d %d %d", &place.left, &place.top, &place.width,
                  &place.height) != 4 ||
      place.width <= 0 || place.height <= 0) {
    place = otherwise;
  }
  place.width = std::min(place.width, area.width);
  place.height = std::min(place.height, area.height);
  place.left = std::clamp(place.left, 0, std::max(area.width - place.width, 0));
  place.top = std::clamp(place.top, 0, std::max(area.height - place.height, 0));
  return place;
}

}  // namespace ferrowand
