#include "gamedata/wad_file.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "base/report.h"
#include "gamedata/palette.h"
#include "gamedata/wad_format.h"

namespace ferrowand {
namespace {

constexpr char SOURCE[] = "wadfile.cpp";
constexpr std::uint16_t CHECKERSIDE = 64;  // texels

// A checkerboard of single texels.
std::vector<std::uint8_t> Checkerboard(std::uint8_t even, std::uint8_t odd) {
  std::vector<std::uint8_t> pixels(std::size_t{CHECKERSIDE} * CHECKERSIDE);
  for (int y = 0; y < CHECKERSIDE; ++y) {
    for (int x = 0; x < CHECKERSIDE; ++x) {
      pixels[y * CHECKERSIDE + x] = (x + y) % 2 == 0 ? even : odd;
    }
  }
  return pixels;
}

void SetName(WadEntry& entry, std::string_view name) {
  entry.name.fill(0);
  std::copy_n(name.begin(), std::min(name.size(), entry.name.size()), entry.name.begin());
}

void Free(Texture& texture) {
  if (texture.flags & (TEXTURE_BUILTIN | TEXTURE_HELD)) return;
  texture.pixels = std::vector<std::uint8_t>();
  texture.rgb = std::vector<std::uint8_t>();
}

// Nearest sampling of the real image over the padded one. The padded size is a power of two, so
// whole numbers give what fractions would.
void Stretch(std::span<const std::uint8_t> level, const Texture& texture,
             std::vector<std::uint8_t>& padded) {
  padded.resize(std::size_t{texture.paddedWidth} * texture.paddedHeight);
  auto target = padded.begin();
  for (std::size_t y = 0; y < texture.paddedHeight; ++y) {
    const std::size_t row = texture.height * y / texture.paddedHeight * texture.width;
    for (std::size_t x = 0; x < texture.paddedWidth; ++x) {
      *target++ = level[row + texture.width * x / texture.paddedWidth];
    }
  }
}

Colour AverageColour(std::span<const std::uint8_t> pixels, const Palette& palette) {
  std::uint64_t red = 0, green = 0, blue = 0;
  for (const std::uint8_t pixel : pixels) {
    red += palette[pixel].red;
    green += palette[pixel].green;
    blue += palette[pixel].blue;
  }
  const std::size_t count = pixels.size();
  return {static_cast<std::uint8_t>(red / count), static_cast<std::uint8_t>(green / count),
          static_cast<std::uint8_t>(blue / count)};
}

// Of indices as frequent as each other, the one that came to the count first.
Colour MostCommonColour(std::span<const std::uint8_t> pixels, const Palette& palette) {
  std::array<std::uint32_t, 256> counts{};
  std::uint8_t best = 0;
  for (const std::uint8_t pixel : pixels) {
    if (++counts[pixel] > counts[best]) best = pixel;
  }
  return palette[best].ToColour();
}

}  // namespace

std::string_view Texture::Name() const {
  return {entry.name.data(),
          static_cast<std::size_t>(std::find(entry.name.begin(), entry.name.end(), '\0') -
                                   entry.name.begin())};
}

std::uint16_t PaddedSize(std::uint16_t size) {
  std::uint32_t padded = 4;
  while (padded < size && padded < MAXTEXTURESIDE) padded *= 2;
  return static_cast<std::uint16_t>(padded);
}

std::uint32_t LumpSize(std::uint32_t width, std::uint32_t height) {
  std::uint32_t size = MIPHEADERSIZE;
  for (int level = 0; level < MIPLEVELS; ++level) size += (width >> level) * (height >> level);
  return size;
}

std::size_t WadFile::NameHash::operator()(const NameKey& key) const {
  std::uint64_t halves[2];
  std::memcpy(halves, key.data(), sizeof halves);
  std::uint64_t mixed = (halves[0] ^ halves[1] * 0x9E3779B97F4A7C15) * 0xC2B2AE3D27D4EB4F;
  return static_cast<std::size_t>(mixed ^ mixed >> 32);
}

WadFile::NameKey WadFile::MakeKey(std::string_view name) {
  NameKey key{};
  std::transform(name.begin(), name.end(), key.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return key;
}

WadFile::WadFile(const WadLimits& limits, const Palette& palette, Reporter& reporter)
    : limits_(limits),
      palette_(palette),
      reporter_(reporter),
      fileName_("badwad"),
      badTexture_(std::make_unique<Texture>()) {
  limits_.maxCached = std::max<std::uint16_t>(limits_.maxCached, 1);
  badTexture_->wad = this;
  SetImage(*badTexture_, "BADTEXT", Checkerboard(255, 0), CHECKERSIDE, CHECKERSIDE);
}

WadFile::~WadFile() {
  if (file_ != INVALID_FILE) file::Close(file_);
}

bool WadFile::Open(const std::string& name) {
  const std::string before = std::exchange(fileName_, name);
  if (!OpenFile()) {
    fileName_ = before;
    return false;
  }
  if (const std::uint32_t damaged = ReadTextures(); damaged > 0) {
    reporter_.Parsing("Damaged wadfile \"%s\": %u entries could not be read, ignored", name.c_str(),
                      damaged);
  }
  Index();
  return true;
}

// With its header; none is open where that is no WAD's.
bool WadFile::OpenFile() {
  stamp_ = file::Stamp(fileName_);
  file_ = file::Open(fileName_, FileAccess::ReadWrite);
  if (file_ == INVALID_FILE) file_ = file::Open(fileName_, FileAccess::Read);
  if (file_ == INVALID_FILE || ReadHeader()) return file_ != INVALID_FILE;
  file::Close(file_);
  file_ = INVALID_FILE;
  return false;
}

bool WadFile::ReadHeader() {
  std::array<std::uint8_t, WADHEADERSIZE> bytes;
  const auto header = ReadAt(0, bytes) ? DecodeHeader(bytes.data()) : std::nullopt;
  if (header) header_ = *header;
  return header.has_value();
}

// How many entries had to be left out.
std::uint32_t WadFile::ReadTextures() {
  const std::uint32_t fileSize = file::Size(file_);
  const std::uint32_t claimed = header_.numlumps;
  header_ = CutToFile(header_, fileSize);
  directory_.clear();
  if (!ReadDirectory(directory_)) header_.numlumps = 0;
  std::uint32_t damaged = claimed - header_.numlumps;
  for (const WadEntry& entry : directory_) {
    if (entry.type == MIPTEXTURE && !ReadTexture(entry, fileSize)) ++damaged;
  }
  return damaged;
}

bool WadFile::ReadTexture(const WadEntry& entry, std::uint32_t fileSize) {
  std::array<std::uint8_t, MIPHEADERSIZE> bytes;
  if (entry.filepos < WADHEADERSIZE || !ReadAt(entry.filepos, bytes)) return false;
  const std::uint32_t width = GetLe32(&bytes[16]);
  const std::uint32_t height = GetLe32(&bytes[20]);
  if (width == 0 || height == 0 || width > MAXTEXTURESIDE || height > MAXTEXTURESIDE) return false;
  // Of the levels only the first is ever read; the others may be missing.
  const std::uint64_t texels = std::uint64_t{width} * height;
  if (texels + MIPHEADERSIZE + entry.filepos > fileSize) return false;

  auto texture = std::make_unique<Texture>();
  texture->width = static_cast<std::uint16_t>(width);
  texture->height = static_cast<std::uint16_t>(height);
  texture->paddedWidth = PaddedSize(texture->width);
  texture->paddedHeight = PaddedSize(texture->height);
  texture->wad = this;
  texture->entry = entry;
  textures_.push_back(std::move(texture));
  return true;
}

void WadFile::Index() {
  byName_.clear();
  byName_.reserve(textures_.size());
  for (const auto& texture : textures_)
    byName_.try_emplace(MakeKey(texture->Name()), texture.get());
}

Texture* WadFile::FindTexture(std::string_view name) const {
  if (name.size() > sizeof(NameKey)) return BadTexture();
  const auto found = byName_.find(MakeKey(name));
  return found == byName_.end() ? BadTexture() : found->second;
}

Texture* WadFile::AnimatedFrame(Texture* texture, unsigned step) const {
  const std::string_view name = texture->Name();
  if (name.size() < 2 || name[0] != '+' || name[1] < '0' || name[1] > '9') return texture;
  const unsigned own = static_cast<unsigned>(name[1] - '0');
  // Meant: a step equal to the own digit stays, although the count below would lead elsewhere.
  if (own == step) return texture;
  std::array<Texture*, 10> frames;
  unsigned count = 0;
  for (std::string frame(name); count < frames.size(); ++count) {
    frame[1] = static_cast<char>('0' + count);
    frames[count] = FindTexture(frame);
    if (frames[count] == BadTexture()) break;
  }
  return count == 0 ? texture : frames[(own + step) % count];
}

std::span<const std::uint8_t> WadFile::Pixels(Texture& texture) {
  // First in, first out: use does not make a texture younger.
  if (texture.pixels.empty()) Load(texture);
  return texture.pixels;
}

void WadFile::Load(Texture& texture) {
  if (cached_.size() >= limits_.maxCached) Evict(0);
  if (cached_.size() >= limits_.maxCached) reporter_.Assert("numCached<maxCached", SOURCE, 912);
  cached_.push_back(&texture);
  if (file_ == INVALID_FILE) reporter_.Assert("file!=INVALID_HANDLE_VALUE", SOURCE, 914);
  if (LoadPixels(texture)) return;
  texture.flags |= TEXTURE_BUILTIN;
  texture.pixels = Checkerboard(208, 0);
  texture.paddedWidth = texture.paddedHeight = CHECKERSIDE;
}

// False when the texture is too large, for the limit or for the memory, or cannot be read.
bool WadFile::LoadPixels(Texture& texture) try {
  const std::uint32_t texels = std::uint32_t{texture.width} * texture.height;
  if ((texture.flags & TEXTURE_BUILTIN) || texels > limits_.maxTextureSize) return false;
  std::vector<std::uint8_t> level(texels);
  if (!ReadAt(texture.entry.filepos + MIPHEADERSIZE, level)) return false;
  if (texture.width == texture.paddedWidth && texture.height == texture.paddedHeight) {
    texture.pixels = std::move(level);
  } else {
    Stretch(level, texture, texture.pixels);
  }
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

std::vector<std::uint8_t> WadFile::WholeImage(Texture& texture) {
  std::vector<std::uint8_t> image(std::size_t{texture.width} * texture.height);
  const std::uint32_t place = texture.entry.filepos;
  if (place == 0 || !ReadAt(place + MIPHEADERSIZE, image)) {
    const auto shown = Pixels(texture);
    std::copy_n(shown.begin(), std::min(shown.size(), image.size()), image.begin());
  }
  return image;
}

std::span<const std::uint8_t> WadFile::Rgb(Texture& texture) {
  if (texture.rgb.empty()) {
    const std::span<const std::uint8_t> pixels = Pixels(texture);
    texture.rgb.reserve(pixels.size() * 3);
    for (const std::uint8_t pixel : pixels) {
      const PaletteEntry& entry = palette_[pixel];
      texture.rgb.insert(texture.rgb.end(), {entry.red, entry.green, entry.blue});
    }
  }
  return texture.rgb;
}

Colour WadFile::RepresentativeColour(Texture& texture, OneColour how) {
  if (texture.colourIs == how) return texture.colour;
  const std::span<const std::uint8_t> pixels = Pixels(texture);
  texture.colour = how == OneColour::Average ? AverageColour(pixels, palette_)
                                             : MostCommonColour(pixels, palette_);
  texture.colourIs = how;
  return texture.colour;
}

void WadFile::ForgetColours() {
  const auto forget = [](Texture& texture) {
    texture.colourIs.reset();
    texture.rgb = std::vector<std::uint8_t>();
  };
  forget(*badTexture_);
  for (const auto& texture : textures_) forget(*texture);
}

void WadFile::SetRepresentativeColours(OneColour how) {
  // The palette may have changed, for those without pixels too.
  for (const auto& texture : textures_) texture->colourIs.reset();
  for (Texture* texture : cached_) RepresentativeColour(*texture, how);
}

void WadFile::Evict(std::size_t n) {
  if (n >= cached_.size()) {
    reporter_.Assert("n<numCached", SOURCE, 920);
    return;
  }
  Free(*cached_[n]);
  cached_.erase(cached_.begin() + static_cast<std::ptrdiff_t>(n));
}

void WadFile::SetCacheSize(std::uint16_t maxCached) {
  limits_.maxCached = std::max<std::uint16_t>(maxCached, 1);
  while (cached_.size() > limits_.maxCached) Evict(cached_.size() - 1);
}

void WadFile::SetLimits(const WadLimits& limits) {
  SetCacheSize(limits.maxCached);
  if (limits.maxTextureSize == limits_.maxTextureSize) return;
  limits_.maxTextureSize = limits.maxTextureSize;
  Flush();
  for (const auto& texture : textures_) {
    texture->flags &= static_cast<std::uint8_t>(~TEXTURE_BUILTIN);
    Free(*texture);
    texture->colourIs.reset();
    texture->paddedWidth = PaddedSize(texture->width);
    texture->paddedHeight = PaddedSize(texture->height);
  }
}

bool WadFile::IsCached(const Texture& texture) const {
  return std::find(cached_.begin(), cached_.end(), &texture) != cached_.end();
}

std::size_t WadFile::Bytes() const {
  std::size_t bytes = sizeof *this + directory_.capacity() * sizeof(WadEntry);
  for (const auto* list : {&textures_, &retired_}) {
    for (const auto& texture : *list) {
      bytes += sizeof *texture + texture->pixels.capacity() + texture->rgb.capacity();
    }
  }
  return bytes;
}

void WadFile::RemoveFromCache(Texture& texture) {
  const auto found = std::find(cached_.begin(), cached_.end(), &texture);
  if (found != cached_.end()) Evict(static_cast<std::size_t>(found - cached_.begin()));
}

void WadFile::Unload(Texture& texture) {
  if (!IsCached(texture)) Free(texture);
}

void WadFile::Flush() {
  for (Texture* texture : cached_) Free(*texture);
  cached_.clear();
}

void WadFile::SetImage(Texture& texture, std::string_view name,
                       std::span<const std::uint8_t> pixels, std::uint16_t width,
                       std::uint16_t height) {
  const std::size_t texels = std::size_t{width} * height;
  if (texels == 0 || pixels.size() < texels) return;
  RemoveFromCache(texture);
  SetName(texture.entry, name);
  texture.entry.filepos = texture.entry.disksize = texture.entry.size = 0;
  texture.width = texture.paddedWidth = width;
  texture.height = texture.paddedHeight = height;
  texture.pixels.assign(pixels.begin(), pixels.begin() + static_cast<std::ptrdiff_t>(texels));
  texture.rgb.clear();
  texture.colourIs.reset();
  texture.flags |= TEXTURE_BUILTIN;
}

bool WadFile::ReadAt(std::uint32_t offset, std::span<std::uint8_t> bytes) const {
  return file::Seek(file_, offset, SeekFrom::Begin) == offset &&
         file::Read(file_, bytes.data(), bytes.size()) == bytes.size();
}

bool WadFile::ReadDirectory(std::vector<WadEntry>& directory) const {
  std::vector<std::uint8_t> bytes(std::size_t{header_.numlumps} * WADENTRYSIZE);
  if (!bytes.empty() && !ReadAt(header_.infotableofs, bytes)) return false;
  directory.reserve(header_.numlumps);
  for (std::size_t i = 0; i < bytes.size(); i += WADENTRYSIZE) {
    directory.push_back(DecodeEntry(&bytes[i]));
  }
  return true;
}

}  // namespace ferrowand
