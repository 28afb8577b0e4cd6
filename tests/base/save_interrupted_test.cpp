// A save that is killed, or fails, at each of its system calls in turn: real processes, real calls.
#ifdef __linux__
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <optional>

#include "base/rescue.h"
#include "base/safe_file.h"
#include "platform/file.h"
#include "support/system_calls.h"
#include "support/temp_dir.h"

namespace ferrowand {
namespace {

// The new text is the shorter one: what is written over the old has a tail of it at first.
const std::string OLDEST(3000, 'a'), OLD(80000, 'b'), NEW(70000, 'c'), NEXT = "next";

// A file with one earlier version, in a folder that takes new files or does not.
class Scene {
 public:
  explicit Scene(bool takesFiles) : takesFiles_(takesFiles) {
    dir_.Write("maps/map", OLD);
    dir_.Write("maps/map.1.bak", OLDEST);
    std::filesystem::create_directory(Data());
    chmod(Map().c_str(), 0666);
    chmod(Data().c_str(), 0777);
    Allow(takesFiles);
  }
  ~Scene() { Allow(true); }
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  // For whom no rights count, those of a user for whom they do.
  bool Save(const std::string& text) const {
    if (!takesFiles_ && geteuid() == 0 && seteuid(65534) != 0) return false;
    const ReplaceResult result = ReplaceFile(Map(), text, {2, Data()}, nullptr);
    const bool isTold = result || takesFiles_ || !result.copy.empty() || Read("map") == OLD;
    if (!isTold) std::abort();
    return result && (result.hasBackup || !takesFiles_);
  }

  void Allow(bool newFiles) const { chmod(dir_.Path("maps").c_str(), newFiles ? 0755 : 0555); }
  std::string Map() const { return dir_.Path("maps/map"); }
  std::string Data() const { return dir_.Path("data"); }
  std::string Read(const std::string& name) const {
    return FileBytes(dir_.Path("maps/" + name)).value_or("");
  }

 private:
  TempDir dir_;
  bool takesFiles_;
};

// Earlier versions stay, and the old text becomes one unless the save has told that it did not.
void ExpectVersions(const Scene& scene, const TracedRun& run) {
  const bool isNew = scene.Read("map") == NEW;
  EXPECT_TRUE(isNew || scene.Read("map") == OLD);
  EXPECT_TRUE(scene.Read("map.1.bak") == OLDEST || scene.Read("map.2.bak") == OLDEST);
  if (isNew && (run.result || run.killed)) {
    EXPECT_TRUE(scene.Read("map.1.bak") == OLD);
  }
}

// The file has one text or the other; else there is one to get the new text back from.
void ExpectRescue(const Scene& scene, const TracedRun& run) {
  const std::vector<Rescue> rescues = FindRescues(scene.Data());
  const bool isWhole = scene.Read("map") == OLD || scene.Read("map") == NEW;
  ASSERT_LE(rescues.size(), 1u);
  EXPECT_TRUE(!rescues.empty() || !run.killed || std::filesystem::is_empty(scene.Data()));
  EXPECT_TRUE(isWhole || !rescues.empty());
  for (const Rescue& rescue : rescues) {
    EXPECT_EQ(rescue.original, scene.Map());
    EXPECT_TRUE((isWhole && run.killed) || FileBytes(rescue.text) == NEW);
    EXPECT_TRUE(scene.Read("map") != OLD || rescue.began == file::Stamp(scene.Map()));
  }
}

void ExpectSound(const Scene& scene, const TracedRun& run, bool takesFiles) {
  if (takesFiles) {
    ExpectVersions(scene, run);
  } else {
    ExpectRescue(scene, run);
  }
  EXPECT_TRUE(!run.result || scene.Read("map") == NEW);
  for (const std::string& left : LeftBeside(scene.Map())) {
    EXPECT_TRUE(NEW.starts_with(*FileBytes(left)));
  }
  // And the next save works, and keeps the versions that there were.
  const bool isOld = scene.Read("map") == OLD;
  scene.Allow(true);
  EXPECT_TRUE(ReplaceFile(scene.Map(), NEXT, {2, scene.Data()}, nullptr));
  EXPECT_TRUE(scene.Read("map") == NEXT);
  EXPECT_TRUE(!isOld || scene.Read("map.2.bak") == OLDEST);
}

// In memory where there is such a folder: what a process that was killed has written stays written
// on any disk, and a real one takes its time for every flush.
class SaveInterrupted : public testing::Test {
 protected:
  SaveInterrupted() {
    if (const char* folder = std::getenv("TMPDIR")) before_ = folder;
    if (std::filesystem::is_directory("/dev/shm")) setenv("TMPDIR", "/dev/shm", 1);
  }
  ~SaveInterrupted() override {
    if (before_) {
      setenv("TMPDIR", before_->c_str(), 1);
    } else {
      unsetenv("TMPDIR");
    }
  }
  void SetUp() override {
    if (!CanTrace()) GTEST_SKIP() << "no process may be followed here";
  }

 private:
  std::optional<std::string> before_;
};

TEST_F(SaveInterrupted, ByAKillOrAFailureAtAnyCallCostsNothing) {
  for (const bool takesFiles : {true, false}) {
    for (const InTheWay what : {InTheWay::Kill, InTheWay::Fail}) {
      std::size_t interrupted = 0;
      for (bool wasReached = true; wasReached; ++interrupted) {
        SCOPED_TRACE("call " + std::to_string(interrupted));
        const Scene scene(takesFiles);
        const TracedRun run = RunTraced([&] { return scene.Save(NEW); }, what, interrupted);
        wasReached = run.calls.size() > interrupted;
        ASSERT_EQ(run.killed, wasReached && what == InTheWay::Kill);
        ExpectSound(scene, run, takesFiles);
        ASSERT_TRUE(wasReached || run.result);
        if (HasFailure()) return;
      }
      EXPECT_GT(interrupted, 20u);
    }
  }
}

TEST_F(SaveInterrupted, TheTextIsOnTheDiskBeforeItTakesThePlaceAndSoIsTheName) {
  std::vector<long> order;
  for (const bool takesFiles : {true, false}) {
    const Scene scene(takesFiles);
    for (const long call : RunTraced([&] { return scene.Save(NEW); }).calls) {
      for (const long wanted : {SYS_write, SYS_fsync, SYS_rename, SYS_unlink}) {
        if (call == wanted) order.push_back(call);
      }
    }
  }
  EXPECT_EQ(order, (std::vector<long>{// beside: the text, the versions, the exchange
                                      SYS_write, SYS_fsync, SYS_rename, SYS_rename, SYS_fsync,
                                      // over: the note, the copy, the file itself
                                      SYS_write, SYS_fsync, SYS_fsync, SYS_write, SYS_fsync,
                                      SYS_fsync, SYS_write, SYS_fsync, SYS_unlink, SYS_unlink}));
}

}  // namespace
}  // namespace ferrowand
#endif
