#include <cmath>

#include "gamedata/bsp_file.h"
#include "gamedata/level_lines.h"
#include "support.h"

using namespace ferrowand;

namespace {

void RequireFinite(const Polyline& line) {
  for (const Vec3& point : line) {
    for (int axis = 0; axis < 3; ++axis) Require(std::isfinite(point[axis]));
  }
}

}  // namespace

// The same bytes as each of the files that qbsp leaves.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  Require(BspSummaryOf(text, size).size() >= 16);
  RequireFinite(ParseLeakLine(text));
  if (const auto portals = ParsePortals(text)) {
    for (const Polyline& portal : *portals) {
      Require(portal.size() >= 3);
      RequireFinite(portal);
    }
  }
  return 0;
}
