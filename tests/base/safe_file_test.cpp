#include "base/safe_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#endif

#include "base/backups.h"
#include "base/rescue.h"
#include "platform/file.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

class SafeFile : public testing::Test {
 protected:
  // Whether there was one message, and it began so behind "At line ".
  bool Said(const std::string& assertion) const {
    return recorder.OnlyText().starts_with("At line " + assertion);
  }

  std::size_t FilesInFolder() const {
    const std::filesystem::directory_iterator files(dir.Path());
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
  }

  TempDir dir;
  MessageRecorder recorder;
  Reporter reporter{recorder};
};

TEST_F(SafeFile, ReplacingPutsTheTextInPlaceAndLeavesNothingElse) {
  const std::string text("a\r\nb\0c", 6);
  EXPECT_TRUE(ReplaceFileText(dir.Path("map"), text, reporter));
  EXPECT_EQ(dir.Read("map"), text);
  EXPECT_TRUE(ReplaceFileText(dir.Path("map"), "shorter", reporter));
  EXPECT_EQ(dir.Read("map"), "shorter");
  EXPECT_EQ(FilesInFolder(), 1u);
  // What an earlier one has left stays.
  dir.Write("map.saving", "left");
  EXPECT_TRUE(ReplaceFileText(dir.Path("map"), "new", reporter));
  EXPECT_EQ(dir.Read("map.saving"), "left");
  EXPECT_EQ(FilesInFolder(), 2u);
  dir.Write("map.saving.xmp", "something else");
  EXPECT_EQ(LeftBeside(dir.Path("map")), std::vector{dir.Path("map.saving")});
  const FileHandle other = file::Create(dir.Path("map.saving"));
  EXPECT_TRUE(LeftBeside(dir.Path("map")).empty()) << "another program is at it";
  file::Close(other);
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(SafeFile, ReplacingWhatCannotBeWrittenIsAFailedCreation) {
  dir.Write("folder/inside", "kept");
  for (const char* name : {"folder", "missing/map"}) {
    recorder.messages.clear();
    EXPECT_FALSE(ReplaceFileText(dir.Path(name), "new", reporter));
    EXPECT_TRUE(Said("50 in file ..\\winfile.cpp: \"file!=INVALID_HANDLE_VALUE\"")) << name;
  }
  EXPECT_EQ(dir.Read("folder/inside"), "kept");
  EXPECT_EQ(FilesInFolder(), 1u);
}

#ifdef _WIN32
TEST_F(SafeFile, AReadOnlyFileStaysAsItWas) {
  const std::string path = dir.Write("map", "old");
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  EXPECT_FALSE(ReplaceFileText(path, "new", reporter));
  EXPECT_TRUE(Said("50 in file ..\\winfile.cpp: \"file!=INVALID_HANDLE_VALUE\""));
  EXPECT_EQ(dir.Read("map"), "old");
  std::filesystem::permissions(path, std::filesystem::perms::all);
}
#else
TEST_F(SafeFile, AWriteThatFailsHalfwayKeepsTheOldFile) {
  dir.Write("map", "old");
  rlimit old;
  getrlimit(RLIMIT_FSIZE, &old);
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{1000, old.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  const bool replaced = ReplaceFileText(dir.Path("map"), std::string(5000, 'x'), reporter);
  setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, oldHandler);
  EXPECT_FALSE(replaced);
  EXPECT_NE(recorder.OnlyText().find("\"WriteFile("), std::string::npos);
  EXPECT_EQ(recorder.OnlyText().find("GetLastError:0."), std::string::npos);
  EXPECT_EQ(dir.Read("map"), "old");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(SafeFile, WhoReadsLetsTheFileGo) {
  const std::string path = dir.Write("map", "text");
  rlimit old;
  getrlimit(RLIMIT_NOFILE, &old);
  const rlimit few{100, old.rlim_max};
  setrlimit(RLIMIT_NOFILE, &few);
  int read = 0;
  while (read < 200 && FileBytes(path) == "text") ++read;
  setrlimit(RLIMIT_NOFILE, &old);
  EXPECT_EQ(read, 200);
}

TEST_F(SafeFile, ReplacingKeepsPermissionsAndGoesThroughALink) {
  namespace fs = std::filesystem;
  const std::string path = dir.Write("real/map", "old");
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink(path, dir.Path("link"));
  EXPECT_TRUE(ReplaceFileText(dir.Path("link"), "new", reporter));
  EXPECT_TRUE(fs::is_symlink(dir.Path("link")));
  EXPECT_EQ(dir.Read("real/map"), "new");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(SafeFile, WhatIsNoPlainFileIsNeverReplaced) {
  const std::string pipe = dir.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_FALSE(ReplaceFileText(pipe, "new", reporter));
  EXPECT_TRUE(Said("50 in file ..\\winfile.cpp: \"file!=INVALID_HANDLE_VALUE\""));
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}
#endif

TEST_F(SafeFile, EarlierVersionsAreCountedAsNumbersAndTheOldestGoes) {
  const std::string name = dir.Path("map");
  const auto save = [&](const std::string& text) {
    return ReplaceFile(name, text, {11, ""}, &reporter);
  };
  for (int i = 0; i <= 12; ++i) EXPECT_TRUE(save("version " + std::to_string(i)));
  for (unsigned i = 1; i <= 11; ++i) {
    EXPECT_EQ(dir.Read("map." + std::to_string(i) + ".bak"), "version " + std::to_string(12 - i));
  }
  EXPECT_EQ(FilesInFolder(), 12u);
  // What is no other version makes none.
  EXPECT_TRUE(save("version 12"));
  EXPECT_EQ(dir.Read("map.1.bak"), "version 11");
  EXPECT_TRUE(ReplaceFile(name, "new", {1, ""}, &reporter).hasBackup);
  EXPECT_EQ(dir.Read("map.1.bak"), "version 12");
  EXPECT_EQ(dir.Read("map.2.bak"), "version 10");
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(SafeFile, ABackupThatCannotBeMadeIsToldAndCostsNothing) {
  const std::string name = dir.Write("map", "old");
  dir.Write("map.1.bak/a folder", "in the way");
  const ReplaceResult result = ReplaceFile(name, "new", {1, ""}, &reporter);
  EXPECT_TRUE(result);
  EXPECT_FALSE(result.hasBackup);
  EXPECT_EQ(dir.Read("map"), "new");
  EXPECT_EQ(dir.Read("map.1.bak/a folder"), "in the way");

  const std::string other = dir.Write("other", "old");
  for (const char* version : {"1", "2", "3.bak/a folder"}) {
    dir.Write(std::string("other.") + version + (*version == '3' ? "" : ".bak"), version);
  }
  EXPECT_FALSE(ReplaceFile(other, "new", {3, ""}, &reporter).hasBackup);
  EXPECT_EQ(dir.Read("other.2.bak"), "2");
}

TEST_F(SafeFile, WorkHasOneNoteThatGoesWithIt) {
  const std::string notes = dir.Path("data/notes");
  const Rescue work{dir.Write("kept", "work"), dir.Path("map")};
  auto note = RescueNote::Take(notes, work);
  ASSERT_TRUE(note);
  EXPECT_FALSE(RescueNote::Take(notes, work));
  const std::string half = dir.Write("data/notes/half.note", work.text + "\n/of a na");
  EXPECT_TRUE(FindRescues(notes).empty());
  EXPECT_EQ(file::Find(half), FindResult::NotFound);
  const std::string beside = dir.Write("kept.saving", "w");
  note->Discard();
  EXPECT_EQ(file::Find(work.text), FindResult::NotFound);
  EXPECT_EQ(file::Find(beside), FindResult::NotFound);
  EXPECT_TRUE(std::filesystem::is_empty(notes));
  // A note that never got its text.
  note = RescueNote::Take(notes, work);
  note.reset();
  dir.Write("kept.saving", "w");
  EXPECT_TRUE(FindRescues(notes).empty());
  EXPECT_EQ(file::Find(beside), FindResult::NotFound);
  EXPECT_TRUE(std::filesystem::is_empty(notes));
  // One whose folder is out of reach may come back.
  note = RescueNote::Take(notes, {dir.Write("a file", "") + "/kept", dir.Path("map")});
  note.reset();
  EXPECT_TRUE(FindRescues(notes).empty());
  EXPECT_FALSE(std::filesystem::is_empty(notes));
}

}  // namespace
}  // namespace ferrowand
