#include "base/winfile.h"

#include <gtest/gtest.h>

#include <functional>

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

}  // namespace
}  // namespace ferrowand
