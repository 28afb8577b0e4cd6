#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/safe_file.h"
#include "gamedata/gamedata_fixture.h"
#include "gamedata/wad_builder.h"
#include "gamedata/wad_file.h"
#include "platform/system.h"
#include "support/system_calls.h"

namespace ferrowand {
namespace {

std::unique_ptr<Texture> NewTexture(std::string_view name, std::uint16_t width,
                                    std::uint16_t height, std::uint8_t value) {
  auto texture = std::make_unique<Texture>();
  texture->width = width;
  texture->height = height;
  texture->pixels.assign(std::size_t{width} * height, value);
  std::copy(name.begin(), name.end(), texture->entry.name.begin());
  return texture;
}

class WadEditTest : public GameDataTest {
 protected:
  WadFile& Open(const std::string& bytes) {
    dir.Write("test.wad", bytes);
    return Reopen();
  }
  WadFile& Reopen() {
    wad = std::make_unique<WadFile>(WadLimits{}, palette, reporter);
    EXPECT_TRUE(wad->Open(dir.Path("test.wad")));
    return *wad;
  }
  std::string File() const { return dir.Read("test.wad"); }
  // The names and first pixels of every texture, as the WAD at hand sees them.
  std::string Contents() {
    std::string text;
    for (const auto& texture : wad->Textures()) {
      text += std::string(texture->Name()) + ':' + Text(wad->Pixels(*texture)).substr(0, 1) + ' ';
    }
    return text;
  }
  // The same before and after the file was opened anew.
  void ExpectContents(const std::string& expected) {
    EXPECT_EQ(Contents(), expected);
    Reopen();
    EXPECT_EQ(Contents(), expected);
    EXPECT_TRUE(recorder.messages.empty());
  }

