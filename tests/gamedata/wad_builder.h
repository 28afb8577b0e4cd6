// WAD files for tests, made from a list of textures.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace ferrowand {

struct LumpPlan {
  std::string name;
  std::uint32_t width = 0, height = 0;
  std::string pixels;  // of the first level; repeated until it is full
  char type = 'D';
};

inline std::string Le32(std::uint32_t value) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<char>(value >> shift));
  return bytes;
}

inline std::string NameField(std::string name) {
  name.resize(16);
  return name;
}

inline std::string LumpBytes(const LumpPlan& plan) {
  std::string offsets, levels;
  std::uint32_t offset = 40;
  for (int level = 0; level < 4; ++level) {
    const std::uint32_t size = (plan.width >> level) * (plan.height >> level);
    offsets += Le32(offset);
    offset += size;
    for (std::uint32_t i = 0; i < size; ++i) {
      levels.push_back(level == 0 ? plan.pixels[i % plan.pixels.size()] : '\0');
    }
  }
  return NameField(plan.name) + Le32(plan.width) + Le32(plan.height) + offsets + levels;
}

inline std::string EntryBytes(std::uint32_t filepos, std::uint32_t size, const LumpPlan& plan) {
  return Le32(filepos) + Le32(size) + Le32(size) + plan.type + std::string(3, '\0') +
         NameField(plan.name);
}

// Lumps first, directory last.
inline std::string WadBytes(const std::vector<LumpPlan>& plans, std::string id = "WAD2") {
  std::string lumps, directory;
  for (const LumpPlan& plan : plans) {
    const std::string lump = LumpBytes(plan);
    directory += EntryBytes(static_cast<std::uint32_t>(12 + lumps.size()),
                            static_cast<std::uint32_t>(lump.size()), plan);
    lumps += lump;
  }
  return id + Le32(static_cast<std::uint32_t>(plans.size())) +
         Le32(static_cast<std::uint32_t>(12 + lumps.size())) + lumps + directory;
}

inline std::string Text(std::span<const std::uint8_t> bytes) {
  return {bytes.begin(), bytes.end()};
}

}  // namespace ferrowand
