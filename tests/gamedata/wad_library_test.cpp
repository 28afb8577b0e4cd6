#include "gamedata/wad_library.h"

#include "gamedata/gamedata_fixture.h"
#include "gamedata/wad_builder.h"

namespace ferrowand {
namespace {

class ProgressRecorder : public LoadProgress {
 public:
  void Begin(const std::string& fileName) override { log += "begin " + fileName + '\n'; }
  void Step(const char* format, unsigned count, unsigned, unsigned) override {
    log += format + (' ' + std::to_string(count)) + '\n';
  }
  void End() override { log += "end\n"; }
  std::string log;
};

class WadLibraryTest : public GameDataTest {
 protected:
  WadLibraryTest() {
    path.Add("");
    path.Add(dir.Path("one"));
    path.Add(dir.Path("two"));
    dir.Write("two/walls.wad", WadBytes({{"wall", 8, 8, "w"}, {"both", 8, 8, "w"}}));
    dir.Write("floors.wad", WadBytes({{"floor", 8, 8, "f"}, {"both", 8, 8, "f"}}));
  }

  ProgressRecorder progress;
  WadLibrary library{path, palette, reporter, progress};
};

TEST_F(WadLibraryTest, AWadIsLookedForByItsWholePathAndAlongTheFolders) {
  EXPECT_EQ(library.Get(dir.Path("floors.wad")).Textures().size(), 2u);
  progress.log.clear();
  WadFile& walls = library.Get("walls.wad");
  EXPECT_EQ(walls.Textures()[0]->Name(), "wall");
  EXPECT_EQ(progress.log, "begin walls.wad\nTextures: %u 2\nend\n");
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(WadLibraryTest, OneNameIsOneWadWhateverItsFolderAndCase) {
  WadFile& walls = library.Get("walls.wad");
  progress.log.clear();
  EXPECT_EQ(&library.Get("c:\\quake\\WALLS.WAD"), &walls);
  EXPECT_EQ(&library.Get("/other/Walls.wad"), &walls);
  EXPECT_EQ(progress.log, "");
  EXPECT_NE(&library.Get("walls.wa2"), &walls);
  EXPECT_EQ(library.Loaded().size(), 1u);
}

TEST_F(WadLibraryTest, AMissingWadIsSaidAndTheDefaultGiven) {
  EXPECT_EQ(library.Get("nowhere.wad", true).FileName(), "badwad");
  EXPECT_TRUE(recorder.messages.empty());
  library.LoadDefault("walls.wad");
  EXPECT_EQ(&library.Get("nowhere.wad"), &library.Default());
  EXPECT_EQ(recorder.OnlyText(), "Could not load wadfile \"nowhere.wad\", using default");
  EXPECT_EQ(recorder.messages[0].title, "Error");
  EXPECT_EQ(library.Default().Textures()[0]->Name(), "wall");
}

TEST_F(WadLibraryTest, TheBuiltInWadStandsInForADefaultThatCannotBeLoaded) {
  library.LoadDefault("missing.wad");
  EXPECT_EQ(recorder.OnlyText(),
            "Could not load default wadfile missing.wad! Set the default in Options.");
  EXPECT_EQ(recorder.messages[0].title, "Error");
  EXPECT_EQ(library.Default().FileName(), "badwad");
  EXPECT_EQ(library.DefaultName(), "missing.wad");
  EXPECT_EQ(library.Get("", true).FileName(), "badwad");
}

TEST_F(WadLibraryTest, ANewCacheSizeIsThatOfEveryWad) {
  WadFile& walls = library.Get("walls.wad");
  library.SetLimits({.maxCached = 1});
  WadFile& floors = library.Get(dir.Path("floors.wad"));
  for (WadFile* wad : {&walls, &floors}) {
    for (const auto& texture : wad->Textures()) wad->Pixels(*texture);
    EXPECT_EQ(wad->numCached(), 1);
  }
}

}  // namespace
}  // namespace ferrowand
