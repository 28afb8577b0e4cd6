#include "operations/map_check.h"

#include <string>
#include <vector>

#include "document/document_fixture.h"
#include "gamedata/wad_library.h"
#include "operations/primitives.h"

namespace ferrowand {
namespace {

class MapCheckTest : public DocumentTest {
 protected:
  std::vector<std::string> Lines(const WadList& wads = {}) {
    std::vector<Problem> problems;
    CheckMap(*map, problems, wads, 0.1);
    std::vector<std::string> lines;
    for (const Problem& problem : problems) lines.push_back(ReportLine(problem));
    return lines;
  }
  // The only brush of a new map.
  entity& OpenCube() {
    map = ReadText("{\"classname\" \"worldspawn\"" + Cuboid(0, 0, 0, 8, 8, 8) + "}");
    return *map->currentLayer()->getEntityList().front();
  }
  using Texts = std::vector<std::string>;

  std::unique_ptr<Map> map;
};

TEST_F(MapCheckTest, ABrushOfManyFacesIsReportedOnceAsAWhole) {
  map = std::make_unique<Map>(data);
  for (const auto& [sides, expected] : {std::pair{13, Texts{}},
                                        {14, {"16 or more faces, Unnamed brush"}},
                                        {30, {"32 or more faces, Unnamed brush"}}}) {
    Primitive column{PrimitiveKind::Column, {{0, 0, 0}, {1024, 1024, 64}}, 2, sides};
    entity* made = AddPrimitive(*map, column, "wall");
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(Lines(), expected);
    made->Parent()->TakeChildren();
  }
}

TEST_F(MapCheckTest, AnOriginIsAFaultOnlyOfWhatHasFacesItself) {
  const std::string block = Cuboid(0, 0, 0, 64, 64, 64);
  const std::string faces = block.substr(2, block.size() - 4);
  map = ReadText(
      "{\"classname\" \"worldspawn\""
      "{\"classname\" \"brush\"\"XMPentityname\" \"stray\"\"origin\" \"0 0 0\"" +
      faces + "}{\"classname\" \"brush\"\"origin\" \"0 0 0\"" + block + "}}");
  EXPECT_EQ(Lines(), Texts{"Entity with brush and origin, brush named: stray"});
}

TEST_F(MapCheckTest, EachFaceWithoutItsTextureIsNamedByItsIndex) {
  entity& cube = OpenCube();
  WadList wads;
  wads.Add("default", data.wads.Default());
  cube.ResolveTextures(wads);
  for (const int i : {0, 1, 3, 4, 5}) cube.brush.face(i).texture = nullptr;
  EXPECT_EQ(Lines(wads), Texts{"Unknown texture, Unnamed brush, face 2"});
}

TEST_F(MapCheckTest, WhatIsWrongWithFacesComesBeforeTheBrushAndThatBeforeItsChildren) {
  entity& cube = OpenCube();
  EXPECT_TRUE(Lines().empty());
  EntityPtr child = cube.Copy();
  child->brush.face(4).w = nullptr;
  cube.AddChild(std::move(child));
  for (WindingPoint& p : cube.brush.face(0).w->Points()) p.x += 4;
  cube.brush.face(5).w = nullptr;
  EXPECT_EQ(Lines(), (Texts{"No winding, Unnamed brush, face 5", "Non convex, Unnamed brush",
                            "No winding, Unnamed brush, face 4"}));
}

}  // namespace
}  // namespace ferrowand
