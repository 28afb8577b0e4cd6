#include "gamedata/palette.h"

#include "gamedata/gamedata_fixture.h"

namespace ferrowand {
namespace {

const std::string HEADER = "a header of 17 b\n";

class PaletteTest : public GameDataTest {
 protected:
  PaletteTest() { path.Add(dir.Path()); }

  // A file whose first numbers are given and whose other entries are 255 255 255.
  void Write(const std::string& numbers, int entries) {
    std::string text = HEADER + numbers;
    for (int i = entries; i < 256; ++i) text += "255 255 255\r\n";
    dir.Write("quake.pal", text);
  }
  void Load(const Gamma& gamma = {}) { palette.Load(path, gamma, reporter); }
};

TEST_F(PaletteTest, NumbersBehindTheHeaderAreTakenEachChannelAtItsGamma) {
  Write("0 1 2\n15\t16 17\r\n254 255 300\n", 3);
  Load();
  EXPECT_EQ(palette[0].ToColour(), (Colour{0, 1, 2}));
  EXPECT_EQ(palette[1].ToColour(), (Colour{15, 16, 17}));
  EXPECT_EQ(palette[2].ToColour(), (Colour{254, 255, 255}));
  EXPECT_EQ(palette[255].ToColour(), (Colour{255, 255, 255}));
  EXPECT_EQ(palette[255].used, 1);
  EXPECT_TRUE(recorder.messages.empty());
  Write("64 64 64\n", 1);
  Load({1, 2, 0.5f});
  EXPECT_EQ(palette[0].ToColour(), (Colour{64, 76, 53}));
}

TEST_F(PaletteTest, AFileThatEndsEarlyLeavesTheRestBlack) {
  dir.Write("quake.pal", HEADER + "1 2 3 4");
  Load();
  EXPECT_EQ(palette[0].ToColour(), (Colour{1, 2, 3}));
  EXPECT_EQ(palette[1].ToColour(), (Colour{4, 0, 0}));
  EXPECT_EQ(palette[255].ToColour(), (Colour{}));
  dir.Write("quake.pal", "");
  Load();
  EXPECT_EQ(palette[1].ToColour(), (Colour{}));
}

TEST_F(PaletteTest, TheFirstFolderThatHasTheFileGivesItAndWithoutOneThePaletteIsGrey) {
  Write("1 2 3\n", 1);
  SearchPath two, nowhere;
  two.Add(dir.Path("missing"));
  two.Add(dir.Path());
  palette.Load(two, {}, reporter);
  EXPECT_EQ(palette[0].ToColour(), (Colour{1, 2, 3}));
  EXPECT_TRUE(recorder.messages.empty());
  palette.Load(nowhere, {}, reporter);
  EXPECT_EQ(palette[7].ToColour(), (Colour{7, 7, 7}));
  EXPECT_EQ(recorder.OnlyText(),
            "Palette file quake.pal not found! Setting palette to grayscale. You must reinstall "
            "Ferrowand.");
  EXPECT_EQ(recorder.messages[0].title, "Error!");
}

TEST_F(PaletteTest, TheNearestColourIsTheLowestOfEquals) {
  Write("10 0 0\n20 0 0\n10 0 0\n", 3);
  Load();
  EXPECT_EQ(palette.NearestColour(10, 0, 0), 0);
  EXPECT_EQ(palette.NearestColour(15, 0, 0), 0);
  EXPECT_EQ(palette.NearestColour(16, 0, 0), 1);
  EXPECT_EQ(palette.NearestColour(250, 255, 255), 3);
}

TEST(GammaCorrect, KeepsTheEndsWhateverTheGamma) {
  for (const float gamma : {-1.0f, 0.0f, 0.1f, 0.7f, 1.0f, 1.9f, 3.3f, 254.0f, 1000.0f}) {
    EXPECT_EQ(GammaCorrect(0, gamma), 0) << gamma;
    EXPECT_EQ(GammaCorrect(255, gamma), 255) << gamma;
  }
  EXPECT_EQ(GammaCorrect(1, 1000), 255);
}

}  // namespace
}  // namespace ferrowand
