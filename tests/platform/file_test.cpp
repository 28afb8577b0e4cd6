#include "platform/file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_dir.h"

namespace ferrowand {
namespace {

#ifdef _WIN32
constexpr char DEVICE[] = "NUL";
#else
constexpr char DEVICE[] = "/dev/null";
#endif

TEST(File, FindTellsWhatIsNotThereFromWhatCannotBeAsked) {
  const TempDir dir;
  dir.Write("folder/name", "x");
  EXPECT_EQ(file::Find(dir.Path("folder") + "\\name"), FindResult::Found);
  EXPECT_EQ(LastError(), 0u);
  EXPECT_EQ(file::Find(dir.Path("folder") + "\\other"), FindResult::NotFound);
  EXPECT_NE(LastError(), 0u);
  EXPECT_EQ(file::Find(dir.Path("folder/name/below")), FindResult::Failed);
}

TEST(File, OnlyPlainFilesOpen) {
  const TempDir dir;
  EXPECT_EQ(file::Open(dir.Path(), FileAccess::Read), INVALID_FILE);
  EXPECT_NE(LastError(), 0u);
  EXPECT_EQ(file::Open(DEVICE, FileAccess::Read), INVALID_FILE);
  EXPECT_NE(LastError(), 0u);
  EXPECT_FALSE(file::IsWritable(dir.Path()));
  EXPECT_FALSE(file::IsWritable(dir.Path("missing")));
  EXPECT_TRUE(file::IsWritable(dir.Write("plain", "x")));
  EXPECT_EQ(dir.Read("plain"), "x");
}

TEST(File, SeekReadWriteAndTruncateWorkOnOnePosition) {
  const TempDir dir;
  const FileHandle file = file::Create(dir.Path("data"));
  EXPECT_TRUE(file::Write(file, "0123456789", 10));
  EXPECT_EQ(file::Seek(file, -3, SeekFrom::Current), 7u);
  char bytes[8];
  EXPECT_EQ(file::Read(file, bytes, sizeof bytes), 3u);
  EXPECT_EQ(std::string(bytes, 3), "789");
  EXPECT_EQ(file::Read(file, bytes, sizeof bytes), 0u);
  EXPECT_EQ(LastError(), 0u);
  EXPECT_EQ(file::Seek(file, -6, SeekFrom::End), 4u);
  EXPECT_TRUE(file::Truncate(file));
  EXPECT_EQ(file::Size(file), 4u);
  EXPECT_EQ(file::Seek(file, -1, SeekFrom::Begin), INVALID_OFFSET);
  EXPECT_NE(LastError(), 0u);
  EXPECT_TRUE(file::Close(file));
  EXPECT_EQ(dir.Read("data"), "0123");
}

TEST(File, ReadAccessRefusesToWrite) {
  const TempDir dir;
  const FileHandle file = file::Open(dir.Write("data", "old"), FileAccess::Read);
  EXPECT_FALSE(file::Write(file, "new", 3));
  EXPECT_NE(LastError(), 0u);
  file::Close(file);
  EXPECT_EQ(dir.Read("data"), "old");
}

TEST(File, SizesAndPositionsStopBelowFourGigabytes) {
  const TempDir dir;
  const std::string path = dir.Write("huge", "");
  std::error_code refused;
  std::filesystem::resize_file(path, 0x100000005, refused);
  if (refused) GTEST_SKIP() << "no room for a sparse file";
  const FileHandle file = file::Open(path, FileAccess::Read);
  EXPECT_EQ(file::Size(file), 0xFFFFFFFEu);
  EXPECT_EQ(file::Seek(file, 0, SeekFrom::End), 0xFFFFFFFEu);
  EXPECT_EQ(file::Seek(file, 100, SeekFrom::Current), 0xFFFFFFFEu);
  file::Close(file);
}

TEST(File, AFailedReplaceLeavesBothFiles) {
  const TempDir dir;
  dir.Write("new", "new");
  dir.Write("folder/inside", "kept");
  EXPECT_FALSE(file::Replace(dir.Path("new"), dir.Path("folder")));
  EXPECT_NE(LastError(), 0u);
  EXPECT_EQ(dir.Read("new"), "new");
  EXPECT_EQ(dir.Read("folder/inside"), "kept");
}

}  // namespace
}  // namespace ferrowand
