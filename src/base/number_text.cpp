#include "base/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace ferrowand {
namespace {

constexpr std::string_view BLANKS = " \t\n\v\f\r";

// What from_chars takes: no white space, no plus, and no second sign behind a plus.
std::string_view NumberPart(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
  if (text.empty() || text[0] != '+') return text;
  text.remove_prefix(1);
  return text.empty() || text[0] == '-' ? std::string_view() : text;
}

// Whether the digits of a number that a double cannot hold stand for a huge one, not a tiny one.
bool IsHuge(std::string_view number) {
  const std::size_t e = std::min(number.find_first_of("eE"), number.size());
  const std::size_t point = std::min(number.find('.'), e);
  const std::size_t leading = number.find_first_of("123456789");
  std::int64_t exponent = 0;
  if (e < number.size()) {
    const std::string_view digits = NumberPart(number.substr(e + 1));
    if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec ==
        std::errc::result_out_of_range)
      return digits[0] != '-';
    exponent = std::clamp<std::int64_t>(exponent, INT32_MIN, INT32_MAX);
  }
  return exponent + static_cast<std::int64_t>(point) - static_cast<std::int64_t>(leading) > 0;
}

}  // namespace

std::int32_t ParseInt(std::string_view text) {
  using Limits = std::numeric_limits<std::int32_t>;
  const std::string_view number = NumberPart(text);
  std::int32_t value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range)
    return number[0] == '-' ? Limits::min() : Limits::max();
  return value;
}

double ParseFloat(std::string_view text) {
  constexpr double LARGEST = std::numeric_limits<float>::max();
  const std::string_view number = NumberPart(text);
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    const std::string_view used(number.data(),
                                static_cast<std::size_t>(result.ptr - number.data()));
    if (!IsHuge(used)) return 0;
    return used[0] == '-' ? -LARGEST : LARGEST;
  }
  if (result.ec != std::errc() || !std::isfinite(value)) return 0;
  return std::clamp(value, -LARGEST, LARGEST);
}

std::optional<double> ReadNumber(std::string_view text) {
  std::string_view number = NumberPart(text);
  number = number.substr(0, number.find_last_not_of(BLANKS) + 1);
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  const bool isWhole = result.ec == std::errc() && result.ptr == number.data() + number.size();
  if (!isWhole || !(std::abs(value) <= std::numeric_limits<float>::max())) return std::nullopt;
  return value;
}

}  // namespace ferrowand
