#include "views/view_transform.h"

#include <algorithm>

namespace ferrowand {
namespace {

// Views think in 16 bits: what lies beyond wraps around, as it does in everything that was ever
// drawn by them. A number that no int32 holds counts as 0.
std::int16_t WholeUnits(float world) {
  if (!(world > -2147483648.0f && world < 2147483648.0f)) return 0;
  return static_cast<std::int16_t>(static_cast<std::int32_t>(world));
}

int ToPixel(float world, std::int16_t origin, float scale) {
  return RoundToInt((WholeUnits(world) - origin) / static_cast<double>(scale));
}

}  // namespace

int ViewTransform::DepthAxis() const {
  const int next = (orienu + 1) % 3;
  return next != orienv ? next : (orienv + 1) % 3;
}

int ViewTransform::ToScreenU(float world) const {
  return ToPixel(world, originu, scaleu);
}
int ViewTransform::ToScreenV(float world) const {
  return ToPixel(world, originv, scalev);
}

PixelRect ViewTransform::ToScreen(const Vec3& corner, const Vec3& opposite) const {
  const Pixel a = ToScreen(corner);
  const Pixel b = ToScreen(opposite);
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

const char* OrientationName(int orienu, int orienv) {
  static constexpr const char* INVALID = "Invalid - possible error!";
  static constexpr const char* NAMES[3][3] = {
      {INVALID, "Top", "Front"}, {"Top", INVALID, "Side"}, {"Front", "Side", INVALID}};
  if (orienu < 0 || orienu > 2 || orienv < 0 || orienv > 2) return INVALID;
  return NAMES[orienu][orienv];
}

}  // namespace ferrowand
