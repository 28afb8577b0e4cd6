#include "gamedata/pcx.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/path_text.h"
#include "base/safe_file.h"
#include "base/winfile.h"
#include "gamedata/palette.h"
#include "gamedata/wad_format.h"
#include "platform/file.h"

namespace ferrowand {
namespace {

constexpr std::size_t PCXHEADERSIZE = 128;
constexpr std::size_t PALETTESIZE = 768;
constexpr std::size_t MAXRUN = 63;
constexpr std::uint8_t RUN = 192;  // a greater byte is RUN + the length of a run
constexpr char PALETTEMARKER = 12;

struct Picture {
  std::uint16_t width = 0, height = 0;
  std::vector<std::uint8_t> pixels;  // of the editor's palette, width x height
};

class OpenFile {
 public:
  explicit OpenFile(const std::string& path) : handle_(OpenExisting(path, FileAccess::Read)) {}
  ~OpenFile() {
    if (handle_ != INVALID_FILE) file::Close(handle_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  bool Read(std::span<std::uint8_t> bytes) {
    return handle_ != INVALID_FILE &&
           file::Read(handle_, bytes.data(), bytes.size()) == bytes.size();
  }
  std::uint32_t Size() const { return file::Size(handle_); }

 private:
  FileHandle handle_;
};

// The size that the header tells, 0 x 0 when it is none of a 256-colour picture.
Picture DecodeHeader(const std::array<std::uint8_t, PCXHEADERSIZE>& header) {
  if (header[0] != 10 || header[1] != 5 || header[3] != 8 || header[65] != 1) return {};
  const int width = GetLe16(&header[8]) - GetLe16(&header[4]) + 1;
  const int height = GetLe16(&header[10]) - GetLe16(&header[6]) + 1;
  constexpr int maxSide = MAXTEXTURESIDE;
  if (width < 1 || height < 1 || width > maxSide || height > maxSide) return {};
  return {static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), {}};
}

// Expands the rows into the picture and drops them from `data`; false when it ends before them.
bool DecodeRows(std::span<const std::uint8_t>& data, Picture& picture) {
  const std::size_t width = picture.width;
  std::size_t next = 0;
  picture.pixels.resize(width * picture.height);
  for (auto row = picture.pixels.begin(); row != picture.pixels.end();
       row += static_cast<std::ptrdiff_t>(width)) {
    // A row in the file has an even number of bytes.
    for (std::size_t column = 0; column < width || column % 2 != 0;) {
      if (next + 2 > data.size()) return false;
      std::uint8_t value = data[next++];
      std::size_t length = 1;
      if (value > RUN) {
        length = value - RUN;
        value = data[next++];
      }
      const std::size_t begin = std::min(column, width), end = std::min(column + length, width);
      std::fill(row + static_cast<std::ptrdiff_t>(begin), row + static_cast<std::ptrdiff_t>(end),
                value);
      column += length;
    }
  }
  data = data.subspan(next);
  return true;
}

void Remap(std::span<std::uint8_t> pixels, std::span<const std::uint8_t> from, const Palette& to) {
  std::array<std::uint8_t, 256> nearest;
  for (std::size_t i = 0; i < nearest.size(); ++i) {
    nearest[i] = to.NearestColour(from[3 * i], from[3 * i + 1], from[3 * i + 2]);
  }
  for (std::uint8_t& pixel : pixels) pixel = nearest[pixel];
}

std::optional<Picture> ReadPicture(const std::string& path, const Palette& palette) {
  OpenFile file(path);
  std::array<std::uint8_t, PCXHEADERSIZE> header;
  if (!file.Read(header)) return std::nullopt;
  Picture picture = DecodeHeader(header);
  if (picture.width == 0) return std::nullopt;

  // Two bytes make at most MAXRUN pixels and at least one: a size that the file cannot fill is a
  // lie, and what lies behind the longest possible picture is not read.
  const std::uint64_t texels = std::uint64_t{picture.width} * picture.height;
  const std::uint64_t left = file.Size() - PCXHEADERSIZE;
  if (texels > left * MAXRUN) return std::nullopt;
  const std::uint64_t longest = 2 * (texels + picture.height) + 1 + PALETTESIZE;
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(std::min(left, longest)));
  if (!file.Read(bytes)) return std::nullopt;

  std::span<const std::uint8_t> data(bytes);
  if (!DecodeRows(data, picture) || data.size() < 1 + PALETTESIZE) return std::nullopt;
  Remap(picture.pixels, data.subspan(1), palette);
  return picture;
}

std::string EncodeHeader(const Texture& texture) {
  std::array<std::uint8_t, PCXHEADERSIZE> header{};
  header[0] = 10;
  header[1] = 5;
  header[2] = 1;
  header[3] = 8;
  PutLe16(&header[8], static_cast<std::uint16_t>(texture.width - 1));
  PutLe16(&header[10], static_cast<std::uint16_t>(texture.height - 1));
  PutLe16(&header[12], 96);
  PutLe16(&header[14], 96);
  header[65] = 1;
  PutLe16(&header[66], static_cast<std::uint16_t>(texture.width + texture.width % 2));
  PutLe16(&header[68], 1);
  return {header.begin(), header.end()};
}

void EncodeRow(std::span<const std::uint8_t> row, std::string& out) {
  for (std::size_t i = 0; i < row.size();) {
    std::size_t length = 1;
    while (length < MAXRUN && i + length < row.size() && row[i + length] == row[i]) ++length;
    if (length > 1 || row[i] > RUN) out.push_back(static_cast<char>(RUN + length));
    out.push_back(static_cast<char>(row[i]));
    i += length;
  }
}

}  // namespace

bool ExportPcx(Texture& texture, const std::string& path, const Palette& palette,
               Reporter& reporter) {
  const std::vector<std::uint8_t> pixels = texture.wad->WholeImage(texture);
  std::string text = EncodeHeader(texture);
  for (std::size_t y = 0; y < texture.height; ++y) {
    EncodeRow(std::span(pixels).subspan(y * texture.width, texture.width), text);
    if (texture.width % 2 != 0) text.push_back('\0');  // a row has an even number of bytes
  }
  text.push_back(PALETTEMARKER);
  for (int i = 0; i < 256; ++i) {
    const PaletteEntry& entry = palette[static_cast<std::uint8_t>(i)];
    for (const std::uint8_t component : {entry.red, entry.green, entry.blue}) {
      text.push_back(static_cast<char>(component));
    }
  }
  return ReplaceFileText(path, text, reporter);
}

std::unique_ptr<Texture> MakeFromPcx(const std::string& path, const Palette& palette) {
  auto picture = ReadPicture(path, palette);
  if (!picture) return nullptr;
  auto texture = std::make_unique<Texture>();
  texture->width = picture->width;
  texture->height = picture->height;
  texture->paddedWidth = PaddedSize(texture->width);
  texture->paddedHeight = PaddedSize(texture->height);
  texture->pixels = std::move(picture->pixels);
  // A zero byte must remain behind the name: maps cannot call a longer one.
  const std::string name = SplitPath(path).base;
  std::copy_n(name.begin(), std::min(name.size(), texture->entry.name.size() - 1),
              texture->entry.name.begin());
  return texture;
}

}  // namespace ferrowand
