// WAD2 texture files: the directory and the headers are read when one is opened, pixels when they
// are asked for, into a cache that throws out the oldest first. The file is edited in place. The
// format is the game's: a 12-byte header, lumps, a directory of 32-byte entries; all little-endian.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/canvas.h"
#include "platform/file.h"

namespace ferrowand {

class Palette;
class Reporter;
class WadFile;

// One entry of a WAD's directory, as it stands in the file.
struct WadEntry {
  std::uint32_t filepos = 0;
  std::uint32_t disksize = 0;
  std::uint32_t size = 0;
  std::uint8_t type = 0;
  std::uint8_t compression = 0;
  std::uint16_t padding = 0;
  std::array<char, 16> name{};  // ends at a zero byte, or after 16
};

inline constexpr std::uint8_t TEXTURE_BUILTIN = 1;  // not from the file, never unloaded
inline constexpr std::uint8_t TEXTURE_HELD = 2;     // kept in memory, never reloaded or unloaded

struct Texture {
  std::uint16_t width = 0, height = 0;              // texels
  std::uint16_t paddedWidth = 0, paddedHeight = 0;  // the powers of two not below, at least 4
  std::vector<std::uint8_t> pixels;  // palette indices, padded size, rows from the top; or empty
  Colour colour;                     // the one colour that stands for the texture
  WadFile* wad = nullptr;
  std::uint8_t flags = 0;
  WadEntry entry;
  std::vector<std::uint8_t> rgb;  // padded size x 3, made on first request; or empty

  std::string_view Name() const;
};

// 4, 8, 16 ... until not below; 32768 at most.
std::uint16_t PaddedSize(std::uint16_t size);
// The header of 40 bytes and four levels, each half as wide and high as the one before.
std::uint32_t LumpSize(std::uint32_t width, std::uint32_t height);

// How a texture is reduced to one colour.
enum class OneColour : std::uint8_t { Average = 0, MostCommon = 1 };

struct WadLimits {
  std::uint16_t maxCached = 1000;      // textures with pixels at once
  std::uint32_t maxTextureSize = 65536;  // texels; a larger one shows the replacement image
};

class WadFile {
 public:
  // The built-in WAD: "badwad", no file, the one texture "BADTEXT".
  WadFile(const WadLimits& limits, const Palette& palette, Reporter& reporter);
  ~WadFile();
  WadFile(const WadFile&) = delete;
  WadFile& operator=(const WadFile&) = delete;

  // Takes the file's directory and headers. Fails, and stays the built-in WAD, when the file cannot
  // be opened or is no WAD2. Entries that lie outside the file, or whose texture has no size, are
  // left out and reported once a file under "Parsing Error"; the others are kept.
  bool Open(const std::string& name);

  const std::string& FileName() const { return fileName_; }
  std::span<const std::unique_ptr<Texture>> Textures() const { return textures_; }
  Texture* BadTexture() const { return badTexture_.get(); }

  // The first texture of that name, any case; else the bad texture. Never null.
  Texture* FindTexture(std::string_view name) const;
  // For "+0name" .. "+9name": the frame `step` further on in its cycle; any other texture itself.
  Texture* AnimatedFrame(Texture* texture, unsigned step) const;

  // Loads through the cache. Padded size; never empty.
  std::span<const std::uint8_t> Pixels(Texture& texture);
  std::span<const std::uint8_t> Rgb(Texture& texture);
  // Loads the pixels if need be and sets texture.colour.
  Colour RepresentativeColour(Texture& texture, OneColour how);
  // For every texture whose pixels are in the cache.
  void SetRepresentativeColours(OneColour how);

  void SetCacheSize(std::uint16_t maxCached);
  std::uint16_t numCached() const { return static_cast<std::uint16_t>(cached_.size()); }
  bool IsCached(const Texture& texture) const;
  void RemoveFromCache(Texture& texture);
  // Unless the texture is in the cache.
  void Unload(Texture& texture);
  void Flush();

  // The edits write to the file at once. False when the file refused; nothing else is undone.
  bool AddTexture(std::unique_ptr<Texture> texture);
  bool RemoveTexture(Texture& texture);
  bool RenameTexture(Texture& texture, std::string_view newName);
  // Writes the texture's pixels, width x height, over its lump; the sizes must not have changed.
  bool RewriteTexture(Texture& texture, std::span<const std::uint8_t> pixels);
  // An image from memory: unpadded, held as built in.
  void SetImage(Texture& texture, std::string_view name, std::span<const std::uint8_t> pixels,
                std::uint16_t width, std::uint16_t height);

 private:
  struct Header {
    std::array<char, 4> identification{'W', 'A', 'D', '2'};
    std::uint32_t numlumps = 0;
    std::uint32_t infotableofs = 0;
  };

  void Evict(std::size_t n);
  void Load(Texture& texture);

  WadLimits limits_;
  const Palette& palette_;
  Reporter& reporter_;
  std::string fileName_;
  FileHandle file_ = INVALID_FILE;
  Header header_;
  std::vector<std::unique_ptr<Texture>> textures_;
  std::unordered_map<std::string, Texture*> byName_;  // upper case; the first of equals
  std::unique_ptr<Texture> badTexture_;
  std::vector<Texture*> cached_;  // oldest first
};

}  // namespace ferrowand
