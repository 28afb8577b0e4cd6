// What a load tells of what it could not keep.
#include <algorithm>

#include "document/document_fixture.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

using ReadLogTest = DocumentTest;

const std::string POINTS = "( 0 0 64 ) ( 0 64 64 ) ( 64 64 64 ) ";

std::string WithBrush(const std::string& brush) {
  return "{\n" + brush + Cuboid(0, 0, 0, 8, 8, 8) + "}\n";
}

TEST_F(ReadLogTest, OneSummaryNamesEveryKindWithItsNumberAndItsFirstLine) {
  const auto map =
      ReadText("{\n\"a\" \"1\n{\n? ?\n( 0 0 0 ) ( 8\n( 1 2\n}\n{\n\"b\" 1\"\n}\n}\n}\n");
  ASSERT_EQ(recorder.messages.size(), 2u);
  EXPECT_EQ(recorder.messages.back().title, "Parsing Error");
  EXPECT_EQ(recorder.messages.back().text,
            "Not all of this file could be read as it stands:\n\n"
            "2 characters that belong nowhere, the first in line 4\n"
            "2 keys or values that do not end on their line, the first in line 2\n"
            "2 faces without three points, left out, the first in line 5\n"
            "1 closing braces too many, the first in line 12\n\n"
            "Saving the map over its file would lose this for good.");
}

TEST_F(ReadLogTest, TheFirstCharacterThatBelongsNowhereIsToldAtOnceWithItsLine) {
  std::string brush = Cuboid(0, 0, 0, 8, 8, 8);
  brush.insert(brush.find("wall") + 14, "\n /? * \n");
  for (const auto& [text, character, where, line] : Cases<std::string, char, const char*, int>{
           {"/ {\n\"a\" \"1\"\n? }{ ? }", '/', "worldspawn", 1},
           {"{}\n{\n7 \"a\" \"1\"\n8/x\n}", '7', "entity", 3},
           {"{" + brush + "?}", '/', "brush", 3}}) {
    recorder.messages.clear();
    ReadText(text);
    ASSERT_EQ(recorder.messages.size(), 2u) << "it and the summary";
    EXPECT_EQ(recorder.Said()[0],
              Format("Parsing Error: An invalid char(%c) was found in %s definition at line:%d.\n"
                     "This file may not be a map file.\n\nFerrowand will attempt to read the rest, "
                     "but some data may be lost!",
                     character, where, line));
  }
}

TEST_F(ReadLogTest, ACutFractionIsToldWithHowFarACornerMoved) {
  std::string faces = Cuboid(0, 0, 0, 64, 64, 64);
  const std::string top = "( 0 0 64 ) ( 0 64 64 ) ( 64 0 64 )";
  for (const auto& [points, says] : Cases<std::string, std::string>{
           {"( 0 0 64.5 ) ( 0 64 64.5 ) ( 64 0 64.5 )", "3 plane points with fractions"},
           {"( 0 0 64.5 ) ( 0 64 64.5 ) ( 64 0 64.5 )", "a corner moved by up to 0.50 units"},
           {"( 0 0 64.0 ) ( 0 64 64 ) ( 64 0 64 )", ""}}) {
    recorder.messages.clear();
    std::string text = faces;
    ASSERT_NE(text.find(top), std::string::npos) << text;
    text.replace(text.find(top), top.size(), points);
    const auto map = ReadText("{" + text + "}");
    EXPECT_EQ(map->readWithLoss(), !says.empty());
    if (says.empty()) continue;
    EXPECT_NE(recorder.OnlyText().find(says), std::string::npos) << recorder.OnlyText();
    EXPECT_EQ(map->currentLayer()->GetBounds().maxs.z, 64);
  }
}

TEST_F(ReadLogTest, WhatIsNotQuiteThereIsTold) {
  const std::string world = "{\n\"classname\" \"worldspawn\"\n";
  for (const auto& [text, says, isLoss] : Cases<std::string, std::string, bool>{
           {"", "There is nothing in this file.", false},
           {std::string(9, '\0'), "There is no map in this file.", true},
           {world + std::string(8, '\0') + "}", "8 zero bytes, as after a power cut", true},
           {world + "}" + std::string(1, '\0'), "", false},
           {"}\n" + world + "}", "1 closing braces too many, the first in line 1", true},
           {world.substr(2) + "}", "1 braces missing", true}}) {
    recorder.messages.clear();
    EXPECT_EQ(ReadText(text)->readWithLoss(), isLoss) << says;
    EXPECT_EQ(recorder.messages.size(), says.empty() ? 0u : 1u) << says;
    const std::string said = recorder.messages.empty() ? "" : recorder.OnlyText();
    EXPECT_NE(said.find(says), std::string::npos) << said;
  }
}

