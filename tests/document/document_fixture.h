// What the tests of the document share: game data without files, maps from text, text from maps.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "base/text_reader.h"
#include "base/text_writer.h"
#include "document/classes/special_classes.h"
#include "document/map.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

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

class DocumentTest : public testing::Test {
 protected:
  DocumentTest() {
    data.searchPath.Add("");  // the name alone, wherever the tests are started
  }

  std::unique_ptr<Map> ReadText(const std::string& text) {
    return LoadMap(data, temp.Write("input.xmp", text));
  }

  const entity* FindNamed(const entity& tree, const std::string& name) {
    const entity* found = nullptr;
    ForEachEntity(tree, [&](const entity& e) {
      const char* value = e.GetKey("XMPentityname");
      if (!found && value && name == value) found = &e;
    });
    return found;
  }

  MessageRecorder recorder;
  Reporter reporter{recorder};
  LoadProgress progress;
  GameData data{reporter, progress};
  TempDir temp;
};

}  // namespace ferrowand
