#include "base/path_text.h"

#include <gtest/gtest.h>

#include "base/text_parts.h"
#include "platform/system.h"
#include "support/cases.h"

namespace ferrowand {
namespace {

TEST(PathText, PathsSplitAtEitherSeparator) {
  const Cases<const char*, const char*, const char*, const char*> cases{
      {"c:\\maps\\e1m1.map", "c:\\maps\\", "e1m1", ".map"},
      {"/home/a.b/e1m1", "/home/a.b/", "e1m1", ""},
      {"a\\b/c.d.xmp", "a\\b/", "c.d", ".xmp"},
      {"c:e1m1.map", "c:", "e1m1", ".map"},
      {"plain", "", "plain", ""},
      {".xmp", "", "", ".xmp"},
      {"folder\\", "folder\\", "", ""},
      {"", "", "", ""},
  };
  for (const auto& [path, directory, base, extension] : cases) {
    const PathParts parts = SplitPath(path);
    EXPECT_EQ(std::tie(parts.directory, parts.base, parts.extension),
              std::tie(directory, base, extension))
        << path;
  }
}

TEST(PathText, CaseOfLettersIsTheOnlyDifferenceOverlooked) {
  EXPECT_TRUE(EqualNoCase("Quake.WAD", "qUAKE.wad"));
  EXPECT_FALSE(EqualNoCase("quake.wad", "quake.wa"));
  EXPECT_FALSE(EqualNoCase("[", "{"));
  EXPECT_FALSE(EqualNoCase("\xC4", "\xE4"));
  EXPECT_EQ(LowerCase("@AZ[\xC4"), "@az[\xC4");
  EXPECT_LT(CompareNoCase("a", "B"), 0);
  EXPECT_GT(CompareNoCase("ab", "A"), 0);
  EXPECT_LT(CompareNoCase("a", "\xC4"), 0);
  EXPECT_EQ(CompareNoCase("aBc", "AbC"), 0);
}

TEST(PathText, TheSharedFrontGoesEvenInsideAName) {
  const Cases<const char*, const char*, const char*> cases{
      {"c:\\quake\\id1\\a.qc", "c:\\quake", "id1\\a.qc"},
      {"c:\\quack\\a.qc", "c:\\quake", "ck\\a.qc"},
      {"c:\\Quake\\a.qc", "c:\\quake", "Quake\\a.qc"},
      {"d:\\a.qc", "c:\\quake", "d:\\a.qc"},
      {"\\a.qc", "c:\\quake", "\\a.qc"},
      {"/maps/a.qc", "/maps/", "a.qc"},
      {"c:\\quake", "c:\\quake", ""},
      {"c:\\quake\\\\a", "c:\\quake", "\\a"},
  };
  for (const auto& [path, directory, rest] : cases) {
    EXPECT_EQ(StripCommonPrefix(path, directory), rest) << path;
  }
}

TEST(PathText, SearchFoldersEndInASeparatorAndAreTenAtMost) {
  SearchPath path;
  path.Add("");
  path.Add("c:\\quake");
  path.Add("data/");
  const std::string quake = std::string("c:\\quake") + PathSeparator();
  EXPECT_EQ(path.Entries(), (std::vector<std::string>{"", quake, "data/"}));
  for (int i = 0; i < 20; ++i) path.Add("more/");
  EXPECT_EQ(path.Entries().size(), 10u);
}

TEST(PathText, AFileIsOfferedAsNamedAndThenInEachFolderUntilItIsTaken) {
  SearchPath path;
  path.Add("");
  path.Add("data/");
  path.Add("more/");
  const std::string name = CurrentDirectory() + PathSeparator() + "a.wad";
  std::vector<std::string> offered;
  const auto offer = [&](std::size_t takenAt) {
    offered.clear();
    return path.Offer(name, [&](const std::string& file) {
      offered.push_back(file);
      return offered.size() == takenAt;
    });
  };
  EXPECT_FALSE(offer(0));
  EXPECT_EQ(offered, (std::vector<std::string>{"a.wad", name, "data/" + name, "more/" + name}));
  EXPECT_TRUE(offer(3));
  EXPECT_EQ(offered.size(), 3u);
}

}  // namespace
}  // namespace ferrowand
