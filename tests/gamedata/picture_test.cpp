#include "gamedata/picture.h"

#include <gtest/gtest.h>

#include "gamedata/gamedata_fixture.h"
#include "gamedata/palette.h"
#include "gamedata/picture_import.h"
#include "gamedata/texture_name.h"
#include "gamedata/wad_builder.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

using Colours = std::vector<PictureColour>;

std::string Le16Text(int value) {
  return {static_cast<char>(value), static_cast<char>(value >> 8)};
}

// Of 3 x 2 pixels; the palette begins at index 1.
std::string Tga(int type, int bits, int descriptor, const std::string& pixels,
                const std::string& palette = "") {
  const int count = static_cast<int>(palette.size() / 3);
  return std::string("\2", 1) + static_cast<char>(palette.empty() ? 0 : 1) +
         static_cast<char>(type) + Le16Text(1) + Le16Text(count) + static_cast<char>(24) +
         std::string(4, '\0') + Le16Text(3) + Le16Text(2) + static_cast<char>(bits) +
         static_cast<char>(descriptor) + "id" + palette + pixels;
}

TEST(Tga, EveryKindFromEveryCornerIsReadAndNothingThatEndsEarly) {
  const PictureColour a{1, 2, 3}, b{4, 5, 6}, half{4, 5, 6, 100};
  const std::string A = "\3\2\1", B = "\6\5\4", palette = A + B;
  const Colours upright{a, b, b, b, a, a};
  const Cases<const char*, std::string, Colours> cases{
      {"from the top", Tga(2, 24, 0x20, A + B + B + B + A + A), upright},
      {"from below", Tga(2, 24, 0, B + A + A + A + B + B), upright},
      {"from the right", Tga(2, 24, 0x30, B + B + A + A + A + B), upright},
      {"in packets over the end of a row",
       Tga(10, 24, 0x20, std::string("\0", 1) + A + "\x82" + B + "\1" + A + A), upright},
      {"a run that is too long", Tga(10, 24, 0x20, "\xff" + A), {a, a, a, a, a, a}},
      {"alpha",
       Tga(2, 32, 0x28,
           A + "\xff" + B + "\x64" + A + "\xff" + A + "\xff" + A + "\xff" + A + "\xff"),
       {a, half, a, a, a, a}},
      {"alpha that is none",
       Tga(10, 32, 0x20, "\x85" + A + std::string("\0", 1)),
       {a, a, a, a, a, a}},
      {"five bits", Tga(10, 16, 0x20, "\x85\x1f\x7c"), Colours(6, {255, 0, 255})},
      {"grey", Tga(11, 8, 0x20, "\x85\x09"), Colours(6, {9, 9, 9})},
  };
  for (const auto& [what, bytes, expected] : cases) {
    const auto picture = ReadTga(bytes);
    ASSERT_TRUE(picture) << what;
    EXPECT_EQ(picture->width * 10 + picture->height, 32) << what;
    EXPECT_EQ(picture->colours, expected) << what;
    for (std::size_t length = 0; length < bytes.size(); ++length) {
      EXPECT_FALSE(ReadTga(std::string_view(bytes).substr(0, length))) << what << length;
    }
  }
  const auto indexed = ReadTga(Tga(1, 8, 0x20, "\1\2\1\1\2\1", palette));
  ASSERT_TRUE(indexed);
  EXPECT_EQ(indexed->indices, (std::vector<std::uint8_t>{1, 2, 1, 1, 2, 1}));
  EXPECT_EQ(indexed->colours, (Colours{{}, a, b}));
  for (std::size_t at = 0; at < 18; ++at) {
    std::string damaged = Tga(2, 24, 0x20, A + B + B + B + A + A);
    damaged[at] = '\xff';
    ReadTga(damaged);  // whatever comes of it, nothing outside is read
  }
}

// The grey palette: colour i, i, i is index i.
class PictureImportTest : public GameDataTest {
 protected:
  static Picture Plain(int width, int height, PictureColour colour) {
    return {width, height, {}, Colours(static_cast<std::size_t>(width * height), colour)};
  }
  std::vector<std::uint8_t> Made(const Picture& picture, const char* name, ImportRules rules = {}) {
    made = MakeTexture(picture, name, rules, palette);
    EXPECT_EQ(made->pixels.size(), std::size_t{made->width} * made->height);
    return made->pixels;
  }
  std::unique_ptr<Texture> made;
};

