// WAD2 texture files: the directory and the headers are read when one is opened, pixels when they
// are asked for, into a cache that throws out the oldest first. An edit replaces the file as a
// whole. The format is the game's: a 12-byte header, lumps, a directory of 32-byte entries; all
// little-endian.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/colour.h"
#include "platform/file.h"

namespace ferrowand {

class Palette;
class Reporter;
class WadFile;
class WadImage;

// One entry of a WAD's directory, as it stands in the file.
struct WadEntry {
  std::uint32_t filepos = 0;
  std::uint32_t disksize = 0;
  std::uint32_t size = 0;
  std::uint8_t type = 0;
  std::uint8_t compression = 0;
  std::uint16_t padding = 0;
  std::array<char, 16> name{};  // ends at a zero byte, or after 16

  friend bool operator==(const WadEntry&, const WadEntry&) = default;
};

struct WadHeader {
  std::array<char, 4> identification{'W', 'A', 'D', '2'};
  std::uint32_t numlumps = 0;
  std::uint32_t infotableofs = 0;

  friend bool operator==(const WadHeader&, const WadHeader&) = default;
};

inline constexpr std::uint8_t TEXTURE_BUILTIN = 1;  // not from the file, never unloaded
inline constexpr std::uint8_t TEXTURE_HELD = 2;     // kept in memory, never reloaded or unloaded

// How a texture is reduced to one colour.
enum class OneColour : std::uint8_t { Average = 0, MostCommon = 1 };

struct Texture {
  std::uint16_t width = 0, height = 0;              // texels
  std::uint16_t paddedWidth = 0, paddedHeight = 0;  // the powers of two not below, at least 4
  std::vector<std::uint8_t> pixels;   // palette indices, padded size, rows from the top; or empty
  Colour colour;                      // the one colour that stands for the texture
  std::optional<OneColour> colourIs;  // how it was found; nothing while it is not known
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

struct TextureRename {
  Texture* texture;
  std::string name;
};

struct WadLimits {
  std::uint16_t maxCached = 1000;        // textures with pixels at once; 0 counts as 1
  std::uint32_t maxTextureSize = 65536;  // texels; a larger one shows the replacement image
};

class WadFile {
 public:
  // The built-in WAD: "badwad", no file, the one texture "BADTEXT".
  WadFile(const WadLimits& limits, const Palette& palette, Reporter& reporter);
  ~WadFile();
  WadFile(const WadFile&) = delete;
  WadFile& operator=(const WadFile&) = delete;

  // Takes the file's directory and headers; once, on a WAD that is the built-in one still. Fails,
  // and stays that, when the file cannot be opened or is no WAD2. A file that may not be written is
  // opened for reading, and every edit of it fails. Entries that lie outside the file, or whose
  // texture has no possible size, are left out and reported once a file under "Parsing Error"; the
  // others are kept.
  bool Open(const std::string& name);

  const std::string& FileName() const { return fileName_; }
  // In directory order.
  std::span<const std::unique_ptr<Texture>> Textures() const {
    if (file_ == INVALID_FILE) return {&badTexture_, 1};
    return textures_;
  }
  Texture* BadTexture() const { return badTexture_.get(); }

  // The first texture of that name, any case; else the bad texture. Never null.
  Texture* FindTexture(std::string_view name) const;
  // For "+0name" .. "+9name": the frame `step` further on in its cycle; any other texture itself.
  Texture* AnimatedFrame(Texture* texture, unsigned step) const;

  // Loads through the cache. Padded size; never empty.
  std::span<const std::uint8_t> Pixels(Texture& texture);
  std::span<const std::uint8_t> Rgb(Texture& texture);
  // Its real size, from the file, also where that is too large to be shown; else what is shown.
  std::vector<std::uint8_t> WholeImage(Texture& texture);
  // The texture's colour. Where it is not known yet the pixels are loaded if need be.
  Colour RepresentativeColour(Texture& texture, OneColour how);
  // For every texture whose pixels are in the cache.
  void SetRepresentativeColours(OneColour how);

