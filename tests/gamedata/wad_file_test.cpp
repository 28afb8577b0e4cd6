#include "gamedata/wad_file.h"

#include <filesystem>

#include "gamedata/gamedata_fixture.h"
#include "gamedata/wad_builder.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

class WadFileTest : public GameDataTest {
 protected:
  std::unique_ptr<WadFile> Make() { return std::make_unique<WadFile>(limits, palette, reporter); }
  std::unique_ptr<WadFile> Open(const std::string& bytes) {
    auto wad = Make();
    EXPECT_TRUE(wad->Open(dir.Write("test.wad", bytes)));
    return wad;
  }
  static std::string NamesOf(const WadFile& wad) {
    std::string names;
    for (const auto& texture : wad.Textures()) names += std::string(texture->Name()) + ' ';
    return names;
  }

  WadLimits limits;
};

TEST_F(WadFileTest, TheBuiltInWadIsACheckerboard) {
  const auto wad = Make();
  Texture& bad = *wad->BadTexture();
  EXPECT_EQ(wad->FileName(), "badwad");
  EXPECT_EQ(NamesOf(*wad), "BADTEXT ");
  EXPECT_EQ(wad->FindTexture("badtext"), &bad);
  const auto pixels = wad->Pixels(bad);
  ASSERT_EQ(pixels.size(), 64u * 64u);
  EXPECT_EQ(pixels[0], 255);
  EXPECT_EQ(pixels[1], 0);
  EXPECT_EQ(pixels[64], 0);
  EXPECT_EQ(pixels[65], 255);
  EXPECT_EQ(wad->numCached(), 0);
}

TEST_F(WadFileTest, OneWrongMiddleLetterOfTheIdentificationPasses) {
  for (const char* id : {"WAD2", "WXD2", "WAQ2"}) {
    EXPECT_TRUE(Make()->Open(dir.Write("test.wad", WadBytes({}, id)))) << id;
  }
  for (const char* id : {"WXX2", "WAD3", "PACK"}) {
    const auto wad = Make();
    EXPECT_FALSE(wad->Open(dir.Write("test.wad", WadBytes({}, id)))) << id;
    EXPECT_EQ(wad->FileName(), "badwad");
  }
  EXPECT_FALSE(Make()->Open(dir.Write("test.wad", "WAD2")));
  EXPECT_FALSE(Make()->Open(dir.Path("missing.wad")));
}

TEST_F(WadFileTest, OnlyMipTexturesAreTakenInDirectoryOrder) {
  const auto wad =
      Open(WadBytes({{"zeta", 24, 40, "a"}, {"sound", 8, 8, "b", 'E'}, {"alpha", 3, 3, "c"}}));
  EXPECT_EQ(NamesOf(*wad), "zeta alpha ");
  const Texture& zeta = *wad->Textures()[0];
  EXPECT_EQ(zeta.width, 24);
  EXPECT_EQ(zeta.height, 40);
  EXPECT_EQ(zeta.paddedWidth, 32);
  EXPECT_EQ(zeta.paddedHeight, 64);
  for (const auto& [size, padded] : Cases<std::uint16_t, std::uint16_t>{
           {0, 4}, {4, 4}, {5, 8}, {64, 64}, {65, 128}, {32768, 32768}, {65535, 32768}}) {
    EXPECT_EQ(PaddedSize(size), padded) << size;
  }
  EXPECT_EQ(LumpSize(24, 40), 40u + 24 * 40 + 12 * 20 + 6 * 10 + 3 * 5);
  EXPECT_EQ(LumpSize(3, 3), 40u + 9 + 1);
}

TEST_F(WadFileTest, TexturesAreFoundInAnyCaseAndTheFirstOfEqualsWins) {
  const std::string longest = "sixteen_letters_";
  const auto wad = Open(WadBytes({{"Wall", 8, 8, "a"}, {"WALL", 8, 8, "b"}, {longest, 8, 8, "c"}}));
  EXPECT_EQ(wad->FindTexture("wALL"), wad->Textures()[0].get());
  EXPECT_EQ(wad->FindTexture(longest), wad->Textures()[2].get());
  for (const char* name : {"", "wal", "wall2", "sixteen_letters_x", "BADTEXT"}) {
    EXPECT_EQ(wad->FindTexture(name), wad->BadTexture()) << name;
  }
}

TEST_F(WadFileTest, AnimationsCountFromTheOwnDigitRoundTheFramesThatExist) {
  const auto wad = Open(WadBytes({{"+2lava", 8, 8, "c"},
                                  {"+0lava", 8, 8, "a"},
                                  {"+1lava", 8, 8, "b"},
                                  {"+3gap", 8, 8, "d"},
                                  {"+alava", 8, 8, "e"}}));
  const auto frame = [&](const char* name, unsigned step) {
    return std::string(wad->AnimatedFrame(wad->FindTexture(name), step)->Name());
  };
  EXPECT_EQ(frame("+2lava", 0), "+2lava");
  EXPECT_EQ(frame("+2lava", 1), "+0lava");
  EXPECT_EQ(frame("+2lava", 2), "+2lava");
  EXPECT_EQ(frame("+0lava", 5), "+2lava");
  EXPECT_EQ(frame("+3gap", 1), "+3gap");
  EXPECT_EQ(frame("+alava", 1), "+alava");
}

