#include "shell/system/picture_file.h"

#include "shell/system/win32.h"

#include <wincodec.h>

#include <array>

#include "base/path_text.h"
#include "base/report.h"
#include "base/safe_file.h"
#include "gamedata/little_endian.h"
#include "shell/system/com.h"
#include "shell/system/wide_text.h"

namespace ferrowand {
namespace {

constexpr std::size_t LARGEST_FILE = std::size_t{256} << 20;  // bytes
constexpr std::size_t TGA_HEADER = 18, TGA_SIZE = 12;         // and where it tells of the size

// Owns what `make` gives through its pointer; null where it failed.
template <typename T, typename Make>
OwnedCom<T> Made(const Make& make) {
  T* made = nullptr;
  const HRESULT result = make(&made);
  OwnedCom<T> owned(made);
  if (FAILED(result)) owned.reset();
  return owned;
}

class ComScope {
 public:
  ComScope() : began_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  ~ComScope() {
    if (began_) CoUninitialize();
  }
  ComScope(const ComScope&) = delete;
  ComScope& operator=(const ComScope&) = delete;

 private:
  bool began_;
};

// 0 for what has no palette.
UINT IndexBits(const WICPixelFormatGUID& format) {
  if (format == GUID_WICPixelFormat1bppIndexed) return 1;
  if (format == GUID_WICPixelFormat2bppIndexed) return 2;
  if (format == GUID_WICPixelFormat4bppIndexed) return 4;
  return format == GUID_WICPixelFormat8bppIndexed ? 8 : 0;
}

PictureColour ToColour(WICColor colour) {
  return {static_cast<std::uint8_t>(colour >> 16), static_cast<std::uint8_t>(colour >> 8),
          static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(colour >> 24)};
}

// Indices of less than eight bits stand beside each other in a byte, the first above.
bool ReadIndices(IWICBitmapSource& frame, UINT bits, Picture& picture) {
  const auto width = static_cast<UINT>(picture.width), height = static_cast<UINT>(picture.height);
  const UINT stride = (width * bits + 7) / 8;
  std::vector<BYTE> rows(std::size_t{stride} * height);
  if (FAILED(frame.CopyPixels(nullptr, stride, static_cast<UINT>(rows.size()), rows.data()))) {
    return false;
  }
  picture.indices.reserve(std::size_t{width} * height);
  for (UINT y = 0; y < height; ++y) {
    const BYTE* row = &rows[std::size_t{stride} * y];
    for (UINT x = 0; x < width; ++x) {
      const UINT at = x * bits;
      const UINT shift = 8 - bits - at % 8;
      picture.indices.push_back(
          static_cast<std::uint8_t>(row[at / 8] >> shift & ((1u << bits) - 1)));
    }
  }
  return true;
}

bool ReadPalette(IWICImagingFactory& factory, IWICBitmapSource& frame, Picture& picture) {
  const auto palette =
      Made<IWICPalette>([&](IWICPalette** made) { return factory.CreatePalette(made); });
  if (!palette || FAILED(frame.CopyPalette(palette.get()))) return false;
  std::array<WICColor, 256> colours{};
  UINT count = 0;
  if (FAILED(palette->GetColors(static_cast<UINT>(colours.size()), colours.data(), &count))) {
    return false;
  }
  for (UINT i = 0; i < count; ++i) picture.colours.push_back(ToColour(colours[i]));
  return true;
}

bool ReadColours(IWICImagingFactory& factory, IWICBitmapSource& frame, Picture& picture) {
  const auto converter = Made<IWICFormatConverter>(
      [&](IWICFormatConverter** made) { return factory.CreateFormatConverter(made); });
  if (!converter ||
      FAILED(converter->Initialize(&frame, GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone,
                                   nullptr, 0, WICBitmapPaletteTypeCustom))) {
    return false;
  }
  const UINT stride = static_cast<UINT>(picture.width) * 4;
  std::vector<BYTE> rows(std::size_t{stride} * static_cast<std::size_t>(picture.height));
  if (FAILED(converter->CopyPixels(nullptr, stride, static_cast<UINT>(rows.size()), rows.data()))) {
    return false;
  }
  picture.colours.reserve(rows.size() / 4);
  for (std::size_t i = 0; i < rows.size(); i += 4) {
    picture.colours.push_back({rows[i + 2], rows[i + 1], rows[i], rows[i + 3]});
  }
  return true;
}

std::optional<Picture> ReadBySystem(const std::string& path, bool& hasSize) {
  const ComScope com;
  const auto factory = Made<IWICImagingFactory>([](IWICImagingFactory** made) {
    return CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                            IID_IWICImagingFactory, reinterpret_cast<void**>(made));
  });
  if (!factory) return std::nullopt;
  const auto decoder = Made<IWICBitmapDecoder>([&](IWICBitmapDecoder** made) {
    return factory->CreateDecoderFromFilename(ToWide(path).c_str(), nullptr, GENERIC_READ,
                                              WICDecodeMetadataCacheOnDemand, made);
  });
  if (!decoder) return std::nullopt;
  const auto frame = Made<IWICBitmapFrameDecode>(
      [&](IWICBitmapFrameDecode** made) { return decoder->GetFrame(0, made); });
  UINT width = 0, height = 0;
  WICPixelFormatGUID format{};
  if (!frame || FAILED(frame->GetSize(&width, &height)) || FAILED(frame->GetPixelFormat(&format))) {
    return std::nullopt;
  }
  hasSize = IsPictureSize(width, height);
  if (!hasSize) return std::nullopt;
  Picture picture{static_cast<int>(width), static_cast<int>(height), {}, {}};
  const UINT bits = IndexBits(format);
  const bool isRead =
      bits > 0 ? ReadIndices(*frame, bits, picture) && ReadPalette(*factory, *frame, picture)
               : ReadColours(*factory, *frame, picture);
  return isRead ? std::optional(std::move(picture)) : std::nullopt;
}

}  // namespace

std::optional<Picture> ReadPictureFile(const std::string& path, std::string& why) {
  bool hasSize = true;
  std::optional<Picture> picture;
  if (EqualNoCase(SplitPath(path).extension, ".tga")) {
    const std::optional<std::string> bytes = FileBytes(path, LARGEST_FILE);
    if (bytes) picture = ReadTga(*bytes);
    if (bytes && bytes->size() >= TGA_HEADER) {
      const auto* size = reinterpret_cast<const std::uint8_t*>(bytes->data()) + TGA_SIZE;
      hasSize = IsPictureSize(GetLe16(size), GetLe16(size + 2));
    }
  } else {
    picture = ReadBySystem(path, hasSize);
  }
  if (picture) return picture;
  why = hasSize ? path + " is no picture that can be read" : NoSizeText(path);
  return std::nullopt;
}

std::string NoSizeText(const std::string& path) {
  return path + Format(" has no possible size: %d x %d pixels are the most", MAXPICTURESIDE,
                       MAXPICTURESIDE);
}

}  // namespace ferrowand
