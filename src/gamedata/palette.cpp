#include "gamedata/palette.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/path_text.h"
#include "base/report.h"
#include "base/text_reader.h"

namespace ferrowand {
namespace {

constexpr int FILEHEADERSIZE = 17;  // bytes, of no meaning here
constexpr std::size_t MAXNUMBER = 30;

// What is missing at the end of the file reads as 0.
int ReadComponent(TextReader& reader) {
  reader.SkipWhitespace();
  if (reader.AtEof()) return 0;
  std::string text;
  reader.ReadToken(text, MAXNUMBER);
  return ParseInt(text);
}

}  // namespace

Palette::Palette() {
  for (int i = 0; i < 256; ++i) {
    const auto grey = static_cast<std::uint8_t>(i);
    entries_[i] = {grey, grey, grey};
    unbent_[i] = {grey, grey, grey};
  }
}

void Palette::Load(const SearchPath& path, const Gamma& gamma, Reporter& reporter) {
  *this = Palette();
  for (const std::string& folder : path.Entries()) {
    TextReader reader(reporter);
    reader.Open(folder + "quake.pal");
    if (!reader.IsOpen()) continue;
    for (int i = 0; i < FILEHEADERSIZE; ++i) reader.GetChar();
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      const int red = ReadComponent(reader), green = ReadComponent(reader);
      const int blue = ReadComponent(reader);
      unbent_[i] = {GammaCorrect(red, 1), GammaCorrect(green, 1), GammaCorrect(blue, 1)};
      entries_[i] = {GammaCorrect(red, gamma.red), GammaCorrect(green, gamma.green),
                     GammaCorrect(blue, gamma.blue)};
    }
    return;
  }
  reporter.Show("Error!",
                "Palette file quake.pal not found! Setting palette to grayscale. You must "
                "reinstall Ferrowand.");
}

std::uint8_t Palette::NearestColour(int red, int green, int blue, int last) const {
  int best = 0;
  int bestDistance = 999999;
  for (int i = 0; i <= last && bestDistance > 0; ++i) {
    const int r = entries_[i].red - red;
    const int g = entries_[i].green - green;
    const int b = entries_[i].blue - blue;
    const int distance = r * r + g * g + b * b;
    if (distance < bestDistance) {
      best = i;
      bestDistance = distance;
    }
  }
  return static_cast<std::uint8_t>(best);
}

std::uint8_t GammaCorrect(int value, float gamma) {
  // The ends are fixed points of the curve; rounding must not move them.
  if (value <= 0) return 0;
  if (value >= 255) return 255;
  if (!(gamma > 0)) return static_cast<std::uint8_t>(value);
  const double exponent = 1 - std::log(double{gamma}) / std::log(255.0);
  return static_cast<std::uint8_t>(std::clamp(gamma * std::pow(value, exponent), 0.0, 255.0));
}

}  // namespace ferrowand
