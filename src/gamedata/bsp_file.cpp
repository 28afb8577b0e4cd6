#include "gamedata/bsp_file.h"

#include <algorithm>
#include <array>

#include "base/report.h"
#include "base/safe_file.h"
#include "gamedata/little_endian.h"
#include "platform/file.h"

namespace ferrowand {
namespace {

struct LumpKind {
  std::size_t index;  // in the header
  std::int32_t elementSize;
  const char* name;
};

// In the order of showing.
constexpr LumpKind LUMPS[] = {
    {14, 64, "models"},       {3, 12, "vertices"},        {1, 20, "planes"},
    {10, 28, "leafs"},        {5, 24, "nodes"},           {6, 40, "texinfo"},
    {9, 8, "clipnodes"},      {7, 20, "faces"},           {11, 2, "surfaces"},
    {13, 4, "surfedges"},     {12, 4, "edges"},           {2, 1, "texture data bytes"},
    {4, 1, "vis data bytes"}, {8, 1, "light data bytes"}, {0, 1, "entity data bytes"},
};
constexpr std::size_t HEADER = 4 + std::size(LUMPS) * 8;
constexpr std::int32_t QUAKE_VERSION = 29;

class Header {
 public:
  explicit Header(std::string_view bytes) {
    std::copy_n(bytes.begin(), std::min(bytes.size(), HEADER), bytes_.begin());
  }

  std::int32_t Version() const { return At(0); }
  std::int32_t Offset(const LumpKind& lump) const { return At(4 + lump.index * 8); }
  std::int32_t LengthOf(const LumpKind& lump) const { return At(8 + lump.index * 8); }

 private:
  std::int32_t At(std::size_t offset) const {
    return static_cast<std::int32_t>(GetLe32(bytes_.data() + offset));
  }
  std::array<std::uint8_t, HEADER> bytes_{};
};

bool LiesInside(std::int64_t offset, std::int64_t length, std::uint64_t fileSize) {
  return length == 0 || (offset >= static_cast<std::int64_t>(HEADER) && length > 0 &&
                         static_cast<std::uint64_t>(offset + length) <= fileSize);
}

}  // namespace

std::vector<std::string> BspSummaryOf(std::string_view head, std::uint64_t fileSize) {
  const Header header(head);
  std::vector<std::string> lines{Format("BSP Version: %i", header.Version())};
  for (const LumpKind& lump : LUMPS) {
    const std::int32_t length = header.LengthOf(lump);
    lines.push_back(Format("%5i %s, (%5i bytes)", length / lump.elementSize, lump.name, length));
  }
  if (fileSize < HEADER) {
    lines.push_back(
        Format("The file ends in its header, after %u bytes.", static_cast<unsigned>(fileSize)));
    return lines;
  }
  if (header.Version() != QUAKE_VERSION) {
    lines.push_back(
        Format("Version %i would be a Quake level: the counts may mean nothing.", QUAKE_VERSION));
  }
  for (const LumpKind& lump : LUMPS) {
    if (LiesInside(header.Offset(lump), header.LengthOf(lump), fileSize)) continue;
    lines.push_back(Format("Outside the file: %s.", lump.name));
  }
  return lines;
}

std::vector<std::string> BspSummary(const std::string& path) {
  const std::optional<FileStamp> stamp = file::Stamp(path);
  const std::optional<std::string> head = FileBytes(path, HEADER);
  if (!stamp || !head) return {"Could not open bsp file for read"};
  return BspSummaryOf(*head, stamp->size);
}

}  // namespace ferrowand
