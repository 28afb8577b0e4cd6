#include "compile/compile_options.h"

#include <gtest/gtest.h>

#include "base/options.h"
#include "compile/compile_files.h"
#include "document/document_fixture.h"

namespace ferrowand {
namespace {

TEST(CompileOptions, StandardIsWhatTheSettingsBeginWith) {
  EXPECT_EQ(CompileOptionsOf(Options()), CompileOptions());
  EXPECT_EQ(CompileOptions().flags, 721);
}

TEST(CompileProfiles, TravelAsTextAndTakeAnyText) {
  const std::vector<CompileProfile> kept = {
      {"Full vis", {0x1251, 2, 7, "-a b", "", "-level 4", "+skill 3"}},
      {"\xd0\x9f\xd0\xbe\xd0\xbb\xd0\xbd\xd1\x8b\xd0\xb9", {}}};
  const std::vector<CompileProfile> read = ReadProfiles(ProfilesText(kept));
  ASSERT_EQ(read.size(), 2u);
  for (std::size_t i = 0; i < read.size(); ++i) {
    EXPECT_EQ(read[i].name, kept[i].name);
    EXPECT_EQ(read[i].options, kept[i].options);
  }
  const auto odd = ReadProfiles("flags 1\n[]\n[x\n[a]\r\nflags 99999\r\nlevel 9\nthreads -5\nvis " +
                                std::string(200, 'v') + "\nnonsense\n[b]\n[A]\nlevel 2");
  ASSERT_EQ(odd.size(), 2u) << "of equal names the last";
  EXPECT_EQ(odd[1].name, "A");
  EXPECT_EQ(odd[1].options.visLevel, 2);
  const auto clamped = ReadProfiles("[q]\nflags 99999\nlevel 9\nthreads 999\nvis   -x ");
  const CompileProfile* found = FindProfile(clamped, "Q");
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->options, (CompileOptions{99999 & COMPILE_ALL_FLAGS, 4, 255, "", "", "-x", ""}));
}

class ToolsMapTest : public DocumentTest {
 protected:
  std::string NameFor(const std::string& file, const std::string& objects, unsigned option = 0) {
    const auto map = ReadText("{\"classname\" \"worldspawn\"" + objects + "}");
    map->filename = file;
    return ToolsMapPath(*map, option);
  }
};

TEST_F(ToolsMapTest, NothingLessThanAllGoesOverTheMapsOwnFile) {
  const std::string hidden = "{\"classname\" \"hidden\" \"XMPoldclassname\" \"light\"}";
  const std::string layer = "{\"classname\" \"layer\" \"XMPstate\" \"1\"}";
  EXPECT_EQ(NameFor("d/x.MAP", layer), "d/x.MAP");
  EXPECT_EQ(NameFor("d/x.map", hidden), "d/x_tools.map");
  EXPECT_EQ(NameFor("d/x.map", layer, WRITE_VISIBLE_ONLY), "d/x_tools.map");
  EXPECT_EQ(NameFor("d/x.xmp", hidden, WRITE_VISIBLE_ONLY), "d/x.map");
  EXPECT_EQ(NameFor("d/\xd1\x84.xmp", "").substr(0, 6), "d/map_") << "letters no tool reads";
  EXPECT_NE(NameFor("d/\xd1\x84.xmp", ""), NameFor("d/\xd1\x85.xmp", ""));
}

}  // namespace
}  // namespace ferrowand
