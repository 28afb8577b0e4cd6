#include "document/brush.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "base/text_reader.h"
#include "base/text_writer.h"
#include "document/read_log.h"
#include "gamedata/wad_library.h"
#include "support/brush_checks.h"
#include "support/cases.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

// A cube of 64 units from the origin, the faces in the order top, bottom, x+, x-, y+, y-.
const std::string CUBE =
    "( 0 0 64 ) ( 0 64 64 ) ( 64 64 64 ) top 0 0 0 1.0 1.0\n"
    "( 0 0 0 ) ( 64 0 0 ) ( 64 64 0 ) bottom 16 -8 90 1 2\n"
    "( 64 0 0 ) ( 64 0 64 ) ( 64 64 64 ) WBRICK1_5 0 0 0 1 1\n"
    "( 0 0 0 ) ( 0 64 0 ) ( 0 64 64 ) side 0 0 0 1 1\n"
    "( 0 64 0 ) ( 64 64 0 ) ( 64 64 64 ) side 0 0 0 1 1\n"
    "( 0 0 0 ) ( 0 0 64 ) ( 64 0 64 ) side 0 0 0 1 1\n";

class BrushTest : public testing::Test {
 protected:
  unsigned Read(const std::string& text, unsigned flags = 0) {
    TextReader reader(reporter);
    reader.Open(folder.Write("brush.txt", text));
    ReadLog log(reporter, flags);
    brush.ReadBody(reader, wads, log, reporter);
    rest.clear();
    while (!reader.AtEof()) rest += static_cast<char>(reader.GetChar());
    return log.flags;
  }
  std::string Written() {
    TextWriter out;
    brush.WriteFaces(out, reporter);
    return std::string(out.Text());
  }

  TempDir folder;
  MessageRecorder sink;
  Reporter reporter{sink};
  WadList wads;
  Brush brush{Colour{200, 0, 0}};
  std::string rest;
};

TEST_F(BrushTest, AReadCubeIsWrittenByItsWindings) {
  EXPECT_EQ(Read(CUBE + "}"), 0u);
  EXPECT_EQ(rest, "}");
  EXPECT_EQ(brush.getNumFaces(), 6);
  EXPECT_EQ(brush.Box(), (Bounds{{0, 0, 0}, {64, 64, 64}}));
  const std::string text = Written();
  EXPECT_EQ(text.substr(0, text.find('\n') + 1),
            "\t\t( 0 0 64 ) ( 0 64 64 ) ( 64 64 64 ) top 0 0 0 1.000000 1.000000\n");
  EXPECT_NE(text.find(" ) bottom 16 -8 90 1.000000 2.000000\n"), std::string::npos);
  EXPECT_NE(text.find(" ) wbrick1_5 0 0 0 1.000000 1.000000\n"), std::string::npos);
  EXPECT_TRUE(sink.messages.empty());

  // What was written reads back as the same planes.
  Brush first = brush.Copy();
  brush.Clear();
  Read(text + "}");
  ASSERT_EQ(brush.getNumFaces(), 6);
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(brush.face(i).plane.normal, first.face(i).plane.normal);
    EXPECT_EQ(brush.face(i).plane.dist, first.face(i).plane.dist);
  }
}

TEST_F(BrushTest, AMissingParenthesisIsAFailedAssertionAndReadingGoesOn) {
  Read("( 0 0 0 ( 64 0 0 ) ( 64 64 0 ) t 0 0 0 1 1\n" + CUBE + "}");
  ASSERT_FALSE(sink.messages.empty());
  EXPECT_EQ(sink.messages.front().title, "ASSERTION FAILURE");
  EXPECT_NE(sink.messages.front().text.find("\"c==chr\""), std::string::npos);
  EXPECT_EQ(rest, "}");
}

