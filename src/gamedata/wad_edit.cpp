// The edits of a WAD: what they are in bytes is the image's affair, the file is replaced by that.
#include <algorithm>
#include <deque>
#include <utility>

#include "base/report.h"
#include "base/safe_file.h"
#include "gamedata/palette.h"
#include "gamedata/wad_file.h"
#include "gamedata/wad_image.h"

namespace ferrowand {
namespace {

// Of a fence, whose holes are no colour.
constexpr std::uint8_t HOLE = 255;

struct LevelLook {
  const Palette& palette;
  bool hasHoles;
};

// Each texel is the palette's nearest to the average of a block of 2^shift texels each way; a hole
// where half of them are.
void AppendLevel(std::vector<std::uint8_t>& lump, std::span<const std::uint8_t> pixels,
                 std::size_t width, std::size_t height, int shift, const LevelLook& look) {
  const std::size_t side = std::size_t{1} << shift;
  const int texels = static_cast<int>(side * side), last = look.hasHoles ? HOLE - 1 : HOLE;
  for (std::size_t top = 0; top + side <= height; top += side) {
    for (std::size_t left = 0; left + side <= width; left += side) {
      int red = 0, green = 0, blue = 0, holes = 0;
      for (std::size_t y = top; y < top + side; ++y) {
        for (std::size_t x = left; x < left + side; ++x) {
          const std::uint8_t pixel = pixels[y * width + x];
          if (look.hasHoles && pixel == HOLE) {
            ++holes;
            continue;
          }
          const PaletteEntry& entry = look.palette[pixel];
          red += entry.red;
          green += entry.green;
          blue += entry.blue;
        }
      }
      const int seen = texels - holes;
      lump.push_back(holes >= seen
                         ? HOLE
                         : look.palette.NearestColour(red / seen, green / seen, blue / seen, last));
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
    AppendLevel(lump, pixels, width, height, shift, {palette, texture.Name().starts_with('{')});
  }
  return lump;
}

bool Refuse(Reporter& reporter, const std::string& why) {
  reporter.Show("Cannot continue", why);
  return false;
}

// It went when the file was read again.
std::string GoneText(const std::string& wad, const Texture& texture) {
  return wad + " has been changed by another program and has no " + std::string(texture.Name()) +
         " any more";
}

bool IsPossible(const Texture& texture, std::span<const std::uint8_t> pixels) {
  return texture.width > 0 && texture.height > 0 && texture.width <= MAXTEXTURESIDE &&
         texture.height <= MAXTEXTURESIDE &&
         pixels.size() >= std::size_t{texture.width} * texture.height;
}

}  // namespace

bool WadFile::IsStale() const {
  return file_ != INVALID_FILE && file::Stamp(fileName_) != stamp_;
}

bool WadFile::ReadAgain() {
  const FileHandle file = file_;
  const WadHeader header = header_;
  const auto stamp = stamp_;
  if (!OpenFile()) {
    file_ = file;
    header_ = header;
    stamp_ = stamp;
    return false;
  }
  file::Close(file);
  Flush();
  std::unordered_map<NameKey, std::deque<std::unique_ptr<Texture>>, NameHash> known;
  for (auto& texture : std::exchange(textures_, {})) {
    known[MakeKey(texture->Name())].push_back(std::move(texture));
  }
  ReadTextures();
  for (auto& texture : textures_) {
    auto& same = known[MakeKey(texture->Name())];
    if (same.empty()) continue;
    *same.front() = std::move(*texture);
    texture = std::move(same.front());
    same.pop_front();
  }
  for (auto& [name, left] : known) {
    for (auto& texture : left) Retire(std::move(texture));
  }
  Index();
  return true;
}

// Whoever holds it may ask for its pixels.
void WadFile::Retire(std::unique_ptr<Texture> texture) {
  RemoveFromCache(*texture);
  Unload(*texture);
  texture->flags |= TEXTURE_BUILTIN;
  texture->entry.filepos = 0;
  retired_.push_back(std::move(texture));
}

// The file as it is; with another directory than in memory it has been read again.
std::optional<WadImage> WadFile::FreshImage() {
  if (file_ == INVALID_FILE) return std::nullopt;
  for (int tries = 0; tries < 2; ++tries) {
    const auto stamp = file::Stamp(fileName_);
    auto bytes = FileBytes(fileName_);
    auto image = bytes ? WadImage::Parse(std::move(*bytes)) : std::nullopt;
    if (!image) break;
    // Its pixels may be others, too.
    const bool isKnown = stamp == stamp_ && image->Header() == header_;
    if (isKnown && image->Directory() == directory_) return image;
    if (!ReadAgain()) break;
  }
  Refuse(reporter_, fileName_ + " has been changed by another program and cannot be read again");
  return std::nullopt;
}

// The old file or the new one: the new bytes take its place in one step, in which it is not held.
bool WadFile::Put(const WadImage& image, const std::string& before) {
  if (!isKept_ && !ReplaceFile(fileName_ + ".bak", before, {}, nullptr)) {
    reporter_.Show("Error", Format("%s could not be kept as %s.bak, and stays as it is",
                                   fileName_.c_str(), fileName_.c_str()));
    return false;
  }
  isKept_ = true;
  file::Close(std::exchange(file_, INVALID_FILE));
  const WadHeader header = header_;
  const auto stamp = stamp_;
  const bool written =
      ReplaceFile(fileName_, image.Bytes(), {}, nullptr) || FileBytes(fileName_) == image.Bytes();
  OpenFile();
  header_ = written ? image.Header() : header;
  if (written) {
    directory_ = image.Directory();
  } else {
    stamp_ = stamp;
    reporter_.Show("Error",
                   Format("%s could not be written, and stays as it is", fileName_.c_str()));
  }
  return written;
}

bool WadFile::AddTexture(std::unique_ptr<Texture> texture) {
  std::vector<std::unique_ptr<Texture>> one;
  one.push_back(std::move(texture));
  return AddTextures(std::move(one));
}

bool WadFile::AddTextures(std::vector<std::unique_ptr<Texture>> textures) {
  const auto isPossible = [](const auto& t) { return IsPossible(*t, t->pixels); };
  if (!std::ranges::all_of(textures, isPossible)) return false;
  auto image = FreshImage();
  if (!image) return false;
  const std::string before = image->Bytes();
  std::vector<WadEntry> entries;
  entries.reserve(textures.size());
  for (const auto& texture : textures) {
    entries.push_back(texture->entry);
    if (!image->Add(entries.back(), MakeLump(*texture, texture->pixels, palette_))) {
      return Refuse(reporter_, fileName_ + " would be larger than a WAD can be");
    }
  }
  if (!Put(*image, before)) return false;
  for (std::size_t i = 0; i < textures.size(); ++i) {
    Texture& texture = *textures[i];
    texture.entry = entries[i];
    texture.wad = this;
    texture.flags = 0;
    texture.paddedWidth = PaddedSize(texture.width);
    texture.paddedHeight = PaddedSize(texture.height);
    texture.pixels = std::vector<std::uint8_t>();
    texture.rgb = std::vector<std::uint8_t>();
    textures_.push_back(std::move(textures[i]));
  }
  Index();
  return true;
}

// In the list; its end for none of it.
std::size_t WadFile::PlaceOf(const Texture& texture) const {
  return static_cast<std::size_t>(
      std::ranges::find(textures_, &texture, &std::unique_ptr<Texture>::get) - textures_.begin());
}

bool WadFile::RemoveTexture(Texture& texture) {
  Texture* const one = &texture;
  return RemoveTextures({&one, 1});
}

bool WadFile::RemoveTextures(std::span<Texture* const> textures) {
  auto image = FreshImage();
  if (!image) return false;
  const std::string before = image->Bytes();
  std::vector<WadEntry> entries;  // of all, as the gaps close
  for (const auto& texture : textures_) entries.push_back(texture->entry);
  for (const Texture* texture : textures) {
    const std::size_t place = PlaceOf(*texture);
    const auto gap = place == entries.size()
                         ? std::nullopt
                         : image->Remove(entries[place], texture->width, texture->height);
    if (!gap) return Refuse(reporter_, GoneText(fileName_, *texture));
    for (WadEntry& entry : entries) {
      if (entry.filepos > gap->pos) entry.filepos -= gap->size;
    }
  }
  if (!Put(*image, before)) return false;
  for (std::size_t i = 0; i < entries.size(); ++i) textures_[i]->entry = entries[i];
  for (const Texture* texture : textures) {
    const auto place = textures_.begin() + static_cast<std::ptrdiff_t>(PlaceOf(*texture));
    std::unique_ptr<Texture> removed = std::move(*place);
    textures_.erase(place);
    Retire(std::move(removed));
  }
  Index();
  return true;
}

bool WadFile::RenameTexture(Texture& texture, std::string_view newName) {
  const TextureRename one{&texture, std::string(newName)};
  return RenameTextures({&one, 1});
}

bool WadFile::RenameTextures(std::span<const TextureRename> renames) {
  auto image = FreshImage();
  if (!image || std::ranges::any_of(renames, &std::string::empty, &TextureRename::name)) {
    return false;
  }
  const std::string before = image->Bytes();
  std::vector<WadEntry> entries;
  for (const auto& [texture, name] : renames) {
    const auto entry = image->Rename(texture->entry, name, texture->width, texture->height);
    if (!entry) return Refuse(reporter_, GoneText(fileName_, *texture));
    entries.push_back(*entry);
  }
  if (!Put(*image, before)) return false;
  for (std::size_t i = 0; i < entries.size(); ++i) renames[i].texture->entry = entries[i];
  Index();
  return true;
}

bool WadFile::RewriteTexture(Texture& texture, std::span<const std::uint8_t> pixels) {
  if (!IsPossible(texture, pixels)) return false;
  auto image = FreshImage();
  if (!image) return false;
  if (PlaceOf(texture) == textures_.size()) return Refuse(reporter_, GoneText(fileName_, texture));
  if (!IsPossible(texture, pixels)) {
    return Refuse(reporter_, fileName_ + " has been changed by another program and its " +
                                 std::string(texture.Name()) + " is larger now");
  }
  const std::string before = image->Bytes();
  if (!image->Rewrite(texture.entry, MakeLump(texture, pixels, palette_))) {
    return Refuse(reporter_, fileName_ + " has no room for " + std::string(texture.Name()) +
                                 " and its smaller images. Instead, try inserting it.");
  }
  if (!Put(*image, before)) return false;
  RemoveFromCache(texture);
  Unload(texture);
  texture.colourIs.reset();
  return true;
}

}  // namespace ferrowand
