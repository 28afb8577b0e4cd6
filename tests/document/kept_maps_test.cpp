#include "document/kept_maps.h"

#include <filesystem>

#include "document/document_fixture.h"
#include "document/edit_step.h"
#include "platform/file.h"

namespace ferrowand {
namespace {

class KeptMapsTest : public DocumentTest {
 protected:
  static void Modify(Map& map, const std::string& value) {
    EditStep step(map);
    step.ChangeKeys(map);
    map.SetKey("message", value);
  }
  std::string Notes() const { return temp.Path("data"); }

  KeptMaps kept{Notes()};
};

TEST_F(KeptMapsTest, WhatIsKeptIsWhatASaveWouldWriteAndTheMapStaysAsItIs) {
  // The world has faces of its own, behind which a key must stand.
  const auto map =
      ReadText("{\"wad\" \"a.wad\"\"message\" \"old\"" + Cuboid(0, 0, 0, 64, 64, 64).substr(1) +
               "\"last\" \"1\"" + Cuboid(128, 0, 0, 192, 64, 64) + "}");
  EXPECT_TRUE(kept.Keep(*map, {}));
  EXPECT_EQ(kept.FileOf(*map), "") << "not modified";
  Modify(*map, "new");
  const std::string before = ExtendedText(*map);
  EXPECT_TRUE(kept.Keep(*map, {}));
  EXPECT_EQ(kept.FileOf(*map), temp.Path("input.xmp.autosave.xmp"));
  EXPECT_EQ(ExtendedText(*map), before);
  const std::string text = temp.Read("input.xmp.autosave.xmp");

  EXPECT_TRUE(map->modified());
  ASSERT_TRUE(map->Save(temp.Path("saved.xmp"), 0, {}));
  EXPECT_EQ(temp.Read("saved.xmp"), text);
  EXPECT_TRUE(kept.Keep(*map, {}));
  EXPECT_FALSE(std::filesystem::exists(temp.Path("input.xmp.autosave.xmp")));
  EXPECT_TRUE(std::filesystem::is_empty(Notes()));
  Modify(*map, "newer");
  EXPECT_TRUE(kept.Keep(*map, {}));
  EXPECT_FALSE(std::filesystem::is_empty(Notes()));
}

TEST_F(KeptMapsTest, OnlyAChangedMapIsWrittenAgain) {
  const auto map = ReadText("{}");
  Modify(*map, "one");
  kept.Keep(*map, {});
  const std::string file = kept.FileOf(*map);
  std::filesystem::last_write_time(file, {});
  const auto stamp = file::Stamp(file);
  kept.Keep(*map, {});
  EXPECT_EQ(file::Stamp(file), stamp);
  Modify(*map, "two");
  kept.Keep(*map, {});
  EXPECT_NE(file::Stamp(file), stamp);
  std::filesystem::last_write_time(file, {});
  kept.Keep(*map, {});
  EXPECT_EQ(file::Stamp(file), stamp);

  std::filesystem::remove(file);
  temp.Write("input.xmp.autosave.xmp/in the way", "");
  Modify(*map, "three");
  EXPECT_FALSE(kept.Keep(*map, {}));
  std::filesystem::remove_all(file);
  EXPECT_TRUE(kept.Keep(*map, {}));
  EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(KeptMapsTest, WhereTheFolderIsGoneTheUsersOwnIsTaken) {
  Map map(data);
  map.filename = temp.Path("gone/a.map");
  Modify(map, "x");
  EXPECT_TRUE(kept.Keep(map, {}));
  EXPECT_EQ(std::filesystem::path(kept.FileOf(map)), temp.Path("data/a.map.autosave.xmp"));
  const std::filesystem::directory_iterator files(Notes());
  EXPECT_EQ(std::distance(begin(files), end(files)), 2) << "one note and its text";
}

TEST_F(KeptMapsTest, TheNextProgramFindsItAndNoOtherWritesOverIt) {
  std::string first;
  {
    KeptMaps ended(Notes());
    Map map(data);
    Modify(map, "mine");
    map.RememberLoss();
    EXPECT_TRUE(ended.Keep(map, {}, FileStamp{5, 7}));
    first = ended.FileOf(map);
    EXPECT_TRUE(FindRescues(Notes()).empty()) << "it runs";
  }
  const std::vector<Rescue> found = FindRescues(Notes());
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].text, first);
  EXPECT_EQ(found[0].original, UNNAMED);
  EXPECT_TRUE(found[0].withLoss);
  EXPECT_EQ(found[0].began, (FileStamp{5, 7}));

  Map other(data);
  Modify(other, "other");
  EXPECT_TRUE(kept.Keep(other, {}));
  EXPECT_NE(kept.FileOf(other), first);

  const auto read = LoadMap(data, first);
  read->filename = UNNAMED;
  EXPECT_EQ(read->Name(), "mine");
  kept.Adopt(*read, found[0]);
  EXPECT_TRUE(FindRescues(Notes()).empty());
  Modify(*read, "mine again");
  kept.Keep(*read, {});
  EXPECT_EQ(kept.FileOf(*read), first);
  kept.Discard(*read);
  EXPECT_FALSE(std::filesystem::exists(first));
}

TEST_F(KeptMapsTest, WhereNothingCanBeWrittenNothingIsSaid) {
  KeptMaps nowhere(temp.Write("a file", "") + "/below");
  Map map(data);
  Modify(map, "x");
  EXPECT_FALSE(nowhere.Keep(map, {}));
  EXPECT_TRUE(recorder.messages.empty());
}

}  // namespace
}  // namespace ferrowand
