#include "operations/key_colour.h"

#include "operations/key_file.h"

#include <gtest/gtest.h>

#include "support/cases.h"

namespace ferrowand {
namespace {

TEST(KeyColourTest, AColourKeepsTheMeasureOfTheOneBefore) {
  for (const auto& [value, colour, other] :
       Cases<const char*, Colour, const char*>{{"255 128 0", {255, 128, 0}, "51 102 255"},
                                               {"1 .5 0", {255, 128, 0}, "0.2 0.4 1"},
                                               {"1 0 0", {255, 0, 0}, "0.2 0.4 1"},
                                               {"0 0 0", {0, 0, 0}, "51 102 255"},
                                               {"300 -4 1.5", {255, 0, 255}, "0.2 0.4 1"},
                                               {"red", {255, 255, 255}, "51 102 255"},
                                               {"1 2", {255, 255, 255}, "51 102 255"}}) {
    EXPECT_EQ(ColourOfKey(value), colour) << value;
    EXPECT_EQ(ColourForKey({51, 102, 255}, value), other) << value;
  }
}

TEST(KeyFile, IsNamedFromWhereTheGameCounts) {
  const std::string quake = "C:\\Games/Quake\\";
  EXPECT_EQ(GameFileForKey("c:\\games\\quake\\id1\\Sound\\doors\\Drop.wav", quake),
            "doors/Drop.wav");
  EXPECT_EQ(GameFileForKey("C:/Games/Quake/mymod/progs/a.mdl", quake), "progs/a.mdl");
  EXPECT_EQ(GameFileForKey("C:/Games/Quake/mymod/progs/a.mdl", "C:/Games/Quake"), "progs/a.mdl");
  EXPECT_EQ(GameFileForKey("D:/x/a.mdl", quake), "a.mdl");
  EXPECT_EQ(GameFileForKey("D:/x/a.wav", ""), "a.wav");
}

}  // namespace
}  // namespace ferrowand
