#include "base/text_writer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <utility>

namespace ferrowand {
namespace {

constexpr std::size_t LEAST_ROOM = 64;
constexpr std::size_t LONGEST_INT = 11;
constexpr std::size_t LONGEST_WHOLE = 16;   // of those that are exact
constexpr std::size_t LONGEST_FLOAT = 320;  // the largest double has 309 digits before the point

}  // namespace

void TextWriter::Grow(std::size_t bytes) {
  capacity_ = std::max({LEAST_ROOM, 2 * capacity_, size_ + bytes});
  auto larger = std::make_unique_for_overwrite<char[]>(capacity_);
  std::copy_n(text_.get(), size_, larger.get());
  text_ = std::move(larger);
}

void TextWriter::PutInt(int value) {
  char* const at = Room(LONGEST_INT);
  size_ += static_cast<std::size_t>(std::to_chars(at, at + LONGEST_INT, value).ptr - at);
}

void TextWriter::PutFloat(double value) {
  constexpr double LARGESTWHOLE = 1e15;  // below it every whole number is exact
  if (!std::isfinite(value)) value = 0;  // no reader would take it back
  if (std::fabs(value) < LARGESTWHOLE && value == std::trunc(value)) {
    if (std::signbit(value)) Put('-');  // minus zero too
    const auto whole = static_cast<std::int64_t>(std::fabs(value));
    char* const at = Room(LONGEST_WHOLE);
    size_ += static_cast<std::size_t>(std::to_chars(at, at + LONGEST_WHOLE, whole).ptr - at);
    return Put(".000000");
  }
  char* const at = Room(LONGEST_FLOAT);
  const auto result = std::to_chars(at, at + LONGEST_FLOAT, value, std::chars_format::fixed, 6);
  size_ += static_cast<std::size_t>(result.ptr - at);
}

std::string FloatText(double value) {
  TextWriter out;
  out.PutFloat(value);
  return std::string(out.Text());
}

}  // namespace ferrowand