  std::unique_ptr<WadFile> wad;
};

TEST_F(WadEditTest, ANewTextureTakesThePlaceOfTheDirectory) {
  Open(WadBytes({{"first", 16, 16, "a"}}));
  ASSERT_TRUE(wad->AddTexture(NewTexture("second", 16, 8, 'b')));
  EXPECT_EQ(wad->FindTexture("SECOND"), wad->Textures()[1].get());
  EXPECT_TRUE(wad->Textures()[1]->pixels.empty());

  // Grey 'b' averages to itself at every level.
  std::string lump = LumpBytes({"second", 16, 8, "b"});
  lump.replace(40, lump.npos, std::string(lump.size() - 40, 'b'));
  const std::string first = LumpBytes({"first", 16, 16, "a"});
  EXPECT_EQ(File(), "WAD2" + Le32(2) + Le32(12 + first.size() + lump.size()) + first + lump +
                        EntryBytes(12, first.size(), {"first", 0, 0, ""}) +
                        EntryBytes(12 + first.size(), lump.size(), {"second", 0, 0, ""}));
  ExpectContents("first:a second:b ");
  ASSERT_TRUE(wad->AddTexture(NewTexture("third", 8, 8, 'c')));
  ASSERT_TRUE(wad->AddTexture(NewTexture("fourth", 8, 8, 'd')));
  ExpectContents("first:a second:b third:c fourth:d ");
}

TEST_F(WadEditTest, SmallerLevelsAverageWholeBlocksOnly) {
  Open(WadBytes({}));
  auto texture = NewTexture("odd", 5, 3, 200);
  texture->pixels[0] = 100;
  texture->pixels[1] = 101;
  ASSERT_TRUE(wad->AddTexture(std::move(texture)));
  // 5 x 3 halves to 2 x 1; the mean of 100, 101, 200, 200 is cut to 150.
  EXPECT_EQ(File().substr(12 + 40 + 15, 2), "\x96\xC8");
  EXPECT_EQ(File().size(), 12u + LumpSize(5, 3) + 32u);
}

TEST_F(WadEditTest, RemovingClosesTheGapForTheOthers) {
  const LumpPlan a{"a", 8, 8, "a"}, b{"b", 16, 8, "b"}, sound{"s", 8, 8, "s", 'E'},
      c{"c", 8, 16, "c"};
  for (const char* victim : {"a", "b", "c"}) {
    std::vector<LumpPlan> left;
    for (const LumpPlan& plan : {a, b, sound, c}) {
      if (plan.name != victim) left.push_back(plan);
    }
    Open(WadBytes({a, b, sound, c}));
    Contents();
    ASSERT_TRUE(wad->RemoveTexture(*wad->FindTexture(victim)));
    EXPECT_EQ(File(), WadBytes(left)) << victim;
    EXPECT_EQ(wad->FindTexture(victim), wad->BadTexture());
    EXPECT_EQ(wad->numCached(), 2);
    wad->Flush();
    EXPECT_EQ(wad->Pixels(*wad->Textures()[1])[0], wad->Textures()[1]->Name()[0]);
  }
  Open(WadBytes({a, b, sound, c}));
  Texture* const both[] = {wad->FindTexture("a"), wad->FindTexture("c")};
  ASSERT_TRUE(wad->RemoveTextures(both));
  EXPECT_EQ(File(), WadBytes({b, sound})) << "the second by what the first left";
  ExpectContents("b:b ");
  EXPECT_FALSE(wad->RemoveTexture(*wad->BadTexture()));
  Open(WadBytes({{"wall", 8, 8, "a"}, {"WALL", 8, 8, "b"}}));
  ASSERT_TRUE(wad->RemoveTexture(*wad->FindTexture("wall")));
  EXPECT_EQ(wad->FindTexture("wall")->Name(), "WALL") << "the second of equal names";
}

TEST_F(WadEditTest, ANewNameKeepsWhatStoodBehindItsEndAndIsCutWhereThatMustStand) {
  Open(WadBytes({{"longname", 8, 8, "a"}, {"other", 8, 8, "b"}}));
  Texture& texture = *wad->FindTexture("longname");
  ASSERT_TRUE(wad->RenameTexture(texture, "new"));
  EXPECT_EQ(wad->FindTexture("NEW"), &texture);
  EXPECT_EQ(wad->FindTexture("longname"), wad->BadTexture());
  const std::string field = NameField(std::string("new\0name", 8));
  EXPECT_EQ(File().substr(12, 16), field);
  EXPECT_EQ(File().substr(12 + 2 * LumpSize(8, 8) + 16, 16), field);
  ExpectContents("new:a other:b ");
  ASSERT_TRUE(wad->RenameTexture(*wad->Textures()[0], "a_name_of_more_than_sixteen"));
  ExpectContents("a_name_of_more_:a other:b ");
  EXPECT_FALSE(wad->RenameTexture(*wad->Textures()[0], ""));
  EXPECT_FALSE(wad->RenameTexture(*wad->BadTexture(), "good"));
}

TEST_F(WadEditTest, RewrittenPixelsTakeTheOldOnesPlaceAndAreReadBack) {
  Open(WadBytes({{"a", 8, 8, "a"}, {"b", 8, 8, "b"}}));
  Texture& texture = *wad->Textures()[0];
  wad->Rgb(texture);
  const std::vector<std::uint8_t> pixels(64, 'x');
  ASSERT_TRUE(wad->RewriteTexture(texture, pixels));
  EXPECT_TRUE(texture.pixels.empty() && texture.rgb.empty());
  EXPECT_FALSE(wad->IsCached(texture));
  EXPECT_EQ(File()[12 + LumpSize(8, 8) - 1], 'x') << "the smallest level is made anew";
  ExpectContents("a:x b:b ");
  EXPECT_FALSE(wad->RewriteTexture(*wad->Textures()[0], std::span(pixels).first(63)));
}

TEST_F(WadEditTest, ADirectoryInFrontOfTheLumpsIsNotOverwritten) {
  const LumpPlan a{"a", 8, 8, "a"}, b{"b", 8, 8, "b"};
  const std::uint32_t size = LumpSize(8, 8);
  const std::string bytes = "WAD2" + Le32(2) + Le32(12) + EntryBytes(76, size, a) +
                            EntryBytes(76 + size, size, b) + LumpBytes(a) + LumpBytes(b);
  Open(bytes);
  ASSERT_TRUE(wad->AddTexture(NewTexture("c", 8, 8, 'c')));
  ExpectContents("a:a b:b c:c ");
  Open(bytes);
  ASSERT_TRUE(wad->RemoveTexture(*wad->FindTexture("a")));
  ExpectContents("b:b ");
}

TEST_F(WadEditTest, BytesThatAnotherLumpReachesIntoStay) {
  const LumpPlan a{"a", 8, 8, "a"}, b{"b", 8, 8, "b"};
  const std::uint32_t size = LumpSize(8, 8);
  const std::string lumps = std::string(20, 's') + LumpBytes(a) + LumpBytes(b);
  Open("WAD2" + Le32(3) + Le32(12 + lumps.size()) + lumps +
       EntryBytes(12, 20 + size, {"sound", 0, 0, "", 'E'}) + EntryBytes(32, size, a) +
       EntryBytes(32 + size, size, b));
  ASSERT_TRUE(wad->RemoveTexture(*wad->FindTexture("a")));
  EXPECT_EQ(File().substr(12, lumps.size()), lumps);
  ExpectContents("b:b ");
  ASSERT_TRUE(wad->RemoveTexture(*wad->FindTexture("b")));
  EXPECT_EQ(File().substr(12, 20 + size), lumps.substr(0, 20 + size));
  EXPECT_EQ(File().size(), 12 + 20 + size + 32);
}

TEST_F(WadEditTest, TwoProgramsThatEachAddATextureLeaveBoth) {
  const std::string first = WadBytes({{"a", 8, 8, "a"}});
  Open(first);
  WadFile other(WadLimits{}, palette, reporter);
  ASSERT_TRUE(other.Open(dir.Path("test.wad")));
  if (!other.AddTexture(NewTexture("b", 8, 8, 'b'))) {
    // Some systems replace no file that another program holds open: that is told, and nothing lost.
    ASSERT_EQ(PathSeparator(), '\\');
    EXPECT_FALSE(std::exchange(recorder.messages, {}).empty());
    return ExpectContents("a:a ");
  }
  EXPECT_TRUE(wad->IsStale());
  ASSERT_TRUE(wad->AddTexture(NewTexture("c", 8, 8, 'c')));
  EXPECT_FALSE(wad->IsStale());
  ASSERT_TRUE(other.RemoveTexture(*other.FindTexture("a")));
  EXPECT_EQ(other.Textures().size(), 2u);
  ASSERT_TRUE(wad->IsStale() && wad->ReadAgain());
  ExpectContents("b:b c:c ");
}

TEST_F(WadEditTest, WhatIsChangedOutsideIsTheSameObjectOrNoMore) {
  Open(WadBytes({{"a", 8, 8, "a"}, {"b", 8, 8, "b"}}));
  Texture &a = *wad->FindTexture("a"), &b = *wad->FindTexture("b");
  Contents();
  const std::string changed = WadBytes({{"B", 16, 8, "x"}});
  dir.Write("test.wad", changed);
  const std::string gone =
      dir.Path("test.wad") + " has been changed by another program and has no a any more";
  EXPECT_FALSE(wad->RenameTexture(a, "new")) << "it has no place in the file";
  EXPECT_FALSE(wad->RemoveTexture(a));
  for (const auto& said : std::exchange(recorder.messages, {})) EXPECT_EQ(said.text, gone);
  EXPECT_EQ(File(), changed);
  EXPECT_EQ(wad->FindTexture("b"), &b);
  EXPECT_EQ(b.width, 16);
  EXPECT_EQ(wad->FindTexture("a"), wad->BadTexture());
  EXPECT_EQ(wad->Pixels(a)[0], 208) << "who still holds it is shown the replacement";
  EXPECT_EQ(Contents(), "B:x ");
  ASSERT_TRUE(wad->RenameTexture(b, "new"));
  EXPECT_EQ(dir.Read("test.wad.bak"), changed);
  ASSERT_TRUE(wad->RemoveTexture(b));
  EXPECT_EQ(wad->Pixels(b)[0], 208);
  EXPECT_EQ(dir.Read("test.wad.bak"), changed) << "once a run";

  dir.Write("test.wad", "no wad at all");
  EXPECT_FALSE(wad->ReadAgain());
  EXPECT_FALSE(wad->AddTexture(NewTexture("c", 8, 8, 'c')));
  EXPECT_EQ(recorder.OnlyText(),
            dir.Path("test.wad") + " has been changed by another program and cannot be read again");
  EXPECT_EQ(File(), "no wad at all");
}

// Real processes, real calls: whatever gets in the way, the file is the old one or the new one.
TEST_F(WadEditTest, AnEditThatIsInterruptedAtAnyCallLeavesOneFileOrTheOther) {
  if (!CanTrace()) GTEST_SKIP() << "no process may be followed here";
  const std::string before = WadBytes({{"a", 8, 8, "a"}, {"b", 8, 8, "b"}});
  const std::string after = WadBytes({{"b", 8, 8, "b"}});
  for (const InTheWay what : {InTheWay::Kill, InTheWay::Fail}) {
    std::size_t at = 0;
    for (bool wasReached = true; wasReached; ++at) {
      for (const char* name : {"test.wad", "test.wad.bak"}) {
        for (const std::string& left : LeftBeside(dir.Path(name))) file::Delete(left);
      }
      file::Delete(dir.Path("test.wad.bak"));
      Open(before);
      const auto edit = [&] {
        const bool worked = wad->RemoveTexture(*wad->FindTexture("a"));
        const bool isTrue = wad->Textures().size() == (worked ? 1u : 2u) || wad->IsStale();
        if (!isTrue) std::abort();
        return worked;
      };
      const TracedRun run = RunTraced(edit, what, at);
      wasReached = run.calls.size() > at;
      ASSERT_TRUE(File() == before || File() == after) << at;
      EXPECT_TRUE(File() == before || dir.Read("test.wad.bak") == before) << at;
      EXPECT_TRUE(run.killed || File() == (run.result ? after : before)) << at;
      ASSERT_TRUE(wasReached || run.result);
    }
    EXPECT_GT(at, 20u);
  }
}

TEST_F(WadEditTest, BytesThatTwoEntriesShareOutliveOneOfThem) {
  const LumpPlan a{"a", 8, 8, "a"};
  const std::uint32_t size = LumpSize(8, 8);
  Open("WAD2" + Le32(3) + Le32(12 + 2 * size) + LumpBytes(a) + LumpBytes({"z", 8, 8, "z"}) +
       EntryBytes(12, size, a) + EntryBytes(12, size, {"twin", 0, 0, ""}) +
       EntryBytes(12 + size, size, {"z", 0, 0, ""}));
  ASSERT_TRUE(wad->RemoveTexture(*wad->FindTexture("a")));
  ExpectContents("twin:a z:z ");
}

TEST_F(WadEditTest, ALumpWithoutItsSmallerLevelsIsNotWrittenPastItsEnd) {
  const LumpPlan a{"a", 8, 8, "a"}, b{"b", 8, 8, "b"};
  const std::uint32_t size = 40 + 64;
  const std::string bytes = "WAD2" + Le32(2) + Le32(12 + 2 * size) + LumpBytes(a).substr(0, size) +
                            LumpBytes(b).substr(0, size) + EntryBytes(12, size, a) +
                            EntryBytes(12 + size, size, b);
  Open(bytes);
  const std::vector<std::uint8_t> pixels(64, 'x');
  for (const auto& texture : wad->Textures()) {
    EXPECT_FALSE(wad->RewriteTexture(*texture, pixels));
  }
  EXPECT_EQ(std::exchange(recorder.messages, {}).size(), 2u) << "which is told";
  EXPECT_EQ(File(), bytes);
  ASSERT_TRUE(wad->RemoveTexture(*wad->FindTexture("b")));
  ExpectContents("a:a ");
}

TEST_F(WadEditTest, AWadThatMayNotBeWrittenServesAndRefusesEveryEdit) {
  const std::string bytes = WadBytes({{"a", 8, 8, "a"}});
  const std::string path = dir.Write("test.wad", bytes);
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  if (const FileHandle opened = file::Open(path, FileAccess::ReadWrite); opened != INVALID_FILE) {
    file::Close(opened);
    GTEST_SKIP() << "this user may write every file";
  }
  Reopen();
  Texture& a = *wad->Textures()[0];
  EXPECT_FALSE(wad->AddTexture(NewTexture("b", 8, 8, 'b')));
  EXPECT_FALSE(wad->RemoveTexture(a));
  EXPECT_FALSE(wad->RenameTexture(a, "b"));
  EXPECT_FALSE(wad->RewriteTexture(a, std::vector<std::uint8_t>(64)));
  EXPECT_EQ(Contents(), "a:a ");
  EXPECT_EQ(File(), bytes);
  wad.reset();
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
}

TEST_F(WadEditTest, WhatIsNoTextureIsNotAdded) {
  const std::string bytes = WadBytes({{"a", 8, 8, "a"}});
  Open(bytes);
  EXPECT_FALSE(wad->AddTexture(NewTexture("none", 0, 8, 0)));
  EXPECT_FALSE(wad->AddTexture(NewTexture("wide", 32769, 1, 0)));
  auto half = NewTexture("half", 8, 8, 0);
  half->pixels.pop_back();
  EXPECT_FALSE(wad->AddTexture(std::move(half)));
  EXPECT_EQ(File(), bytes);
  WadFile builtIn(WadLimits{}, palette, reporter);
  EXPECT_FALSE(builtIn.AddTexture(NewTexture("a", 8, 8, 0)));
}

}  // namespace
}  // namespace ferrowand