// Also where faces behind a surplus brace join the brush that it has closed.
TEST_F(ReadLogTest, AFaceWithoutAPlaneHasOneBox) {
  const std::string cuboid = Cuboid(0, 0, 0, 8, 8, 8);
  const std::size_t half = cuboid.size() / 2 + cuboid.substr(cuboid.size() / 2).find('(');
  const std::size_t line = cuboid.find('\n', half) + 1;
  ReadText("{\n{\n( 0 0 0 ) ( 1 0 0 ) ( 2 0 0 ) flat 0 0 0 1 1\n" + cuboid.substr(2, line - 2) +
           "}\n" + cuboid.substr(line) + "}\n");
  EXPECT_EQ(std::ranges::count(recorder.messages, "Error! Quit?", &Message::title), 1);
}

TEST_F(ReadLogTest, BracesThatAreMissingOrTooManyCostNoBrush) {
  const std::string one = Cuboid(0, 0, 0, 8, 8, 8), other = Cuboid(16, 0, 0, 24, 8, 8);
  const std::string open = one.substr(0, one.rfind('}'));
  const auto parts = [&one](std::size_t place) {
    const std::size_t inside = one.find('\n', place) + 1;
    return one.substr(0, inside) + "}\n" + one.substr(inside);
  };
  for (const auto& [text, isLoss] :
       Cases<std::string, bool>{{"{//the world\n" + one + other + "}", false},
                                {"{\n" + open + other + "}", true},
                                {"{\n" + parts(one.size() / 3) + other + "}", true},
                                {"{\n" + parts(one.size() / 2) + other + "}", true}}) {
    const auto map = ReadText(text);
    EXPECT_EQ(map->readWithLoss(), isLoss) << text;
    std::vector<int> faces;
    for (const auto& brush : map->currentLayer()->getEntityList()) {
      faces.push_back(brush->brush.getNumFaces());
    }
    EXPECT_EQ(faces, (std::vector<int>{6, 6})) << text;
  }
}

TEST_F(ReadLogTest, ALongNameIsToldAndNoLoss) {
  const auto map = ReadText(WithBrush("{" + POINTS + "a_name_much_too_long 0 0 0 1 1\n}\n"));
  EXPECT_FALSE(map->readWithLoss());
  EXPECT_NE(recorder.OnlyText().find("1 texture names longer than 15 characters"),
            std::string::npos);
}

TEST_F(ReadLogTest, FilesOfOtherGamesAreNamedInOneMessage) {
  const std::string axes = "[ 1 0 0 8 ] [ 0 -1 0 16 ] 90 1 2\n";
  for (const auto& [brush, says, name] : Cases<std::string, std::string, std::string>{
           {"{" + POINTS + "brick " + axes + "}", "Valve 220", "brick"},
           {"{" + POINTS + "e1u1/brick 0 0 0 1 1 0 8 100\n}", "Quake 2 or Quake 3", "e1u1/brick"},
           {"{" + POINTS + "e1u1/brick 0 0 0 1 1\n}" + "{" + POINTS + "e1u1/b 0 0 0 1 1\n" +
                POINTS + "e1u1/c 0 0 0 1 1\n" + POINTS + "e1u1/c 0 0 0 1 1\n" + POINTS +
                "e1u1/c 0 0 0 1 1\n" + POINTS + "e1u1/c 0 0 0 1 1\n}",
            "Quake 2 or Quake 3", "e1u1/brick"},
           {"{ brushDef {" + POINTS + "( ( 0.1 0 0 ) ( 0 0.1 0 ) ) base/brick 0 0 0\n} }",
            "brush primitives", "base/brick"},
           {"{ patchDef2 { base/x ( 3 3 0 0 0 ) ( ( ( 0 0 0 0 0 ) ) ) } }", "Quake 3", ""},
           {"// written by QuArK\n", "QuArK", ""}}) {
    recorder.messages.clear();
    const auto map = ReadText(WithBrush(brush));
    EXPECT_NE(recorder.OnlyText().find(says), std::string::npos) << recorder.OnlyText();
    EXPECT_TRUE(map->readWithLoss());
    const auto& brushes = map->currentLayer()->getEntityList();
    EXPECT_EQ(brushes.back()->brush.getNumFaces(), 6) << brush;
    if (name.empty()) continue;
    EXPECT_EQ(brushes.front()->brush.face(0).Name(), name);
  }
  const auto valve = ReadText(WithBrush("{" + POINTS + "brick " + axes + "}"));
  const Face& face = valve->currentLayer()->getEntityList().front()->brush.face(0);
  EXPECT_EQ(face.xoff, 8);
  EXPECT_EQ(face.yoff, 16);
  EXPECT_EQ(face.rotation, 90);
  EXPECT_EQ(face.yscale, 2);
}

TEST_F(ReadLogTest, TheMapRemembersItsLossUntilItIsSaved) {
  const auto map = ReadText("{\n?\n}");
  EXPECT_TRUE(map->readWithLoss());
  ASSERT_TRUE(map->Export(temp.Path("other.map"), 0, {}));
  EXPECT_TRUE(map->readWithLoss());
  ASSERT_TRUE(map->Save(temp.Path("other.xmp"), 0, {}));
  EXPECT_FALSE(map->readWithLoss());
}

}  // namespace
}  // namespace ferrowand
