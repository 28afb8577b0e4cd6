#include "gamedata/pcx.h"

#include "gamedata/gamedata_fixture.h"
#include "gamedata/wad_builder.h"
#include "gamedata/wad_file.h"

namespace ferrowand {
namespace {

std::string Le16(unsigned value) {
  return Le32(value).substr(0, 2);
}

std::string PcxHeader(unsigned xmin, unsigned ymin, unsigned xmax, unsigned ymax) {
  std::string header = "\x0a\x05\x01\x08" + Le16(xmin) + Le16(ymin) + Le16(xmax) + Le16(ymax);
  header.resize(65);
  header.push_back(1);
  header.resize(128);
  return header;
}

// The marker, then entry i at i, i, i; entry 7 is red.
std::string PcxPalette() {
  std::string text = "\x0c";
  for (int i = 0; i < 256; ++i) {
    text += i == 7 ? std::string("\xff\0\0", 3) : std::string(3, static_cast<char>(i));
  }
  return text;
}

class PcxTest : public GameDataTest {
 protected:
  std::string Write(const std::string& bytes) { return dir.Write("in.pcx", bytes); }
  // The pixels of a picture 3 wide and 2 high.
  std::string Decoded(const std::string& rows) {
    const auto texture = MakeFromPcx(Write(PcxHeader(0, 0, 2, 1) + rows + PcxPalette()), palette);
    return texture ? Text(texture->pixels) : "nothing";
  }
  // A WAD of one texture; and the file that its export makes.
  Texture& OpenTexture(const LumpPlan& plan) {
    EXPECT_TRUE(wad.Open(dir.Write("test.wad", WadBytes({plan}))));
    return *wad.Textures()[0];
  }
  std::string Export(Texture& texture) {
    EXPECT_TRUE(ExportPcx(texture, dir.Path("out.pcx"), palette, reporter));
    return dir.Read("out.pcx");
  }
  // The encoded rows of a picture of one row.
  std::string EncodedRow(const std::string& pixels) {
    Texture texture;
    texture.wad = &wad;
    const std::vector<std::uint8_t> bytes(pixels.begin(), pixels.end());
    wad.SetImage(texture, "row", bytes, static_cast<std::uint16_t>(bytes.size()), 1);
    const std::string file = Export(texture);
    return file.substr(128, file.size() - 128 - 769);
  }

