#include "base/text_writer.h"

#include <charconv>
#include <cmath>
#include <cstdint>

namespace ferrowand {

void TextWriter::PutInt(int value) {
  char digits[12];
  const auto result = std::to_chars(digits, digits + sizeof digits, value);
  text_.append(digits, result.ptr);
}

void TextWriter::PutFloat(double value) {
  constexpr double LARGESTWHOLE = 1e15;  // below it every whole number is exact
  if (!std::isfinite(value)) value = 0;  // no reader would take it back
  char digits[400];                      // the largest double has 309 digits before the point
  if (std::fabs(value) < LARGESTWHOLE && value == std::trunc(value)) {
    if (std::signbit(value)) Put('-');  // minus zero too
    const auto whole = static_cast<std::int64_t>(std::fabs(value));
    const auto result = std::to_chars(digits, digits + sizeof digits, whole);
    text_.append(digits, result.ptr);
    Put(".000000");
    return;
  }
  const auto result =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 6);
  text_.append(digits, result.ptr);
}

std::string FloatText(double value) {
  TextWriter out;
  out.PutFloat(value);
  return out.Text();
}

}  // namespace ferrowand
