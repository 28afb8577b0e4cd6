// The edits of a WAD in its file. A WAD keeps its directory behind its lumps: a new texture takes
// the directory's place, and the directory goes behind it.
#include <algorithm>
#include <array>
#include <limits>

#include "gamedata/palette.h"
#include "gamedata/wad_file.h"
#include "gamedata/wad_format.h"

namespace ferrowand {
namespace {

constexpr std::uint32_t MOVECHUNK = 1 << 20;  // bytes

// Each texel is the palette's nearest to the average of a block of 2^shift texels each way.
void AppendLevel(std::vector<std::uint8_t>& lump, std::span<const std::uint8_t> pixels,
                 std::size_t width, std::size_t height, int shift, const Palette& palette) {
  const std::size_t side = std::size_t{1} << shift;
  const int texels = static_cast<int>(side * side);
  for (std::size_t top = 0; top + side <= height; top += side) {
    for (std::size_t left = 0; left + side <= width; left += side) {
      int red = 0, green = 0, blue = 0;
      for (std::size_t y = top; y < top + side; ++y) {
        for (std::size_t x = left; x < left + side; ++x) {
          const PaletteEntry& entry = palette[pixels[y * width + x]];
          red += entry.red;
          green += entry.green;
          blue += entry.blue;
        }
      }
      lump.push_back(palette.NearestColour(red / texels, green / texels, blue / texels));
    }
  }
}

std::vector<std::uint8_t> MakeLump(const Texture& texture, std::span<const std::uint8_t> pixels,
                                   const Palette& palette) {
  const std::size_t width = texture.width, height = texture.height;
  const auto header = EncodeMipHeader(texture.entry.name, texture.width, texture.height);
  std::vector<std::uint8_t> lump;
  lump.reserve(LumpSize(texture.width, texture.height));
  lump.assign(header.begin(), header.end());
  lump.insert(lump.end(), pixels.begin(),
              pixels.begin() + static_cast<std::ptrdiff_t>(width * height));
  for (int shift = 1; shift < MIPLEVELS; ++shift) {
    AppendLevel(lump, pixels, width, height, shift, palette);
  }
  return lump;
}

bool IsPossible(const Texture& texture, std::span<const std::uint8_t> pixels) {
  return texture.width > 0 && texture.height > 0 && texture.width <= MAXTEXTURESIDE &&
         texture.height <= MAXTEXTURESIDE &&
         pixels.size() >= std::size_t{texture.width} * texture.height;
}

// Whether a lump of the directory begins behind `from` and before `to`.
bool HasLumpBetween(const std::vector<WadEntry>& directory, std::uint32_t from, std::uint64_t to) {
  return std::any_of(directory.begin(), directory.end(), [=](const WadEntry& entry) {
    return entry.filepos > from && entry.filepos < to;
  });
}

}  // namespace

bool WadFile::AddTexture(std::unique_ptr<Texture> texture) {
  std::vector<WadEntry> directory;
  if (file_ == INVALID_FILE || !IsPossible(*texture, texture->pixels) ||
      !ReadDirectory(directory) || !PutDirectoryLast(directory)) {
    return false;
  }
  const std::vector<std::uint8_t> lump = MakeLump(*texture, texture->pixels, palette_);
  const std::uint64_t end = header_.infotableofs + lump.size() + WADENTRYSIZE +
                            std::uint64_t{header_.numlumps} * WADENTRYSIZE;
  if (end >= std::numeric_limits<std::uint32_t>::max()) return false;

  WadEntry entry = texture->entry;
  entry.filepos = header_.infotableofs;
  entry.disksize = entry.size = static_cast<std::uint32_t>(lump.size());
  entry.type = MIPTEXTURE;
  entry.compression = 0;
  directory.push_back(entry);
  Header header = header_;
  ++header.numlumps;
  header.infotableofs += entry.size;
  if (!WriteAt(entry.filepos, lump) || !WriteDirectory(header, directory)) {
    // A full disk: the old directory still has its room.
    directory.pop_back();
    WriteDirectory(header_, directory);
    return false;
  }
  header_ = header;
  texture->entry = entry;
  texture->wad = this;
  texture->flags = 0;
  texture->paddedWidth = PaddedSize(texture->width);
  texture->paddedHeight = PaddedSize(texture->height);
  texture->pixels = std::vector<std::uint8_t>();
  texture->rgb = std::vector<std::uint8_t>();
  textures_.push_back(std::move(texture));
  Index();
  return true;
}

bool WadFile::RemoveTexture(Texture& texture) {
  const auto place = std::find_if(textures_.begin(), textures_.end(),
                                  [&](const auto& owned) { return owned.get() == &texture; });
  std::vector<WadEntry> directory;
  if (place == textures_.end() || !ReadDirectory(directory) || !PutDirectoryLast(directory)) {
    return false;
  }
  const auto entry = std::find(directory.begin(), directory.end(), texture.entry);
  if (entry == directory.end()) return false;
  directory.erase(entry);

  const std::uint32_t pos = texture.entry.filepos;
  const std::uint64_t end = std::uint64_t{pos} + LumpSize(texture.width, texture.height);
  std::uint32_t size =
      static_cast<std::uint32_t>(std::min<std::uint64_t>(end, header_.infotableofs)) - pos;
  // Bytes that another entry tells of as well must stay.
  if (HasLumpBetween(directory, pos - 1, end)) size = 0;

  const auto closeGap = [&](WadEntry& other) {
    if (other.filepos > pos) other.filepos -= size;
  };
  std::for_each(directory.begin(), directory.end(), closeGap);
  Header header = header_;
  --header.numlumps;
  header.infotableofs -= size;
  if (!MoveDown(pos + size, pos, header_.infotableofs) || !WriteDirectory(header, directory)) {
    return false;
  }
  file::Seek(file_, header.infotableofs + std::int64_t{header.numlumps} * WADENTRYSIZE,
             SeekFrom::Begin);
  const bool cut = file::Truncate(file_);

  header_ = header;
  RemoveFromCache(texture);
  for (const auto& other : textures_) closeGap(other->entry);
  textures_.erase(place);
  Index();
  return cut;
}

bool WadFile::RenameTexture(Texture& texture, std::string_view newName) {
  std::vector<WadEntry> directory;
  if (file_ == INVALID_FILE || newName.empty() || !ReadDirectory(directory)) return false;
  const auto entry = std::find(directory.begin(), directory.end(), texture.entry);
  if (entry == directory.end()) return false;
  // Meant: what stood behind the new name's zero byte stays.
  const std::size_t length = std::min(newName.size(), entry->name.size() - 1);
  std::copy_n(newName.begin(), length, entry->name.begin());
  entry->name[length] = 0;
  if (!WriteDirectory(header_, directory) ||
      !WriteAt(entry->filepos, EncodeMipHeader(entry->name, texture.width, texture.height))) {
    return false;
  }
  texture.entry = *entry;
  Index();
  return true;
}

bool WadFile::RewriteTexture(Texture& texture, std::span<const std::uint8_t> pixels) {
  std::vector<WadEntry> directory;
  if (file_ == INVALID_FILE || !IsPossible(texture, pixels) || !ReadDirectory(directory) ||
      std::find(directory.begin(), directory.end(), texture.entry) == directory.end()) {
    return false;
  }
  // Another program may have left the smaller levels out; what stands there then is not ours.
  const std::uint32_t pos = texture.entry.filepos;
  const std::uint64_t end = std::uint64_t{pos} + LumpSize(texture.width, texture.height);
  const std::uint32_t room = pos < header_.infotableofs ? header_.infotableofs : file::Size(file_);
  if (end > room || HasLumpBetween(directory, pos, end)) return false;
  if (!WriteAt(pos, MakeLump(texture, pixels, palette_))) return false;
  RemoveFromCache(texture);
  Unload(texture);
  texture.colourIs.reset();
  return true;
}

bool WadFile::WriteAt(std::uint32_t offset, std::span<const std::uint8_t> bytes) const {
  return file::Seek(file_, offset, SeekFrom::Begin) == offset &&
         file::Write(file_, bytes.data(), bytes.size());
}

bool WadFile::WriteDirectory(const Header& header, const std::vector<WadEntry>& directory) const {
  std::vector<std::uint8_t> bytes(directory.size() * WADENTRYSIZE);
  for (std::size_t i = 0; i < directory.size(); ++i) {
    EncodeEntry(directory[i], &bytes[i * WADENTRYSIZE]);
  }
  std::array<std::uint8_t, WADHEADERSIZE> head;
  std::copy(header.identification.begin(), header.identification.end(), head.begin());
  PutLe32(&head[4], header.numlumps);
  PutLe32(&head[8], header.infotableofs);
  return WriteAt(header.infotableofs, bytes) && WriteAt(0, head);
}

// A directory that stands before a lump is copied to the end of the file, so that a texture that
// takes its place overwrites nothing.
bool WadFile::PutDirectoryLast(const std::vector<WadEntry>& directory) {
  Header header = header_;
  header.infotableofs = file::Size(file_);
  if (!HasLumpBetween(directory, header_.infotableofs - 1, header.infotableofs)) return true;
  const std::uint64_t end = std::uint64_t{header.infotableofs} + directory.size() * WADENTRYSIZE;
  if (end >= std::numeric_limits<std::uint32_t>::max() || !WriteDirectory(header, directory)) {
    return false;
  }
  header_ = header;
  return true;
}

bool WadFile::MoveDown(std::uint32_t from, std::uint32_t to, std::uint32_t end) const {
  if (from == to) return true;
  std::vector<std::uint8_t> chunk;
  while (from < end) {
    chunk.resize(std::min(end - from, MOVECHUNK));
    if (!ReadAt(from, chunk) || !WriteAt(to, chunk)) return false;
    from += static_cast<std::uint32_t>(chunk.size());
    to += static_cast<std::uint32_t>(chunk.size());
  }
  return true;
}

}  // namespace ferrowand