TEST_F(PictureImportTest, ColoursAndHolesAreThoseThatTheGameGivesTheName) {
  const Cases<const char*, PictureColour, bool, int> cases{
      {"wall", {100, 100, 100}, false, 100}, {"wall", {250, 250, 250}, false, 223},
      {"wall", {250, 250, 250}, true, 250},  {"wall", {255, 255, 255}, true, 255},
      {"{gate", {255, 255, 255}, true, 254}, {"{gate", {255, 255, 255}, false, 223},
      {"{gate", {9, 9, 9, 127}, false, 255}, {"{gate", {9, 9, 9, 128}, false, 9},
      {"wall", {9, 9, 9, 0}, false, 9},
  };
  for (const auto& [name, colour, fullbrights, index] : cases) {
    const auto pixels = Made(Plain(16, 16, colour), name, {PictureFit::Crop, fullbrights});
    EXPECT_EQ(pixels, std::vector<std::uint8_t>(256, static_cast<std::uint8_t>(index)))
        << name << int{colour.red} << int{colour.alpha};
  }
  Picture own{16, 16, std::vector<std::uint8_t>(256, 255), {}};
  EXPECT_EQ(Made(own, "{gate"), own.indices) << "without colours it is in the game's";
  for (int i = 0; i < 256; ++i) {
    const auto grey = static_cast<std::uint8_t>(i);
    own.colours.push_back({grey, grey, grey});
  }
  EXPECT_EQ(Made(own, "wall"), own.indices);
  own.colours[255].red = 0;
  EXPECT_NE(Made(own, "wall"), own.indices);

  Picture sky = Plain(256, 128, {0, 0, 0, 0});
  std::vector<std::uint8_t> pixels = Made(sky, "Sky4");
  EXPECT_EQ(pixels[127], 0);
  sky = Plain(256, 128, {0, 0, 0});
  pixels = Made(sky, "Sky4");
  EXPECT_EQ(pixels[127], 1) << "no hole, nearly black";
  EXPECT_EQ(pixels[128], 0);
  Made(Plain(20, 20, {}), "sky");
  EXPECT_EQ(made->width * 1000 + made->height, 256128);
}

TEST_F(PictureImportTest, SidesBecomeMultiplesOf16AsIsAsked) {
  const Cases<int, int, int, int> cases{{1, 16, 16, 16},         {16, 16, 16, 16}, {23, 16, 32, 16},
                                        {24, 16, 32, 32},        {40, 32, 48, 48}, {47, 32, 48, 48},
                                        {4096, 4096, 4096, 4096}};
  for (const auto& [side, cropped, padded, scaled] : cases) {
    const Picture picture{side, 1, {}, {}};
    EXPECT_EQ(ImportedSize(picture, "a", PictureFit::Crop).width, cropped);
    EXPECT_EQ(ImportedSize(picture, "a", PictureFit::Pad).width, padded);
    EXPECT_EQ(ImportedSize(picture, "a", PictureFit::Scale).width, scaled);
  }
  // 32 columns of 0, 4, 8 ... 124.
  Picture ramp{32, 16, {}, {}};
  for (int i = 0; i < 32 * 16; ++i) {
    const auto grey = static_cast<std::uint8_t>(i % 32 * 4);
    ramp.colours.push_back({grey, grey, grey});
  }
  ramp.width = 23;
  ramp.height = 16;
  Picture narrow{23, 16, {}, {}};
  for (int i = 0; i < 23 * 16; ++i) {
    const auto grey = static_cast<std::uint8_t>(i % 23 * 4);
    narrow.colours.push_back({grey, grey, grey});
  }
  EXPECT_EQ(Made(narrow, "a", {PictureFit::Crop, false})[16 * 3 + 15], 60);
  EXPECT_EQ(Made(narrow, "a", {PictureFit::Pad, false})[32 * 3 + 31], 88) << "its last column";
  const auto scaled = Made(narrow, "a", {PictureFit::Scale, false});
  EXPECT_EQ(made->width, 16 + 16 * (23 - 16 >= 8));
  EXPECT_EQ(scaled[0], 0);
  EXPECT_NEAR(scaled[15], 86, 2) << "over the whole width";
}