  // Their colours are not known, and no image in red, green and blue is there.
  void ForgetColours();

  void SetCacheSize(std::uint16_t maxCached);
  // Textures that were too large for the limit, or are so now, are read anew when asked for.
  void SetLimits(const WadLimits& limits);
  std::uint16_t numCached() const { return static_cast<std::uint16_t>(cached_.size()); }
  bool IsCached(const Texture& texture) const;
  // Of memory, about, with all pixels that are loaded.
  std::size_t Bytes() const;
  void RemoveFromCache(Texture& texture);
  // Unless the texture is in the cache.
  void Unload(Texture& texture);
  void Flush();

  // Whether the file has been changed since it was read or edited here.
  bool IsStale() const;
  // Takes the file as it is now; false, and all as before, when it cannot be. A texture of the same
  // name stays the object that it is, with the new image. One that is no more lives on, for whoever
  // holds it until the maps are bound anew, and shows the replacement image.
  bool ReadAgain();

  // The edits write to the file at once. Before that it is read again where its directory is
  // another one than in memory; before the first of a run it is kept as "<name>.bak". False, and
  // nothing changed, when the file refused, which is said, or has no room where the edit must be
  // written.
  // The texture's pixels are width x height, unpadded; they are freed, and read back when needed.
  bool AddTexture(std::unique_ptr<Texture> texture);
  // All of them at once, or none.
  bool AddTextures(std::vector<std::unique_ptr<Texture>> textures);
  // All of them or none. Closes the gaps in the file. The textures are no more, as after ReadAgain.
  bool RemoveTextures(std::span<Texture* const> textures);
  bool RemoveTexture(Texture& texture);
  // Likewise. At most 15 bytes of a name are taken.
  bool RenameTextures(std::span<const TextureRename> renames);
  bool RenameTexture(Texture& texture, std::string_view newName);
  // Writes pixels, width x height, over the texture's lump and unloads it.
  bool RewriteTexture(Texture& texture, std::span<const std::uint8_t> pixels);
  // An image from memory: unpadded, held as built in. One without pixels is ignored.
  void SetImage(Texture& texture, std::string_view name, std::span<const std::uint8_t> pixels,
                std::uint16_t width, std::uint16_t height);

 private:
  // A name as it is compared: upper case, zeros behind.
  using NameKey = std::array<char, 16>;
  struct NameHash {
    std::size_t operator()(const NameKey& key) const;
  };
  static NameKey MakeKey(std::string_view name);

  bool OpenFile();
  bool ReadHeader();
  std::uint32_t ReadTextures();
  void Retire(std::unique_ptr<Texture> texture);
  std::size_t PlaceOf(const Texture& texture) const;
  std::optional<WadImage> FreshImage();
  bool Put(const WadImage& image, const std::string& before);
  bool ReadTexture(const WadEntry& entry, std::uint32_t fileSize);
  void Index();
  void Evict(std::size_t n);
  void Load(Texture& texture);
  bool LoadPixels(Texture& texture);

  bool ReadAt(std::uint32_t offset, std::span<std::uint8_t> bytes) const;
  bool ReadDirectory(std::vector<WadEntry>& directory) const;

  WadLimits limits_;
  const Palette& palette_;
  Reporter& reporter_;
  std::string fileName_;
  FileHandle file_ = INVALID_FILE;
  std::optional<FileStamp> stamp_;  // of the file, before it was read
  bool isKept_ = false;             // as it was before this run's first edit
  WadHeader header_;
  std::vector<WadEntry> directory_;
  std::vector<std::unique_ptr<Texture>> textures_;
  std::vector<std::unique_ptr<Texture>> retired_;
  std::unordered_map<NameKey, Texture*, NameHash> byName_;  // the first of equals
  std::unique_ptr<Texture> badTexture_;
  std::vector<Texture*> cached_;  // oldest first
};

}  // namespace ferrowand
