// The textures of compiled levels and of WAD3 files. Both hold them as the game's own WADs do; the
// later kinds have a palette behind the smallest level: a count of 256, and three bytes for each.
#include <algorithm>
#include <utility>

#include "gamedata/picture.h"
#include "gamedata/wad_format.h"

namespace ferrowand {
namespace {

constexpr std::uint32_t QUAKE_LEVEL = 29, LATER_LEVEL = 30;
constexpr std::size_t TEXTURE_LUMP = 4 + 8 * 2;  // where a level's header tells of its textures
constexpr std::size_t LEVEL_HEADER = 4 + 8 * 15;
constexpr std::uint8_t WAD3_TEXTURE = 'C';
constexpr std::uint8_t HOLE = 255;
constexpr std::size_t PALETTE = 768;
constexpr std::size_t MAXTEXTURES = 65536, MAXTEXELS = std::size_t{64} << 20;

// Many entries may stand for the same bytes.
struct Textures {
  std::vector<NamedPicture> all;
  std::size_t texels = 0;

  void Add(std::optional<NamedPicture> texture) {
    if (!texture) return;
    texels += texture->picture.indices.size();
    all.push_back(std::move(*texture));
  }
  bool IsFull() const { return texels >= MAXTEXELS || all.size() >= MAXTEXTURES; }
};

class GameBytes {
 public:
  explicit GameBytes(std::string_view bytes) : bytes_(bytes) {}

  bool Has(std::uint64_t at, std::uint64_t count) const {
    return at <= bytes_.size() && count <= bytes_.size() - at;
  }
  const std::uint8_t* At(std::uint64_t at) const {
    return reinterpret_cast<const std::uint8_t*>(bytes_.data()) + at;
  }
  std::uint32_t Number(std::uint64_t at) const { return Has(at, 4) ? GetLe32(At(at)) : 0; }
  std::size_t size() const { return bytes_.size(); }

 private:
  std::string_view bytes_;
};

std::string NameAt(const std::uint8_t* bytes) {
  const auto* end = std::find(bytes, bytes + 16, 0);
  return {bytes, end};
}

// Nothing for a texture that has no image here, or is cut off.
std::optional<NamedPicture> TextureAt(const GameBytes& bytes, std::uint64_t at, bool hasPalette) {
  if (!bytes.Has(at, MIPHEADERSIZE)) return std::nullopt;
  NamedPicture found{NameAt(bytes.At(at)), {}};
  const std::uint32_t width = bytes.Number(at + 16), height = bytes.Number(at + 20);
  const std::uint32_t first = bytes.Number(at + 24);
  const std::uint64_t texels = std::uint64_t{width} * height;
  if (!IsPictureSize(width, height) || first == 0 || !bytes.Has(at + first, texels)) {
    return std::nullopt;
  }
  Picture& picture = found.picture;
  picture.width = static_cast<int>(width);
  picture.height = static_cast<int>(height);
  picture.indices.assign(bytes.At(at + first), bytes.At(at + first) + texels);
  if (!hasPalette) return found;
  const std::uint64_t last = at + bytes.Number(at + 36);
  const std::uint64_t palette = last + std::uint64_t{width >> 3} * (height >> 3) + 2;
  if (!bytes.Has(palette, PALETTE)) return std::nullopt;
  for (std::size_t i = 0; i < 256; ++i) {
    const std::uint8_t* colour = bytes.At(palette + 3 * i);
    const bool isHole = i == HOLE && found.name.starts_with('{');
    picture.colours.push_back(
        {colour[0], colour[1], colour[2], static_cast<std::uint8_t>(isHole ? 0 : 255)});
  }
  return found;
}

Textures TexturesOfLevel(const GameBytes& bytes, bool hasPalette) {
  Textures textures;
  const std::uint64_t lump = bytes.Number(TEXTURE_LUMP);
  const std::uint32_t count = bytes.Number(lump);
  for (std::uint32_t i = 0; i < count && !textures.IsFull(); ++i) {
    if (!bytes.Has(lump + 4 + std::uint64_t{4} * i, 4)) break;
    const std::uint32_t offset = bytes.Number(lump + 4 + std::uint64_t{4} * i);
    // -1: the level has none of that number.
    if (offset == 0xFFFFFFFF) continue;
    textures.Add(TextureAt(bytes, lump + offset, hasPalette));
  }
  return textures;
}

Textures TexturesOfWad3(const GameBytes& bytes) {
  Textures textures;
  const std::uint64_t directory = bytes.Number(8);
  const std::uint32_t count = bytes.Number(4);
  for (std::uint32_t i = 0; i < count && !textures.IsFull(); ++i) {
    const std::uint64_t at = directory + std::uint64_t{WADENTRYSIZE} * i;
    if (!bytes.Has(at, WADENTRYSIZE)) break;
    const WadEntry entry = DecodeEntry(bytes.At(at));
    if (entry.type != WAD3_TEXTURE || entry.compression != 0) continue;
    textures.Add(TextureAt(bytes, entry.filepos, true));
  }
  return textures;
}

}  // namespace

std::optional<std::vector<NamedPicture>> ReadTexturesOfGames(std::string_view text) {
  const GameBytes bytes(text);
  if (text.starts_with("WAD3") && bytes.Has(0, WADHEADERSIZE)) return TexturesOfWad3(bytes).all;
  const std::uint32_t version = bytes.Number(0);
  const bool isLevel = version == QUAKE_LEVEL || version == LATER_LEVEL;
  if (!isLevel || !bytes.Has(0, LEVEL_HEADER)) return std::nullopt;
  return TexturesOfLevel(bytes, version == LATER_LEVEL).all;
}

}  // namespace ferrowand
