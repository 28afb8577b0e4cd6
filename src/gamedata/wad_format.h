// The records of a WAD2 file as bytes.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "gamedata/little_endian.h"
#include "gamedata/wad_file.h"

namespace ferrowand {

inline constexpr std::uint32_t WADHEADERSIZE = 12;
inline constexpr std::uint32_t WADENTRYSIZE = 32;
inline constexpr std::uint32_t MIPHEADERSIZE = 40;
inline constexpr int MIPLEVELS = 4;
inline constexpr std::uint8_t MIPTEXTURE = 'D';
inline constexpr std::uint32_t MAXTEXTURESIDE = 32768;  // texels; its padded size still fits

inline WadEntry DecodeEntry(const std::uint8_t* bytes) {
  WadEntry entry;
  entry.filepos = GetLe32(bytes);
  entry.disksize = GetLe32(bytes + 4);
  entry.size = GetLe32(bytes + 8);
  entry.type = bytes[12];
  entry.compression = bytes[13];
  entry.padding = GetLe16(bytes + 14);
  std::copy_n(bytes + 16, entry.name.size(), entry.name.begin());
  return entry;
}

inline void EncodeEntry(const WadEntry& entry, std::uint8_t* bytes) {
  PutLe32(bytes, entry.filepos);
  PutLe32(bytes + 4, entry.disksize);
  PutLe32(bytes + 8, entry.size);
  bytes[12] = entry.type;
  bytes[13] = entry.compression;
  PutLe16(bytes + 14, entry.padding);
  std::copy(entry.name.begin(), entry.name.end(), bytes + 16);
}

// Nothing for what is no WAD2. The or is meant: one wrong letter in the middle has always been let
// pass.
inline std::optional<WadHeader> DecodeHeader(const std::uint8_t* bytes) {
  if (bytes[0] != 'W' || (bytes[1] != 'A' && bytes[2] != 'D') || bytes[3] != '2') {
    return std::nullopt;
  }
  WadHeader header;
  std::copy_n(bytes, header.identification.size(), header.identification.begin());
  header.numlumps = GetLe32(bytes + 4);
  header.infotableofs = GetLe32(bytes + 8);
  return header;
}

inline void EncodeHeader(const WadHeader& header, std::uint8_t* bytes) {
  std::ranges::copy(header.identification, bytes);
  PutLe32(bytes + 4, header.numlumps);
  PutLe32(bytes + 8, header.infotableofs);
}

// What it tells of the directory that is really there, so that an edit cannot spoil what lies
// beside it.
inline WadHeader CutToFile(WadHeader header, std::uint32_t fileSize) {
  if (header.infotableofs < WADHEADERSIZE || header.infotableofs > fileSize) {
    header.infotableofs = fileSize;
  }
  header.numlumps = std::min(header.numlumps, (fileSize - header.infotableofs) / WADENTRYSIZE);
  return header;
}

// The header in front of a texture's pixels; the levels follow one another without gaps.
inline std::array<std::uint8_t, MIPHEADERSIZE> EncodeMipHeader(const std::array<char, 16>& name,
                                                               std::uint32_t width,
                                                               std::uint32_t height) {
  std::array<std::uint8_t, MIPHEADERSIZE> bytes{};
  std::copy(name.begin(), name.end(), bytes.begin());
  PutLe32(&bytes[16], width);
  PutLe32(&bytes[20], height);
  std::uint32_t offset = MIPHEADERSIZE;
  for (int level = 0; level < MIPLEVELS; ++level) {
    PutLe32(&bytes[24 + 4 * level], offset);
    offset += (width >> level) * (height >> level);
  }
  return bytes;
}

}  // namespace ferrowand
