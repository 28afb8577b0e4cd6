#include "base/winfile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <iterator>
#endif

#include "support/cases.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

class WinFile : public testing::Test {
 protected:
  // The line and the expression of the only assertion: `36 "cond"`.
  std::string Assertion() const {
    const std::string text = recorder.OnlyText();
    const std::string unit = " in file ..\\winfile.cpp: ";
    const std::size_t middle = text.find(unit);
    if (!text.starts_with("At line ") || middle == text.npos) return text;
    const std::size_t expression = middle + unit.size();
    return text.substr(8, middle - 8) + " " +
           text.substr(expression, text.find(". GetLastError:") - expression);
  }

  std::size_t FilesInFolder() const {
    const std::filesystem::directory_iterator files(dir.Path());
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
  }

  TempDir dir;
  MessageRecorder recorder;
  Reporter reporter{recorder};
};

TEST_F(WinFile, AMissingFileIsNoFailureButAnImpossiblePathIs) {
  const std::string path = dir.Write("here", "x");
  EXPECT_TRUE(FileExists(path, reporter));
  EXPECT_FALSE(FileExists(dir.Path("gone"), reporter));
  EXPECT_TRUE(recorder.messages.empty());
  EXPECT_FALSE(FileExists(path + "/below", reporter));
  EXPECT_EQ(Assertion(), "36 \"GetLastError()==ERROR_FILE_NOT_FOUND\"");
}

TEST_F(WinFile, BytesAreReadWrittenAndPeekedAtInPlace) {
  const FileHandle file = CreateForWrite(dir.Path("bytes"), reporter);
  for (const std::uint8_t byte : {1, 200, 3}) WriteByte(file, byte, reporter);
  EXPECT_TRUE(AtEndOfFile(file, reporter));
  Seek(file, -2, SeekFrom::End, reporter);
  EXPECT_EQ(PeekByte(file, reporter), 200);
  EXPECT_EQ(Tell(file, reporter), 1u);
  EXPECT_EQ(ReadByte(file, reporter), 200);
  EXPECT_EQ(ReadByte(file, reporter), 3);
  EXPECT_EQ(ReadByte(file, reporter), 0);
  PeekByte(file, reporter);
  EXPECT_EQ(Tell(file, reporter), 2u) << "a peek at the end goes back all the same";
  file::Close(file);
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(WinFile, CallsThatFailAreReportedEachWithItsOwnText) {
  const Cases<std::function<void(FileHandle)>, const char*> cases{
      {[&](FileHandle f) { ReadByte(f, reporter); },
       "65 \"ReadFile(file, &chr, 1, &bytesRead, NULL)\""},
      {[&](FileHandle f) { WriteByte(f, 1, reporter); }, "85 \"ret\""},
      {[&](FileHandle f) { Seek(f, 0, SeekFrom::Begin, reporter); },
       "91 \"SetFilePointer(file, distance, NULL, from)!=0xFFFFFFFF\""},
      {[&](FileHandle f) { Tell(f, reporter); }, "100 \"ret!=0xFFFFFFFF\""},
      {[&](FileHandle) { CreateForWrite(dir.Path("no/such/folder"), reporter); },
       "50 \"file!=INVALID_HANDLE_VALUE\""}};
  for (const auto& [call, assertion] : cases) {
    recorder.messages.clear();
    call(INVALID_FILE);
    EXPECT_EQ(Assertion(), assertion);
    EXPECT_EQ(recorder.OnlyText().find("GetLastError:0."), std::string::npos);
  }
}

TEST_F(WinFile, ReplacingPutsTheTextInPlaceAndLeavesNothingElse) {
  const std::string text("a\r\nb\0c", 6);
  EXPECT_TRUE(ReplaceFileText(dir.Path("map"), text, reporter));
  EXPECT_EQ(dir.Read("map"), text);
  EXPECT_TRUE(ReplaceFileText(dir.Path("map"), "shorter", reporter));
  EXPECT_EQ(dir.Read("map"), "shorter");
  EXPECT_EQ(FilesInFolder(), 1u);
  // A neighbour that has the name of the temporary file stays.
  dir.Write("map.tmp", "mine");
  EXPECT_TRUE(ReplaceFileText(dir.Path("map"), "new", reporter));
  EXPECT_EQ(dir.Read("map.tmp"), "mine");
  EXPECT_EQ(FilesInFolder(), 2u);
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_F(WinFile, ReplacingWhatCannotBeWrittenIsAFailedCreation) {
  dir.Write("folder/inside", "kept");
  for (const char* name : {"folder", "missing/map"}) {
    recorder.messages.clear();
    EXPECT_FALSE(ReplaceFileText(dir.Path(name), "new", reporter));
    EXPECT_EQ(Assertion(), "50 \"file!=INVALID_HANDLE_VALUE\"") << name;
  }
  EXPECT_EQ(dir.Read("folder/inside"), "kept");
  EXPECT_EQ(FilesInFolder(), 1u);
}

#ifdef _WIN32
TEST_F(WinFile, AReadOnlyFileStaysAsItWas) {
  const std::string path = dir.Write("map", "old");
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  EXPECT_FALSE(ReplaceFileText(path, "new", reporter));
  EXPECT_EQ(Assertion(), "50 \"file!=INVALID_HANDLE_VALUE\"");
  EXPECT_EQ(dir.Read("map"), "old");
  std::filesystem::permissions(path, std::filesystem::perms::all);
}
#else
TEST_F(WinFile, AWriteThatFailsHalfwayKeepsTheOldFile) {
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

TEST_F(WinFile, ReplacingKeepsPermissionsAndGoesThroughALink) {
  namespace fs = std::filesystem;
  const std::string path = dir.Write("real/map", "old");
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink(path, dir.Path("link"));
  EXPECT_TRUE(ReplaceFileText(dir.Path("link"), "new", reporter));
  EXPECT_TRUE(fs::is_symlink(dir.Path("link")));
  EXPECT_EQ(dir.Read("real/map"), "new");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(WinFile, WhatIsNoPlainFileIsNeverReplaced) {
  const std::string pipe = dir.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_FALSE(ReplaceFileText(pipe, "new", reporter));
  EXPECT_EQ(Assertion(), "50 \"file!=INVALID_HANDLE_VALUE\"");
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}
#endif

}  // namespace
}  // namespace ferrowand