  WadFile wad{WadLimits{}, palette, reporter};
};

TEST_F(PcxTest, RowsAreWrittenInRunsOfAtMost63) {
  const std::string c1 = "\xc1", c0 = "\xc0";
  EXPECT_EQ(EncodedRow(std::string(100, 7)), "\xff\x07\xe5\x07");
  EXPECT_EQ(EncodedRow("\xc8"
                       "a"),
            "\xc1\xc8"
            "a");
  EXPECT_EQ(EncodedRow("\x96"
                       "a"),
            "\x96"
            "a");
  EXPECT_EQ(EncodedRow(c0 + "a" + c1), c0 + std::string("a\xc1\xc1\0", 4));
  EXPECT_EQ(EncodedRow("aabc"), "\302abc");
}

TEST_F(PcxTest, AnExportIsA256ColourPictureInTheEditorsPaletteAndReadsBack) {
  const std::string file = Export(OpenTexture({"wall", 16, 4, "abcdefgh"}));
  std::string header = PcxHeader(0, 0, 15, 3);
  header.replace(12, 4, Le16(96) + Le16(96));
  header.replace(66, 4, Le16(16) + Le16(1));
  EXPECT_EQ(file.substr(0, 128), header);
  EXPECT_EQ(file.substr(128, 16), "abcdefghabcdefgh");
  EXPECT_EQ(file.substr(file.size() - 769, 7), std::string("\x0c\0\0\0\1\1\1", 7));
  EXPECT_EQ(file.size(), 128u + 64 + 769);
  const auto again = MakeFromPcx(dir.Path("out.pcx"), palette);
  ASSERT_TRUE(again);
  EXPECT_EQ(Text(again->pixels), Text(wad.Pixels(*wad.Textures()[0])));
  EXPECT_FALSE(ExportPcx(*wad.BadTexture(), dir.Path("missing/out.pcx"), palette, reporter));
  EXPECT_FALSE(recorder.messages.empty());
}

TEST_F(PcxTest, AnExportOfAnySizeComesBackWhole) {
  WadLimits limits;
  limits.maxTextureSize = 1;
  WadFile small(limits, palette, reporter);
  for (WadFile* file : {&wad, &small}) {
    ASSERT_TRUE(file->Open(dir.Write("odd.wad", WadBytes({{"odd", 21, 13, "abcdefghi"}}))));
    Export(*file->Textures()[0]);
    const auto again = MakeFromPcx(dir.Path("out.pcx"), palette);
    ASSERT_TRUE(again);
    std::string expected;
    for (int i = 0; i < 21 * 13; ++i) expected += "abcdefghi"[i % 9];
    EXPECT_EQ(Text(again->pixels), expected);
  }
}

TEST_F(PcxTest, APictureBecomesATextureNamedAfterItsFile) {
  const std::string picture = PcxHeader(10, 20, 13, 21) + "abcd" + "\xc4\x07" + PcxPalette();
  const auto texture = MakeFromPcx(Write(picture), palette);
  ASSERT_TRUE(texture);
  EXPECT_EQ(texture->width, 4);
  EXPECT_EQ(texture->height, 2);
  EXPECT_EQ(texture->paddedHeight, 4);
  EXPECT_EQ(texture->Name(), "in");
  // Red is nearest to the grey of 85, which is 'U'.
  EXPECT_EQ(Text(texture->pixels), "abcdUUUU");
  const auto longer = MakeFromPcx(dir.Write("a_name_of_17_byte.old.pcx", picture), palette);
  ASSERT_TRUE(longer);
  EXPECT_EQ(longer->Name(), "a_name_of_17_by");
}

TEST_F(PcxTest, RowsEndAtAnEvenByteAndRunsAreCutAtTheWidth) {
  EXPECT_EQ(Decoded("abcxdefx"), "abcdef");
  EXPECT_EQ(Decoded("a\377bcde\301x"), "abbcde");
}

TEST_F(PcxTest, FilesThatAreNoSuchPictureAreRefused) {
  const std::string rows = "abcd", tail = PcxPalette();
  const auto with = [&](std::size_t offset, char value) {
    std::string bytes = PcxHeader(0, 0, 3, 0) + rows + tail;
    bytes[offset] = value;
    return bytes;
  };
  ASSERT_TRUE(MakeFromPcx(Write(with(2, 0)), palette)) << "the encoding is not asked";
  const std::pair<const char*, std::string> files[] = {
      {"manufacturer", with(0, 11)},
      {"version", with(1, 2)},
      {"bits", with(3, 4)},
      {"planes", with(65, 3)},
      {"xmax below xmin", PcxHeader(4, 0, 3, 0) + rows + tail},
      {"ymax below ymin", PcxHeader(0, 9, 3, 0) + rows + tail},
      {"65536 wide", PcxHeader(0, 0, 65535, 65535) + rows + tail},
      {"more than it can hold", PcxHeader(0, 0, 32767, 32767) + rows + tail},
      {"rows end early", PcxHeader(0, 0, 199, 199) + rows + tail},
      {"palette ends early", (PcxHeader(0, 0, 3, 0) + rows + tail).substr(0, 128 + 4 + 768)},
      {"header only", PcxHeader(0, 0, 3, 0)},
      {"empty", ""},
  };
  for (const auto& [what, bytes] : files) {
    EXPECT_FALSE(MakeFromPcx(Write(bytes), palette)) << what;
  }
  EXPECT_FALSE(MakeFromPcx(dir.Path("missing.pcx"), palette));
}

}  // namespace
}  // namespace ferrowand