TEST_F(WadFileTest, PixelsAreStretchedToThePaddedSize) {
  const auto wad = Open(WadBytes({{"three", 3, 3, "abcdefghi"}}));
  Texture& texture = *wad->Textures()[0];
  EXPECT_EQ(Text(wad->Pixels(texture)), "aabcaabcddefgghi");
  const auto rgb = wad->Rgb(texture);
  ASSERT_EQ(rgb.size(), 48u);
  EXPECT_EQ(Text(rgb.subspan(3, 6)), "aaabbb");
}

TEST_F(WadFileTest, TheCacheThrowsOutTheOldestWhetherUsedOrNot) {
  limits.maxCached = 2;
  const auto wad = Open(WadBytes({{"a", 8, 8, "a"}, {"b", 8, 8, "b"}, {"c", 8, 8, "c"}}));
  Texture &a = *wad->Textures()[0], &b = *wad->Textures()[1], &c = *wad->Textures()[2];
  wad->Pixels(a);
  wad->Rgb(b);
  wad->Pixels(a);
  wad->Pixels(c);
  EXPECT_TRUE(a.pixels.empty());
  EXPECT_TRUE(wad->IsCached(b) && wad->IsCached(c));
  EXPECT_EQ(Text(wad->Pixels(a)).substr(0, 1), "a");
  EXPECT_FALSE(wad->IsCached(b));
  EXPECT_TRUE(b.pixels.empty() && b.rgb.empty());
  wad->Unload(a);
  EXPECT_FALSE(a.pixels.empty()) << "what is in the cache is not unloaded";
  wad->Flush();
  EXPECT_TRUE(a.pixels.empty() && c.pixels.empty());
  EXPECT_EQ(wad->numCached(), 0);
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(WadFileTest, ASmallerCacheHoldsTheOldestAndFreesTheOthers) {
  std::vector<LumpPlan> plans;
  for (const char* name : {"0", "1", "2", "3", "4", "5"}) plans.push_back({name, 8, 8, name});
  const auto wad = Open(WadBytes(plans));
  for (const auto& texture : wad->Textures()) wad->Pixels(*texture);
  wad->SetCacheSize(2);
  EXPECT_EQ(wad->numCached(), 2);
  std::string held;
  for (const auto& texture : wad->Textures()) {
    if (!texture->pixels.empty()) held += texture->Name();
  }
  EXPECT_EQ(held, "01");
  wad->SetCacheSize(0);  // holds one
  EXPECT_EQ(wad->Pixels(*wad->Textures()[1])[0], '1');
  EXPECT_EQ(wad->numCached(), 1);
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(WadFileTest, ATextureAboveTheLimitShowsTheReplacementImageUntilThatIsAnother) {
  limits.maxTextureSize = 64 * 64;
  limits.maxCached = 1;
  const auto wad = Open(WadBytes({{"big", 128, 64, "a"}, {"fits", 64, 64, "b"}}));
  Texture& big = *wad->Textures()[0];
  const auto pixels = wad->Pixels(big);
  ASSERT_EQ(pixels.size(), 64u * 64u);
  EXPECT_EQ(pixels[0], 208);
  EXPECT_EQ(pixels[1], 0);
  EXPECT_EQ(big.paddedWidth, 64);
  EXPECT_EQ(big.width, 128);
  EXPECT_EQ(wad->Pixels(*wad->Textures()[1])[0], 'b');
  EXPECT_FALSE(wad->IsCached(big));
  EXPECT_FALSE(big.pixels.empty());
  for (const auto& [limit, first] : {std::pair(128u * 64, 'a'), std::pair(64u, '\xd0')}) {
    wad->SetLimits({.maxTextureSize = limit});
    EXPECT_EQ(wad->Pixels(big)[0], static_cast<std::uint8_t>(first)) << limit;
    EXPECT_EQ(big.paddedWidth, first == 'a' ? 128 : 64);
  }
}

TEST_F(WadFileTest, AnotherPaletteColoursWhatWasColouredBefore) {
  const auto wad = Open(WadBytes({{"a", 8, 8, "a"}}));
  Texture& a = *wad->Textures()[0];
  ASSERT_EQ(wad->RepresentativeColour(a, OneColour::Average).red, 'a');
  ASSERT_EQ(wad->Rgb(a)[0], 'a');
  dir.Write("quake.pal", "17 bytes of head:");  // and all black
  path.Add(dir.Path(""));
  palette.Load(path, {}, reporter);
  wad->ForgetColours();
  EXPECT_EQ(wad->Rgb(a)[0], 0);
  EXPECT_EQ(wad->RepresentativeColour(a, OneColour::Average).red, 0);
}

TEST_F(WadFileTest, WhatCannotBeReadShowsTheReplacementImage) {
  const auto opened = Open(WadBytes({{"gone", 8, 8, "a"}}));
  std::filesystem::resize_file(dir.Path("test.wad"), 60);
  EXPECT_EQ(opened->Pixels(*opened->Textures()[0])[0], 208);
  EXPECT_TRUE(recorder.messages.empty());
  const auto wad = Make();  // without a file, which is a failed check
  Texture stray;
  stray.width = stray.height = 8;
  EXPECT_EQ(wad->Pixels(stray)[0], 208);
  EXPECT_NE(
      recorder.OnlyText().find("At line 914 in file wadfile.cpp: \"file!=INVALID_HANDLE_VALUE\"."),
      std::string::npos);
}

TEST_F(WadFileTest, OneColourStandsForATexture) {
  const auto wad = Open(WadBytes({{"mixed", 4, 4, std::string("\x0a\x0a\x0a\x22", 4)},
                                  {"tie", 4, 4, std::string("\x30\x20\x20\x30", 4)},
                                  {"far", 4, 4, "z"}}));
  Texture& mixed = *wad->Textures()[0];
  EXPECT_EQ(wad->RepresentativeColour(mixed, OneColour::Average), (Colour{16, 16, 16}));
  wad->Pixels(*wad->Textures()[1]);
  wad->SetRepresentativeColours(OneColour::MostCommon);
  EXPECT_EQ(mixed.colour, (Colour{10, 10, 10}));
  EXPECT_EQ(wad->Textures()[1]->colour, (Colour{32, 32, 32}))
      << "of equals, the one that came to the count first";
  EXPECT_EQ(wad->Textures()[2]->colour, (Colour{})) << "not in the cache";
}

TEST_F(WadFileTest, AnImageFromMemoryIsNeitherPaddedNorUnloaded) {
  const auto wad = Open(WadBytes({{"old", 8, 8, "a"}}));
  Texture& texture = *wad->Textures()[0];
  wad->Pixels(texture);
  const std::vector<std::uint8_t> pixels = {1, 2, 3, 4, 5, 6};
  wad->SetImage(texture, "a name of sixteen bytes", pixels, 3, 2);
  EXPECT_EQ(texture.Name(), "a name of sixtee");
  EXPECT_EQ(texture.paddedWidth, 3);
  EXPECT_EQ(texture.entry.filepos, 0u);
  EXPECT_FALSE(wad->IsCached(texture));
  wad->Unload(texture);
  EXPECT_EQ(Text(wad->Pixels(texture)), "\1\2\3\4\5\6");
  wad->SetImage(texture, "short", pixels, 3, 3);
  EXPECT_EQ(texture.Name(), "a name of sixtee") << "nine texels were promised, six given";
}

// A lie about one entry leaves the sound texture "good" in its place; each is told once.
TEST_F(WadFileTest, EntriesThatLieAreLeftOutAndToldOnce) {
  const std::vector<LumpPlan> plans = {{"good", 8, 8, "g"}, {"liar", 8, 8, "l"}};
  const std::string sound = WadBytes(plans);
  const std::uint32_t lump = LumpSize(8, 8), liar = 12 + lump, directory = 12 + 2 * lump;
  // How many entries are left out, and how many textures are left.
  const Cases<const char*, std::size_t, std::uint32_t, unsigned, std::size_t> lies{
      {"lump at the end", directory + 32, directory + 64, 1, 1},
      {"lump behind the end", directory + 32, 0xFFFFFFFF, 1, 1},
      {"lump in the header", directory + 32, 4, 1, 1},
      {"no width", liar + 16, 0, 1, 1},
      {"no height", liar + 20, 0, 1, 1},
      {"width past 16 bits", liar + 16, 65537, 1, 1},
      {"too wide", liar + 16, 0xFFFFFFFF, 1, 1},
      {"larger than the file", liar + 16, 32768, 1, 1},
      {"more entries than bytes", 4, 0xFFFFFFFF, 0xFFFFFFFD, 2},
      {"directory in the header", 8, 11, 2, 0},
      {"directory behind the end", 8, 0xFFFFFFFF, 2, 0},
  };
  for (const auto& [what, offset, lie, leftOut, left] : lies) {
    recorder.messages.clear();
    std::string bytes = sound;
    bytes.replace(offset, 4, Le32(lie));
    const auto wad = Open(bytes);
    ASSERT_EQ(wad->Textures().size(), left) << what;
    EXPECT_EQ(wad->Pixels(*wad->FindTexture("good"))[0], left == 0 ? 255 : 'g') << what;
    EXPECT_EQ(recorder.OnlyText(), "Damaged wadfile \"" + wad->FileName() +
                                       "\": " + std::to_string(leftOut) +
                                       " entries could not be read, ignored")
        << what;
    EXPECT_EQ(recorder.messages[0].title, "Parsing Error");
  }
}

}  // namespace
}  // namespace ferrowand
