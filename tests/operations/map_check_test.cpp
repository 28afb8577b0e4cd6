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
  std::vector<std::string> Lines(Map& map, const WadList& wads = {}) {
    std::vector<Problem> problems;
    CheckMap(map, problems, wads, 0.1);
    std::vector<std::string> lines;
    for (const Problem& problem : problems) lines.push_back(ReportLine(problem));
    return lines;
  }
  using Texts = std::vector<std::string>;
};

TEST_F(MapCheckTest, ABrushOfManyFacesIsReportedOnceAsAWhole) {
  Map map(data);
  for (const auto& [sides, expected] : {std::pair{13, Texts{}},
                                        {14, {"16 or more faces, Unnamed brush"}},
                                        {30, {"32 or more faces, Unnamed brush"}}}) {
    Primitive column{PrimitiveKind::Column, {{0, 0, 0}, {1024, 1024, 64}}, 2, sides};
    entity* made = AddPrimitive(map, column, "wall");
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(Lines(map), expected);
    made->Parent()->TakeChildren();
  }
}

TEST_F(MapCheckTest, AnOriginIsAFaultOnlyOfWhatHasFacesItself) {
  const std::string block = Cuboid(0, 0, 0, 64, 64, 64);
  const std::string faces = block.substr(2, block.size() - 4);
  const auto map = ReadText(
      "{\n\"classname\" \"worldspawn\"\n"
      "{\n\"classname\" \"brush\"\n\"XMPentityname\" \"stray\"\n\"origin\" \"0 0 0\"\n" +
      faces + "}\n{\n\"classname\" \"brush\"\n\"origin\" \"0 0 0\"\n" + block + "}\n}\n");
  EXPECT_EQ(Lines(*map), Texts{"Entity with brush and origin, brush named: stray"});
}

TEST_F(MapCheckTest, EachFaceWithoutItsTextureIsNamedByItsIndex) {
  const auto map = ReadText("{\n\"classname\" \"worldspawn\"\n" + Cuboid(0, 0, 0, 8, 8, 8) + "}\n");
  WadList wads;
  wads.Add("default", data.wads.Default());
  entity* brush = nullptr;
  ForEachEntity(*map, [&](const entity& e) {
    if (e.brush.getNumFaces() > 0) brush = const_cast<entity*>(&e);
  });
  brush->ResolveTextures(wads);
  for (const int i : {0, 1, 3, 4, 5}) brush->brush.face(i).texture = nullptr;
  EXPECT_EQ(Lines(*map, wads), Texts{"Unknown texture, Unnamed brush, face 2"});
}

TEST_F(MapCheckTest, WhatIsWrongWithFacesComesBeforeTheBrushAndThatBeforeItsChildren) {
  const auto map = ReadText("{\n\"classname\" \"worldspawn\"\n" + Cuboid(0, 0, 0, 8, 8, 8) + "}\n");
  entity* brush = nullptr;
  ForEachEntity(*map, [&](const entity& e) {
    if (e.brush.getNumFaces() > 0) brush = const_cast<entity*>(&e);
  });
  EXPECT_TRUE(Lines(*map).empty());
  EntityPtr child = brush->Copy();
  child->brush.face(4).w = nullptr;
  brush->AddChild(std::move(child));
  for (WindingPoint& p : brush->brush.face(0).w->Points()) p.x += 4;
  brush->brush.face(5).w = nullptr;
  EXPECT_EQ(Lines(*map), (Texts{"No winding, Unnamed brush, face 5", "Non convex, Unnamed brush",
                                "No winding, Unnamed brush, face 4"}));
}

}  // namespace
}  // namespace ferrowand
