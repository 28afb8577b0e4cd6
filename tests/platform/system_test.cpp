#include "platform/system.h"

#include <gtest/gtest.h>

#include "platform/file.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

TEST(System, FilesAreListedByExtensionInOrderWithoutRegardToCase) {
  const TempDir dir;
  for (const char* name : {"b.xmp", "C.XMP", "a.map", "a.xmp", "xmp", "d.xmpx", "e.xmp.bak"})
    dir.Write(name, "");
  dir.Write("folder.xmp/inside.xmp", "");
  EXPECT_EQ(ListFiles(dir.Path(), ".xmp"), (std::vector<std::string>{"a.xmp", "b.xmp", "C.XMP"}));
  EXPECT_TRUE(ListFiles(dir.Path("missing"), ".xmp").empty());
}

TEST(System, TheProgramsFolderIsSearchedFirst) {
  const std::string here = ProgramDirectory() + PathSeparator();
  const std::string name = "ferrowand-search-probe.txt";
  const FileHandle probe = file::Create(here + name);
  ASSERT_NE(probe, INVALID_FILE);
  file::Close(probe);
  EXPECT_EQ(FindOnSystemPath(name), ProgramDirectory());
  file::Delete(here + name);
  EXPECT_EQ(FindOnSystemPath(name), std::nullopt);
}

TEST(System, TheCurrentFolderEndsWithoutASeparator) {
  const std::string current = CurrentDirectory();
  ASSERT_FALSE(current.empty());
  EXPECT_TRUE(current.back() != PathSeparator() || current.size() <= 3);
  EXPECT_EQ(file::Find(current), FindResult::Found);
}

TEST(System, AMachineHasMemory) {
  EXPECT_GT(PhysicalMemoryBytes(), 64'000'000u);
}

}  // namespace
}  // namespace ferrowand
