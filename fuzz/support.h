// What the fuzz targets share: the input as a file in memory, and a user who answers nothing.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>

#include "base/path_text.h"
#include "base/progress.h"
#include "base/report.h"

namespace ferrowand {

// A folder of this process, away with it.
class ScratchFolder {
 public:
  ScratchFolder() { std::filesystem::create_directories(path_); }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::string Path(const std::string& name) const { return (path_ / name).string(); }
  std::string Write(const std::string& name, const std::uint8_t* data, std::size_t size) const {
    const std::string path = Path(name);
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file || std::fwrite(data, 1, size, file) != size) std::abort();
    std::fclose(file);
    return path;
  }

 private:
  static std::filesystem::path Root() {
    if (!std::getenv("TMPDIR") && std::filesystem::exists("/dev/shm")) return "/dev/shm";
    return std::filesystem::temp_directory_path();
  }
  std::filesystem::path path_ = Root() / ("ferrowand-fuzz-" + std::to_string(getpid()));
};

inline ScratchFolder& Scratch() {
  static ScratchFolder folder;
  return folder;
}

// What the program promises of itself; a broken promise is a finding.
inline void Require(bool condition) {
  if (!condition) std::abort();
}

class SilentUser : public MessageSink {
 public:
  Answer Show(const Message& message) override {
    if (message.title == "ASSERTION FAILURE") ++assertions;
    repeats += !said.insert(message.title + message.text.substr(0, 20)).second;
    return message.buttons == Buttons::Ok ? Answer::Ok : Answer::No;
  }
  void Beep() override {}
  void FatalExit(const std::string&) override { std::abort(); }
  void Exit(int) override { std::abort(); }

  int assertions = 0;
  int repeats = 0;  // of boxes that say the same as one before
  std::set<std::string> said;
};

struct Desk {
  Desk() { path.Add(""); }

  SilentUser user;
  Reporter reporter{user};
  LoadProgress progress;
  SearchPath path;
};

}  // namespace ferrowand
