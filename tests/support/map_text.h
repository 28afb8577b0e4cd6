// Maps as text, and the text of a brush.
#pragma once

#include <string>

#include "base/text_writer.h"
#include "document/map.h"

namespace ferrowand {

inline std::string ExtendedText(const entity& e) {
  TextWriter out;
  e.WriteExtended(out);
  return std::string(out.Text());
}

inline std::string QuakeText(const Map& map, unsigned option = 0) {
  TextWriter out;
  map.WriteMapBrushes(out, option);
  return std::string(out.Text());
}

// A brush of six faces, as it stands in a file between braces.
inline std::string Cuboid(int x0, int y0, int z0, int x1, int y1, int z1) {
  const auto point = [](int x, int y, int z) {
    return "( " + std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(z) + " ) ";
  };
  const auto face = [](const std::string& points) { return points + "wall 0 0 0 1 1\n"; };
  return "{\n" + face(point(x0, y0, z0) + point(x0, y1, z0) + point(x0, y0, z1)) +
         face(point(x1, y0, z0) + point(x1, y0, z1) + point(x1, y1, z0)) +
         face(point(x0, y0, z0) + point(x0, y0, z1) + point(x1, y0, z0)) +
         face(point(x0, y1, z0) + point(x1, y1, z0) + point(x0, y1, z1)) +
         face(point(x0, y0, z0) + point(x1, y0, z0) + point(x0, y1, z0)) +
         face(point(x0, y0, z1) + point(x0, y1, z1) + point(x1, y0, z1)) + "}\n";
}

}  // namespace ferrowand
