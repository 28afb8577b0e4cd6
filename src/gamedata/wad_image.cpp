#include "gamedata/wad_image.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ferrowand {
namespace {

constexpr std::uint64_t LARGESTFILE = std::numeric_limits<std::uint32_t>::max();

const std::uint8_t* BytesAt(const std::string& bytes, std::size_t offset) {
  return reinterpret_cast<const std::uint8_t*>(bytes.data()) + offset;
}

}  // namespace

std::optional<WadImage> WadImage::Parse(std::string bytes) {
  if (bytes.size() < WADHEADERSIZE || bytes.size() >= LARGESTFILE) return std::nullopt;
  const auto header = DecodeHeader(BytesAt(bytes, 0));
  if (!header) return std::nullopt;
  const WadHeader cut = CutToFile(*header, static_cast<std::uint32_t>(bytes.size()));
  return WadImage(std::move(bytes), cut);
}

WadImage::WadImage(std::string bytes, const WadHeader& header)
    : bytes_(std::move(bytes)), header_(header) {
  directory_.reserve(header_.numlumps);
  for (std::uint32_t i = 0; i < header_.numlumps; ++i) {
    directory_.push_back(DecodeEntry(BytesAt(bytes_, header_.infotableofs + i * WADENTRYSIZE)));
  }
}

std::vector<WadEntry>::iterator WadImage::Find(const WadEntry& entry) {
  return std::ranges::find(directory_, entry);
}

// Of what the entry tells of and, where it is a texture, what that needs.
std::uint64_t WadImage::EndOf(const WadEntry& entry) const {
  std::uint64_t end = std::uint64_t{entry.filepos} + entry.disksize;
  if (entry.type != MIPTEXTURE || std::uint64_t{entry.filepos} + MIPHEADERSIZE > bytes_.size()) {
    return end;
  }
  const std::uint32_t width = GetLe32(BytesAt(bytes_, entry.filepos + 16));
  const std::uint32_t height = GetLe32(BytesAt(bytes_, entry.filepos + 20));
  if (width > MAXTEXTURESIDE || height > MAXTEXTURESIDE) return end;
  // The smaller levels may be missing, and another lump stand there.
  return std::max(end,
                  std::uint64_t{entry.filepos} + MIPHEADERSIZE + std::uint64_t{width} * height);
}

// Whether a lump of another entry, twins of this one among them, has bytes there.
bool WadImage::IsShared(const WadEntry& own, std::uint64_t from, std::uint64_t to) const {
  return std::ranges::count_if(directory_, [&](const WadEntry& entry) {
           return entry == own || (entry.filepos < to && EndOf(entry) > from);
         }) > 1;
}

void WadImage::WriteDirectory() {
  const std::size_t end = header_.infotableofs + directory_.size() * WADENTRYSIZE;
  if (bytes_.size() < end) bytes_.resize(end);
  auto* bytes = reinterpret_cast<std::uint8_t*>(bytes_.data());
  for (std::size_t i = 0; i < directory_.size(); ++i) {
    EncodeEntry(directory_[i], bytes + header_.infotableofs + i * WADENTRYSIZE);
  }
  header_.numlumps = static_cast<std::uint32_t>(directory_.size());
  EncodeHeader(header_, bytes);
}

// A directory that stands before a lump is copied to the end of the file, so that a texture that
// takes its place overwrites nothing.
bool WadImage::PutDirectoryLast() {
  const bool isBehindAll = std::ranges::none_of(directory_, [this](const WadEntry& entry) {
    return entry.filepos >= header_.infotableofs && entry.filepos < bytes_.size();
  });
  if (isBehindAll) return true;
  if (bytes_.size() + directory_.size() * WADENTRYSIZE >= LARGESTFILE) return false;
  header_.infotableofs = static_cast<std::uint32_t>(bytes_.size());
  WriteDirectory();
  return true;
}

bool WadImage::Add(WadEntry& entry, std::span<const std::uint8_t> lump) {
  const std::uint64_t table = (directory_.size() + 1) * WADENTRYSIZE;
  const std::uint64_t most = std::max<std::uint64_t>(bytes_.size(), header_.infotableofs);
  if (most + lump.size() + 2 * table >= LARGESTFILE || !PutDirectoryLast()) return false;
  entry.filepos = header_.infotableofs;
  entry.disksize = entry.size = static_cast<std::uint32_t>(lump.size());
  entry.type = MIPTEXTURE;
  entry.compression = 0;
  directory_.push_back(entry);
  header_.infotableofs += entry.size;
  bytes_.resize(std::max<std::size_t>(bytes_.size(), header_.infotableofs));
  std::ranges::copy(lump, bytes_.begin() + entry.filepos);
  WriteDirectory();
  return true;
}

std::optional<WadImage::Gap> WadImage::Remove(const WadEntry& entry, std::uint32_t width,
                                              std::uint32_t height) {
  const auto found = Find(entry);
  if (found == directory_.end() || !PutDirectoryLast()) return std::nullopt;
  const std::uint64_t end = std::min<std::uint64_t>(
      std::uint64_t{entry.filepos} + LumpSize(width, height), header_.infotableofs);
  Gap gap{entry.filepos, 0};
  if (entry.filepos < end && !IsShared(entry, entry.filepos, end)) {
    gap.size = static_cast<std::uint32_t>(end) - gap.pos;
  }
  directory_.erase(found);
  bytes_.erase(gap.pos, gap.size);
  header_.infotableofs -= gap.size;
  for (WadEntry& other : directory_) {
    if (other.filepos > gap.pos) other.filepos -= gap.size;
  }
  WriteDirectory();
  bytes_.resize(header_.infotableofs + directory_.size() * WADENTRYSIZE);
  return gap;
}

std::optional<WadEntry> WadImage::Rename(const WadEntry& entry, std::string_view name,
                                         std::uint32_t width, std::uint32_t height) {
  const auto found = Find(entry);
  if (found == directory_.end() || name.empty() ||
      std::uint64_t{entry.filepos} + MIPHEADERSIZE > bytes_.size()) {
    return std::nullopt;
  }
  // Meant: what stood behind the new name's zero byte stays.
  const std::size_t length = std::min(name.size(), found->name.size() - 1);
  std::copy_n(name.begin(), length, found->name.begin());
  found->name[length] = 0;
  WriteDirectory();
  std::ranges::copy(EncodeMipHeader(found->name, width, height), bytes_.begin() + found->filepos);
  return *found;
}

bool WadImage::Rewrite(const WadEntry& entry, std::span<const std::uint8_t> lump) {
  // Another program may have left the smaller levels out; what stands there then is not ours. A
  // lump that begins with this one is the same.
  const std::uint64_t pos = entry.filepos, end = pos + lump.size();
  const std::uint64_t room = pos < header_.infotableofs ? header_.infotableofs : bytes_.size();
  const bool hitsOther = std::ranges::any_of(directory_, [&](const WadEntry& other) {
    return other.filepos != pos && other.filepos < end && EndOf(other) > pos;
  });
  if (Find(entry) == directory_.end() || end > room || hitsOther) return false;
  std::ranges::copy(lump, bytes_.begin() + entry.filepos);
  return true;
}

}  // namespace ferrowand
