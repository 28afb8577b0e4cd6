#include "gamedata/picture_import.h"

#include <algorithm>
#include <unordered_map>

#include "base/text_parts.h"
#include "gamedata/palette.h"

namespace ferrowand {
namespace {

constexpr int STEP = 16;  // texels; what the game's surfaces are cut by
constexpr TextureSize SKY{256, 128};
constexpr int OPAQUE = 128;  // alpha
constexpr int FIRST_FULLBRIGHT = 224;
constexpr std::uint8_t HOLE = 255, SKY_HOLE = 0;

enum class Holes { None, Fence, Sky };

Holes HolesOf(std::string_view name) {
  if (name.starts_with('{')) return Holes::Fence;
  return LowerCase(name.substr(0, 3)) == "sky" ? Holes::Sky : Holes::None;
}

// The same colours in the same places, as far as pixels use them.
bool IsInPaletteOfGame(const Picture& picture, const Palette& palette) {
  if (!picture.HasPalette()) return false;
  if (picture.colours.empty()) return true;
  std::array<bool, 256> isUsed{};
  for (const std::uint8_t index : picture.indices) isUsed[index] = true;
  for (std::size_t i = 0; i < isUsed.size(); ++i) {
    if (!isUsed[i]) continue;
    if (i >= picture.colours.size()) return false;
    const PictureColour& own = picture.colours[i];
    const Colour game = palette.Unbent()[i];
    const bool isSame = own.red == game.red && own.green == game.green && own.blue == game.blue;
    if (!isSame || own.alpha < OPAQUE) return false;
  }
  return true;
}

int FitSide(int side, PictureFit fit) {
  const int cut = side / STEP * STEP;
  if (fit == PictureFit::Pad) return (side + STEP - 1) / STEP * STEP;
  return std::max(STEP, fit == PictureFit::Crop || side - cut < STEP / 2 ? cut : cut + STEP);
}

// From which pixel of the picture the texel comes: where it is not scaled, the one at that place.
template <typename Visit>
void ForEachTexel(const Picture& picture, TextureSize size, bool isScaled, const Visit& visit) {
  for (int y = 0; y < size.height; ++y) {
    for (int x = 0; x < size.width; ++x) {
      const int fromX = isScaled ? x * picture.width / size.width : std::min(x, picture.width - 1);
      const int fromY =
          isScaled ? y * picture.height / size.height : std::min(y, picture.height - 1);
      visit(fromX, fromY, x);
    }
  }
}

PictureColour ColourAt(const Picture& picture, int x, int y) {
  const auto pixel = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                     static_cast<std::size_t>(x);
  if (!picture.HasPalette()) return picture.colours[pixel];
  const std::size_t index = picture.indices[pixel];
  return index < picture.colours.size() ? picture.colours[index] : PictureColour{};
}

// Of the pixels of the picture that a texel covers; clear ones do not count, where there are holes.
PictureColour AverageOver(const Picture& picture, TextureSize size, Holes holes, int x, int y) {
  const int left = x * picture.width / size.width, top = y * picture.height / size.height;
  const int right = std::max(left + 1, (x + 1) * picture.width / size.width);
  const int bottom = std::max(top + 1, (y + 1) * picture.height / size.height);
  int red = 0, green = 0, blue = 0, opaque = 0;
  for (int fromY = top; fromY < bottom; ++fromY) {
    for (int fromX = left; fromX < right; ++fromX) {
      const PictureColour colour = ColourAt(picture, fromX, fromY);
      if (holes != Holes::None && colour.alpha < OPAQUE) continue;
      red += colour.red;
      green += colour.green;
      blue += colour.blue;
      ++opaque;
    }
  }
  if (opaque == 0 || opaque * 2 < (right - left) * (bottom - top)) return {0, 0, 0, 0};
  const auto part = [opaque](int sum) { return static_cast<std::uint8_t>(sum / opaque); };
  return {part(red), part(green), part(blue), 255};
}

// Remembers what it has found: pictures have few colours beside their pixels.
class ColourMatcher {
 public:
  ColourMatcher(const Palette& palette, const ImportRules& rules, Holes holes)
      : palette_(palette), holes_(holes) {
    last_ = rules.takesFullbrights ? 255 : FIRST_FULLBRIGHT - 1;
    if (holes == Holes::Fence) last_ = std::min(last_, HOLE - 1);
  }

  std::uint8_t Match(const PictureColour& colour, bool isInSkyHole) {
    if (colour.alpha < OPAQUE && holes_ == Holes::Fence) return HOLE;
    if (colour.alpha < OPAQUE && isInSkyHole) return SKY_HOLE;
    const unsigned key = static_cast<unsigned>(colour.red) << 16 |
                         static_cast<unsigned>(colour.green) << 8 | colour.blue |
                         static_cast<unsigned>(isInSkyHole) << 24;
    const auto [found, isNew] = known_.try_emplace(key);
    if (isNew) found->second = Nearest(colour, isInSkyHole ? SKY_HOLE + 1 : 0);
    return found->second;
  }

 private:
  std::uint8_t Nearest(const PictureColour& colour, int first) const {
    int best = first, bestDistance = 1 << 30;
    for (int i = first; i <= last_ && bestDistance > 0; ++i) {
      const Colour& entry = palette_.Unbent()[static_cast<std::size_t>(i)];
      const int red = entry.red - colour.red, green = entry.green - colour.green;
      const int blue = entry.blue - colour.blue;
      const int distance = red * red + green * green + blue * blue;
      if (distance >= bestDistance) continue;
      best = i;
      bestDistance = distance;
    }
    return static_cast<std::uint8_t>(best);
  }

  const Palette& palette_;
  const Holes holes_;
  int last_;
  std::unordered_map<unsigned, std::uint8_t> known_;
};

}  // namespace

TextureSize ImportedSize(const Picture& picture, std::string_view name, PictureFit fit) {
  if (HolesOf(name) == Holes::Sky) return SKY;
  return {static_cast<std::uint16_t>(FitSide(picture.width, fit)),
          static_cast<std::uint16_t>(FitSide(picture.height, fit))};
}

std::unique_ptr<Texture> MakeTexture(const Picture& picture, std::string_view name,
                                     const ImportRules& rules, const Palette& palette) {
  auto texture = std::make_unique<Texture>();
  const TextureSize size = ImportedSize(picture, name, rules.fit);
  texture->width = size.width;
  texture->height = size.height;
  texture->paddedWidth = PaddedSize(size.width);
  texture->paddedHeight = PaddedSize(size.height);
  std::copy_n(name.begin(), std::min(name.size(), texture->entry.name.size() - 1),
              texture->entry.name.begin());
  texture->pixels.reserve(std::size_t{size.width} * size.height);

  const bool isScaled = rules.fit == PictureFit::Scale;
  if (IsInPaletteOfGame(picture, palette)) {
    ForEachTexel(picture, size, isScaled, [&](int x, int y, int) {
      texture->pixels.push_back(
          picture.indices[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                          static_cast<std::size_t>(x)]);
    });
    return texture;
  }
  const Holes holes = HolesOf(name);
  ColourMatcher matcher(palette, rules, holes);
  int row = -1;
  ForEachTexel(picture, size, isScaled, [&](int fromX, int fromY, int x) {
    row += x == 0 ? 1 : 0;
    const PictureColour colour =
        isScaled ? AverageOver(picture, size, holes, x, row) : ColourAt(picture, fromX, fromY);
    texture->pixels.push_back(matcher.Match(colour, holes == Holes::Sky && x < size.width / 2));
  });
  return texture;
}

}  // namespace ferrowand
