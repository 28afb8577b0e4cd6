// A map larger than any that people make: 60,000 brushes, 360,000 faces, about 36 MB of text.
#pragma once

#include <string>

namespace ferrowand::bench {

inline constexpr int GENERATED_BRUSHES = 60000;
inline constexpr int GENERATED_FACES = 6 * GENERATED_BRUSHES;

std::string GeneratedMap();

// The generated map as a file that goes away with its object.
class GeneratedMapFile {
 public:
  GeneratedMapFile();
  ~GeneratedMapFile();
  GeneratedMapFile(const GeneratedMapFile&) = delete;
  GeneratedMapFile& operator=(const GeneratedMapFile&) = delete;

  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace ferrowand::bench
