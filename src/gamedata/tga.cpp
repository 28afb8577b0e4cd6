#include <algorithm>
#include <utility>

#include "gamedata/little_endian.h"
#include "gamedata/picture.h"

namespace ferrowand {
namespace {

constexpr std::size_t HEADER = 18;
constexpr std::uint8_t RUN = 0x80;
constexpr int FROM_RIGHT = 0x10, FROM_TOP = 0x20, ALPHA_BITS = 0x0F;

enum class Kind { Palette = 1, Colours = 2, Grey = 3 };

struct Header {
  explicit Header(const std::uint8_t* bytes)
      : idLength(bytes[0]),
        hasPalette(bytes[1] == 1),
        type(bytes[2]),
        paletteFirst(GetLe16(bytes + 3)),
        paletteCount(GetLe16(bytes + 5)),
        paletteBits(bytes[7]),
        width(GetLe16(bytes + 12)),
        height(GetLe16(bytes + 14)),
        bits(bytes[16]),
        descriptor(bytes[17]) {}

  Kind PictureKind() const { return static_cast<Kind>(type & 7); }
  bool IsPacked() const { return (type & 8) != 0; }
  // A size, and a depth that the kind can have.
  bool IsPossible() const {
    if ((type & ~11) != 0 || !IsPictureSize(width, height)) return false;
    switch (PictureKind()) {
      case Kind::Palette:
        return hasPalette && bits == 8 && paletteBits >= 15 && paletteBits <= 32;
      case Kind::Colours:
        return bits == 15 || bits == 16 || bits == 24 || bits == 32;
      case Kind::Grey:
        return bits == 8;
    }
    return false;
  }

  std::size_t idLength;
  bool hasPalette;
  int type, paletteFirst, paletteCount, paletteBits, width, height, bits, descriptor;
};

constexpr std::size_t BytesOf(int bits) {
  return (static_cast<std::size_t>(bits) + 7) / 8;
}

// Blue first. Of 16 bits each part has five.
PictureColour ColourAt(const std::uint8_t* bytes, int bits, bool hasAlpha) {
  if (bits <= 16) {
    const int value = GetLe16(bytes);
    const auto part = [value](int shift) {
      const int five = value >> shift & 31;
      return static_cast<std::uint8_t>(five << 3 | five >> 2);
    };
    const bool isClear = hasAlpha && (value & 0x8000) == 0;
    return {part(10), part(5), part(0), static_cast<std::uint8_t>(isClear ? 0 : 255)};
  }
  return {bytes[2], bytes[1], bytes[0], bits == 32 && hasAlpha ? bytes[3] : std::uint8_t{255}};
}

class TgaReader {
 public:
  TgaReader(std::string_view bytes, const Header& header)
      : bytes_(reinterpret_cast<const std::uint8_t*>(bytes.data())),
        size_(bytes.size()),
        at_(HEADER + header.idLength),
        header_(header) {}

  std::optional<Picture> Read() {
    picture_.width = header_.width;
    picture_.height = header_.height;
    const std::size_t pixels =
        static_cast<std::size_t>(header_.width) * static_cast<std::size_t>(header_.height);
    // No file can be so short: a packet of at most 128 pixels has two bytes.
    if (!ReadPalette() || pixels / 64 > size_) return std::nullopt;
    if (!(header_.IsPacked() ? ReadPackets(pixels) : ReadPixels(pixels))) return std::nullopt;
    TurnUpright();
    return std::move(picture_);
  }

 private:
  bool Has(std::size_t count) const { return at_ <= size_ && count <= size_ - at_; }

  bool ReadPalette() {
    if (!header_.hasPalette) return true;
    const std::size_t each = BytesOf(header_.paletteBits);
    const auto count = static_cast<std::size_t>(header_.paletteCount);
    if (!Has(count * each)) return false;
    if (header_.PictureKind() == Kind::Palette) {
      picture_.colours.resize(static_cast<std::size_t>(header_.paletteFirst));
      for (std::size_t i = 0; i < count && picture_.colours.size() < 256; ++i) {
        picture_.colours.push_back(
            ColourAt(bytes_ + at_ + i * each, header_.paletteBits, header_.paletteBits == 32));
      }
    }
    at_ += count * each;
    return true;
  }

  void Take() {
    const std::uint8_t* pixel = bytes_ + at_;
    switch (header_.PictureKind()) {
      case Kind::Palette:
        picture_.indices.push_back(*pixel);
        break;
      case Kind::Grey:
        picture_.colours.push_back({*pixel, *pixel, *pixel});
        break;
      case Kind::Colours:
        picture_.colours.push_back(
            ColourAt(pixel, header_.bits, (header_.descriptor & ALPHA_BITS) != 0));
        break;
    }
  }

  bool ReadPixels(std::size_t count) {
    const std::size_t each = BytesOf(header_.bits);
    if (!Has(count * each)) return false;
    for (; count > 0; --count, at_ += each) Take();
    return true;
  }

  // A run is one pixel many times; other packets hold each of theirs.
  bool ReadPackets(std::size_t count) {
    const std::size_t each = BytesOf(header_.bits);
    while (count > 0) {
      if (!Has(1)) return false;
      const std::uint8_t head = bytes_[at_++];
      const bool isRun = (head & RUN) != 0;
      const std::size_t length = std::min<std::size_t>((head & ~RUN) + std::size_t{1}, count);
      if (!isRun && !ReadPixels(length)) return false;
      if (isRun) {
        if (!Has(each)) return false;
        for (std::size_t i = 0; i < length; ++i) Take();
        at_ += each;
      }
      count -= length;
    }
    return true;
  }

  template <typename T>
  void TurnUpright(std::vector<T>& pixels) const {
    const auto width = static_cast<std::ptrdiff_t>(header_.width);
    if ((header_.descriptor & FROM_RIGHT) != 0) {
      for (auto row = pixels.begin(); row != pixels.end(); row += width) {
        std::reverse(row, row + width);
      }
    }
    if ((header_.descriptor & FROM_TOP) != 0) return;
    for (std::ptrdiff_t top = 0, below = header_.height - 1; top < below; ++top, --below) {
      std::swap_ranges(pixels.begin() + top * width, pixels.begin() + (top + 1) * width,
                       pixels.begin() + below * width);
    }
  }
  void TurnUpright() {
    if (picture_.HasPalette()) return TurnUpright(picture_.indices);
    TurnUpright(picture_.colours);
  }

  const std::uint8_t* bytes_;
  std::size_t size_, at_;
  const Header header_;
  Picture picture_;
};

}  // namespace

std::optional<Picture> ReadTga(std::string_view bytes) {
  if (bytes.size() < HEADER) return std::nullopt;
  const Header header(reinterpret_cast<const std::uint8_t*>(bytes.data()));
  if (!header.IsPossible()) return std::nullopt;
  return TgaReader(bytes, header).Read();
}

}  // namespace ferrowand