TEST_F(PictureImportTest, SmallerLevelsKeepTheHolesOfAFence) {
  WadFile wad(WadLimits{}, palette, reporter);
  ASSERT_TRUE(wad.Open(dir.Write("test.wad", WadBytes({}))));
  for (const char* name : {"{gate", "gate"}) {
    Picture picture = Plain(16, 16, {100, 100, 100});
    // Of the first block of four two are holes, of the second one.
    for (const int hole : {0, 1, 2}) picture.colours[static_cast<std::size_t>(hole)].alpha = 0;
    auto texture = MakeTexture(picture, name, {}, palette);
    ASSERT_TRUE(wad.AddTexture(std::move(texture)));
    const std::uint32_t level = wad.FindTexture(name)->entry.filepos + 40 + 256;
    const std::string file = dir.Read("test.wad");
    EXPECT_EQ(file.substr(level, 3), *name == '{' ? "\xff"
                                                    "dd"
                                                  : "ddd");
  }
}

TEST_F(PictureImportTest, TexturesOfOtherGamesAreFoundAndWhatIsCutOffIsNot) {
  std::string colours;
  for (int i = 0; i < 256; ++i) colours += std::string(3, static_cast<char>(255 - i));
  const std::string tail = std::string("\0\1", 2) + colours;
  const std::string plain = LumpBytes({"wall", 16, 16, "ab"}),
                    fence = LumpBytes({"{gate", 16, 8, "\xff"});
  const auto entry = [](std::size_t at, std::size_t size, const char* name) {
    return EntryBytes(static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(size),
                      {name, 0, 0, "", 'C'});
  };
  const std::string lumps = plain + tail + fence + tail;
  const std::string wad3 =
      "WAD3" + Le32(2) + Le32(static_cast<std::uint32_t>(12 + lumps.size())) + lumps +
      entry(12, plain.size() + tail.size(), "wall") +
      entry(12 + plain.size() + tail.size(), fence.size() + tail.size(), "{gate");
  auto found = ReadTexturesOfGames(wad3);
  ASSERT_TRUE(found && found->size() == 2u);
  EXPECT_EQ((*found)[1].name, "{gate");
  EXPECT_EQ((*found)[0].picture.indices[1], 'b');
  EXPECT_EQ((*found)[0].picture.colours['b'].red, 255 - 'b');
  EXPECT_EQ((*found)[1].picture.colours[255].alpha, 0);
  EXPECT_EQ((*found)[0].picture.colours[255].alpha, 255);

  for (const std::uint32_t version : {29u, 30u}) {
    const std::string own = version == 30 ? plain + tail : plain;
    const std::string lump = Le32(3) + Le32(16) + Le32(0xFFFFFFFF) + Le32(5000) + own;
    std::string level = Le32(version) + std::string(120, '\0');
    level.replace(20, 8, Le32(124) + Le32(static_cast<std::uint32_t>(lump.size())));
    level += lump;
    found = ReadTexturesOfGames(level);
    ASSERT_TRUE(found && found->size() == 1u) << version;
    EXPECT_EQ((*found)[0].picture.colours.size(), version == 30 ? 256u : 0u);
    for (std::size_t length = 0; length < level.size(); length += 7) {
      const auto cut = ReadTexturesOfGames(std::string_view(level).substr(0, length));
      EXPECT_TRUE(!cut || cut->empty() || length >= level.size() - 84) << length;
    }
  }
  EXPECT_FALSE(ReadTexturesOfGames(WadBytes({})));
}

TEST(TextureName, IsWhatMapsAndFilesCanHold) {
  for (const char* good : {"a", "*lava", "{gate", "+0slip", "fifteen_letters"}) {
    EXPECT_EQ(WhyNoTextureName(good), "") << good;
  }
  for (const char* bad : {"", "sixteen_letters_", "two words", "quo\"te", "line\n", "\t"}) {
    EXPECT_NE(WhyNoTextureName(bad), "") << bad;
  }
  EXPECT_EQ(TextureNameOfFile("d/#lava.png"), "*lava");
  EXPECT_EQ(FileNameOfTexture("*lava"), "#lava");
}

}  // namespace
}  // namespace ferrowand