// Nor does it take anything of what follows its line.
TEST_F(BrushTest, AFaceWhoseLineBreaksOffIsLostAloneOrKeepsWhatItHas) {
  const std::string points = "( 0 0 99 ) ( 0 64 99 ) ( 64 64 99 ) ";
  const std::string rest = "\n" + CUBE + "}";
  for (const auto& [line, isLost, left] :
       Cases<std::string, bool, std::string>{{"( 0 0 99 ) ( 0 64", true, "}"},
                                             {"( 0 0 99 )", true, "}"},
                                             {points, false, "}"},
                                             {points + "lid", false, "}"},
                                             {points + "lid 0 0 0 1", false, "}"},
                                             {points + "{lid 0 0 0 1 1", false, "}"},
                                             {points + "lid 0 0 0 1 1}", false, "}" + rest},
                                             {points + "}", false, "}" + rest},
                                             {points + "{ \"", false, "{ \"" + rest},
                                             {"( 0 0 99 ) } ( 0 64", true, "} ( 0 64" + rest}}) {
    brush.Clear();
    ReadLog log(reporter);
    TextReader reader(reporter);
    const std::string text = line + rest;
    reader.OpenText(text);
    brush.ReadBody(reader, wads, log, reporter);
    EXPECT_EQ(text.substr(reader.Offset()), left) << line;
    EXPECT_EQ(log.Met(Loss::Face), isLost ? 1u : 0u) << line;
    if (left != "}") continue;
    EXPECT_EQ(brush.Box(), (Bounds{{0, 0, 0}, {64, 64, 64}})) << line;
  }
}

TEST_F(BrushTest, TheEndOfTheFileIsToldOnceALoad) {
  EXPECT_EQ(Read(CUBE), READ_END_OF_FILE);
  EXPECT_EQ(sink.OnlyText(),
            "Unexpected end of file in brush definition! Chances are, the end of this file has "
            "been but off, or there are mismatched braces.");
  EXPECT_EQ(sink.messages.at(0).title, "Parsing Error");
  EXPECT_EQ(brush.getNumFaces(), 6);
  EXPECT_EQ(Read("", READ_END_OF_FILE), READ_END_OF_FILE);
  EXPECT_EQ(sink.messages.size(), 1u);
}

// The cube, and its top again until there are so many faces.
std::string Faces(int count) {
  std::string text = CUBE;
  for (int i = 6; i < count; ++i) {
    text += "( 0 0 64 ) ( 0 64 64 ) ( 64 64 64 ) top" + std::to_string(i) + " 0 0 0 1 1\n";
  }
  return text;
}

TEST_F(BrushTest, The33rdFaceIsRefusedAndToldOnceALoad) {
  const unsigned flags = Read(Faces(34) + "}");
  EXPECT_EQ(flags, READ_FACES_REPORTED);
  EXPECT_EQ(sink.OnlyText(),
            "At least one brush in this map has too many faces.\n\nThis first occured at line 33.\n"
            " Ferrowand will attempt to continue, but be warned: data will be lost!");
  EXPECT_EQ(rest, "}");
  ASSERT_EQ(brush.getNumFaces(), 32);
  EXPECT_EQ(brush.face(31).Name(), "top31");
  EXPECT_EQ(brush.AddFace({}, {}, {}), nullptr);
  EXPECT_FALSE(brush.AddFace(Face()));
  brush.Clear();
  Read(Faces(40) + "}", flags);
  EXPECT_EQ(sink.messages.size(), 1u);
}

TEST_F(BrushTest, ALongerTextureNameThan15CharactersIsOnlyWrittenBack) {
  const std::string points = "( 0 0 64 ) ( 0 64 64 ) ( 64 64 64 ) ";
  Read(points + "Sixteen_Letters_ 1 2 3 4 5\n" + points + "fifteen_letters 1 2 3 1 1\n" + points +
       "\"\" 1 2 3 4 5\n" + points + "@AaZz[ 1 2 3 1 1\n}");
  ASSERT_EQ(brush.getNumFaces(), 4);
  EXPECT_EQ(brush.face(0).Name(), "");
  EXPECT_EQ(brush.face(1).Name(), "fifteen_letters");
  EXPECT_EQ(brush.face(2).Name(), "");
  // Without a name it keeps its numbers over a save.
  const std::string text = Written();
  EXPECT_NE(text.find(" ) Sixteen_Letters_ 1 2 3 4.000000 5.000000\n"), std::string::npos);
  EXPECT_NE(text.find(" ) \"\" 1 2 3 4.000000 5.000000\n"), std::string::npos);
  EXPECT_NE(text.find(" ) @aazz[ 1 2 3 "), std::string::npos) << "others in small letters";
  brush = brush.Copy();
  EXPECT_EQ(Written(), text);
  brush.face(0).SetName("other");
  EXPECT_EQ(Written().find("Sixteen"), std::string::npos);
}

