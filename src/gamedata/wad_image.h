// A whole WAD in memory while it is edited: what an edit makes of a file's bytes is decided here,
// and the file is touched only when that is whole. What returns false has changed nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gamedata/wad_format.h"

namespace ferrowand {

class WadImage {
 public:
  // Nothing for what is no WAD2. A directory that lies outside the bytes is cut.
  static std::optional<WadImage> Parse(std::string bytes);

  const std::string& Bytes() const { return bytes_; }
  const WadHeader& Header() const { return header_; }
  const std::vector<WadEntry>& Directory() const { return directory_; }

  // A new lump takes the directory's place, and the directory goes behind it. The entry's place and
  // sizes are filled in.
  bool Add(WadEntry& entry, std::span<const std::uint8_t> lump);
  // Takes the entry out, and its bytes, unless another lump has a part in them: `pos` and `size`
  // tell which bytes are gone. What stands behind them moves down.
  struct Gap {
    std::uint32_t pos = 0, size = 0;
  };
  std::optional<Gap> Remove(const WadEntry& entry, std::uint32_t width, std::uint32_t height);
  // Also in the lump's own header. At most 15 bytes are taken, and what stood behind the new name's
  // zero byte stays.
  std::optional<WadEntry> Rename(const WadEntry& entry, std::string_view name, std::uint32_t width,
                                 std::uint32_t height);
  // Over the lump, of the same size. False where that has no room, or another one would be hit.
  bool Rewrite(const WadEntry& entry, std::span<const std::uint8_t> lump);

 private:
  WadImage(std::string bytes, const WadHeader& header);

  std::vector<WadEntry>::iterator Find(const WadEntry& entry);
  std::uint64_t EndOf(const WadEntry& entry) const;
  bool IsShared(const WadEntry& own, std::uint64_t from, std::uint64_t to) const;
  bool PutDirectoryLast();
  void WriteDirectory();

  std::string bytes_;
  WadHeader header_;
  std::vector<WadEntry> directory_;
};

}  // namespace ferrowand
