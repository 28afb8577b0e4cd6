#include "operations/key_colour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "base/number_text.h"
#include "base/report.h"

namespace ferrowand {
namespace {

using Parts = std::array<double, 3>;

std::optional<Parts> PartsOf(std::string_view value) {
  Parts parts{};
  for (double& part : parts) {
    const std::size_t begin = value.find_first_not_of(' ');
    if (begin == value.npos) return std::nullopt;
    value.remove_prefix(begin);
    const std::size_t end = std::min(value.find(' '), value.size());
    const std::optional<double> number = ReadNumber(value.substr(0, end));
    if (!number) return std::nullopt;
    part = *number;
    value.remove_prefix(end);
  }
  return parts;
}

bool IsOfOnes(std::string_view value, const Parts& parts) {
  return value.find('.') != value.npos || (*std::ranges::max_element(parts) == 1);
}

}  // namespace

Colour ColourOfKey(std::string_view value) {
  const std::optional<Parts> parts = PartsOf(value);
  if (!parts) return {255, 255, 255};
  const double unit = IsOfOnes(value, *parts) ? 255 : 1;
  const auto byte = [&](double part) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(part * unit, 0.0, 255.0)));
  };
  return {byte((*parts)[0]), byte((*parts)[1]), byte((*parts)[2])};
}

std::string ColourForKey(Colour colour, std::string_view before) {
  const std::optional<Parts> parts = PartsOf(before);
  if (!parts || !IsOfOnes(before, *parts)) {
    return Format("%u %u %u", unsigned{colour.red}, unsigned{colour.green}, unsigned{colour.blue});
  }
  return Format("%.3g %.3g %.3g", colour.red / 255.0, colour.green / 255.0, colour.blue / 255.0);
}

}  // namespace ferrowand