TEST_F(BrushTest, PointsAreCutOffTowardsZeroAndHugeNumbersTheLargestThereAre) {
  Read("( 1.5 2 3 ) ( -1.9 7x y ) ( 9 0 0 ) t 0 0 0 1 1\n}");
  const std::array<Vec3, 3> expected = {Vec3(1, 2, 3), Vec3(-1, 7, 0), Vec3(9, 0, 0)};
  EXPECT_EQ(brush.face(0).planepts, expected);
  brush.Clear();
  Read(
      "( 99999999999 0 0 ) ( 99999999999 0 64 ) ( 99999999999 64 64 ) t 1e300 -1e300 0 1e-99 1\n}");
  ASSERT_EQ(brush.getNumFaces(), 1);
  EXPECT_EQ(brush.face(0).xoff, std::numeric_limits<float>::max());
  EXPECT_EQ(brush.face(0).yoff, -std::numeric_limits<float>::max());
  EXPECT_EQ(Written(),
            "\t\t( 2147483647 -8192 8192 ) ( 2147483647 8192 8192 ) ( 2147483647 8192 -8192 ) t "
            "2147483647 -2147483648 0 0.000000 1.000000\n");
}

TEST_F(BrushTest, AFaceThatDoesNotTouchTheSolidIsDroppedAndTwoOnOnePlaneAreKept) {
  Read("( 0 0 80 ) ( 0 64 80 ) ( 64 64 80 ) away 0 0 0 1 1\n" + CUBE + "}");
  ASSERT_EQ(brush.getNumFaces(), 6);
  EXPECT_EQ(brush.face(0).Name(), "top");
  EXPECT_EQ(brush.Faces().capacity(), brush.Faces().size());
  brush.Clear();
  Read("( 0 0 64 ) ( 0 64 64 ) ( 64 64 64 ) twin 0 0 0 1 1\n" + CUBE + "}");
  ASSERT_EQ(brush.getNumFaces(), 7);
  EXPECT_EQ(brush.Box(), (Bounds{{0, 0, 0}, {64, 64, 64}}));
  EXPECT_TRUE(sink.messages.empty());
}

TEST_F(BrushTest, AFaceWithoutNormalIsToldOnceALoadAndWrittenByItsOwnPoints) {
  const std::string line = "( 1 1 1 ) ( 2 2 2 ) ( 9 9 9 ) line 0 0 0 1 1\n";
  const unsigned flags = Read(line + CUBE + line + "}");
  EXPECT_EQ(sink.OnlyText(), "BasePolyForPlane: no axis found");
  EXPECT_EQ(flags, READ_PLANE_REPORTED);
  ASSERT_EQ(brush.getNumFaces(), 8);
  EXPECT_EQ(brush.Box(), (Bounds{{0, 0, 0}, {64, 64, 64}}));
  EXPECT_TRUE(Written().starts_with("\t\t( 1 1 1 ) ( 2 2 2 ) ( 9 9 9 ) line 0 0 0 "));
  brush.Translate({10, 0, 0});
  EXPECT_TRUE(Written().starts_with("\t\t( 11 1 1 ) ( 12 2 2 ) ( 19 9 9 ) line 0 0 0 "));
  brush.Clear();
  Read(line + CUBE + "}", flags);
  EXPECT_EQ(sink.messages.size(), 1u);
  EXPECT_EQ(brush.getNumFaces(), 7);
}

TEST_F(BrushTest, NumbersAreRoundedHalfAwayFromZero) {
  Read(CUBE + "}");
  brush.Translate({15.5f, -15.5f, 0.25f});
  brush.face(0).xoff = -2.5f;
  brush.face(0).rotation = 44.5f;
  EXPECT_TRUE(Written().starts_with(
      "\t\t( 16 -16 64 ) ( 16 49 64 ) ( 80 49 64 ) top -3 0 45 1.000000 1.000000\n"));
}

TEST_F(BrushTest, AFaceWithoutWindingPointsIsAFailedAssertionAndKeepsItsLine) {
  brush.AddFace({0, 0, 64}, {0, 64, 64}, {64, 64, 64})->SetName("t");
  EXPECT_EQ(Written(), "\t\t( 0 0 64 ) ( 0 64 64 ) ( 64 64 64 ) t 0 0 0 0.000000 0.000000\n");
  EXPECT_NE(sink.OnlyText().find("in file brush.cpp: \"w->numpoints>0\""), std::string::npos);
}

