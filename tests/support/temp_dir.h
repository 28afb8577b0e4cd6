// A scratch folder that goes away with its object.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>

namespace ferrowand {

// Names are UTF-8 on every system, as the programs have them.
inline std::filesystem::path FsPath(const std::string& name) {
  return std::u8string(name.begin(), name.end());
}
inline std::string FsName(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
}

// Of a file that must be there.
inline std::string FileText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + FsName(path));
  return {std::istreambuf_iterator<char>(file), {}};
}

class TempDir {
 public:
  TempDir() {
    std::random_device random;
    do {
      const std::uint64_t number = (std::uint64_t{random()} << 32) | random();
      root_ = std::filesystem::temp_directory_path() / ("ferrowand-" + std::to_string(number));
    } while (!std::filesystem::create_directory(root_));
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  // The folder itself, or what would be `name` in it.
  std::string Path(const std::string& name = "") const {
    return FsName(name.empty() ? root_ : root_ / FsPath(name));
  }

  // Makes or replaces the file, and the folders on the way to it; its path.
  std::string Write(const std::string& name, const std::string& contents) const {
    std::filesystem::create_directories((root_ / FsPath(name)).parent_path());
    std::ofstream file(root_ / FsPath(name), std::ios::binary);
    if (!file.write(contents.data(), static_cast<std::streamsize>(contents.size())).flush())
      throw std::runtime_error("cannot write " + Path(name));
    return Path(name);
  }

  std::string Read(const std::string& name) const { return FileText(root_ / FsPath(name)); }

 private:
  std::filesystem::path root_;
};

}  // namespace ferrowand
