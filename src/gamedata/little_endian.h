// Numbers of the game's files, byte by byte, so that neither the machine's order nor the padding of
// a record ever shows.
#pragma once

#include <cstdint>

namespace ferrowand {

inline std::uint16_t GetLe16(const std::uint8_t* p) {
  return static_cast<std::uint16_t>(p[0] | p[1] << 8);
}

inline std::uint32_t GetLe32(const std::uint8_t* p) {
  return GetLe16(p) | static_cast<std::uint32_t>(GetLe16(p + 2)) << 16;
}

inline void PutLe16(std::uint8_t* p, std::uint16_t value) {
  p[0] = static_cast<std::uint8_t>(value);
  p[1] = static_cast<std::uint8_t>(value >> 8);
}

inline void PutLe32(std::uint8_t* p, std::uint32_t value) {
  PutLe16(p, static_cast<std::uint16_t>(value));
  PutLe16(p + 2, static_cast<std::uint16_t>(value >> 16));
}

}  // namespace ferrowand