TEST_F(BrushTest, RebuildingGrowsTheBoundsAndNeverShrinksThem) {
  Read(CUBE + "}");
  brush.face(0).plane.dist = 32;
  brush.face(2).plane.dist = 100;
  brush.Rebuild(reporter);
  EXPECT_EQ(brush.Box(), (Bounds{{0, 0, 0}, {100, 64, 64}}));
  brush.Clear();
  EXPECT_TRUE(brush.Box().IsEmpty());
  EXPECT_EQ(brush.getNumFaces(), 0);
}

TEST_F(BrushTest, RepeatedPointsAreDroppedFromAWinding) {
  const std::pair<std::vector<Vec3>, std::vector<Vec3>> cases[] = {
      {{{0, 0, 0}, {0, 0, 0}, {0, 8, 0}, {8, 8, 0}}, {{0, 0, 0}, {0, 8, 0}, {8, 8, 0}}},
      {{{0, 0, 0}, {0, 8, 0}, {8, 8, 0}, {0, 0, 0}}, {{0, 0, 0}, {0, 8, 0}, {8, 8, 0}}},
      {{{0, 0, 0}, {0, 8, 0}, {0, 8.001f, 0}, {8, 8, 0}},
       {{0, 0, 0}, {0, 8, 0}, {0, 8.001f, 0}, {8, 8, 0}}},
      {{{5, 5, 5}, {5, 5, 5}, {5, 5, 5}}, {}},
  };
  for (const auto& [points, expected] : cases) {
    Face face;
    face.w = WindingOf(points, reporter);
    UpdateFromWinding(face);
    std::vector<Vec3> left;
    for (const WindingPoint& p : face.w->Points()) left.push_back(p.Position());
    std::ranges::rotate(left, std::ranges::find(left, Vec3(0, 0, 0)));
    EXPECT_EQ(left, expected);
  }
}

TEST_F(BrushTest, TextureCoordinatesFollowTheAxesOfTheNearestWall) {
  Texture texture;
  texture.width = 64;
  texture.height = 32;
  // Three points of the plane, the rotation, the texture, and s and t at the point (8, 16, 24).
  const Cases<Vec3, Vec3, Vec3, float, Texture*, float, float> cases{
      {{0, 0, 24}, {0, 64, 24}, {64, 64, 24}, 0, nullptr, 8 / 2.0f + 3, -16 + 5},    // up
      {{0, 0, 24}, {64, 64, 24}, {0, 64, 24}, 0, nullptr, 8 / 2.0f + 3, -16 + 5},    // down
      {{8, 0, 0}, {8, 0, 64}, {8, 64, 64}, 0, nullptr, 16 / 2.0f + 3, -24 + 5},      // x
      {{0, 16, 0}, {64, 16, 0}, {64, 16, 64}, 0, nullptr, 8 / 2.0f + 3, -24 + 5},    // y
      {{0, 0, 24}, {0, 64, 24}, {64, 64, 24}, 90, nullptr, 16 / 2.0f + 3, 8 + 5},    // turned
      {{0, 0, 24}, {0, 64, 24}, {64, 64, 24}, 0, &texture, 7 / 64.0f, -11 / 32.0f},  // bound
      // Of two walls equally near the first of the table is taken, the floor before the wall.
      {{8, 0, 24}, {8, 64, 24}, {72, 64, -40}, 0, nullptr, 8 / 2.0f + 3, -16 + 5},
  };
  for (const auto& [p0, p1, p2, rotation, bound, across, down] : cases) {
    Face face;
    face.xoff = 3;
    face.yoff = 5;
    face.xscale = 2;  // and a yscale of 0, which counts as 1
    face.rotation = rotation;
    face.texture = bound;
    face.w = WindingOf({p0, p1, p2, {8, 16, 24}}, reporter);
    UpdateFromWinding(face);
    EXPECT_EQ(face.yscale, 1);
    EXPECT_NEAR(face.w->Points()[3].s, across, 1e-5);
    EXPECT_NEAR(face.w->Points()[3].t, down, 1e-5);
  }
}

}  // namespace
}  // namespace ferrowand
