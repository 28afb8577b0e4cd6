#include "cli/printable.h"

#include <cstdint>

namespace ferrowand {
namespace {

// Bytes of the character at the front of the text; 0 when it is none, or controls the terminal.
std::size_t CharacterLength(std::string_view text) {
  const auto byte = [text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::uint8_t first = byte(0);
  if (first < 0x80) return first >= ' ' && first != 0x7f;
  const std::size_t length = first >= 0xc2 && first < 0xe0   ? 2
                             : first >= 0xe0 && first < 0xf0 ? 3
                             : first >= 0xf0 && first < 0xf5 ? 4
                                                             : 0;
  if (length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xc0) != 0x80) return 0;
  }
  const bool isControl = first == 0xc2 && byte(1) < 0xa0;
  return isControl ? 0 : length;
}

std::string Escaped(std::string_view text, bool keepsLines) {
  constexpr char DIGITS[] = "0123456789abcdef";
  std::string printable;
  while (!text.empty()) {
    std::size_t length = CharacterLength(text);
    if (keepsLines && text[0] == '\n') length = 1;
    if (length > 0) {
      printable += text.substr(0, length);
    } else {
      const auto byte = static_cast<std::uint8_t>(text[0]);
      printable += {'\\', 'x', DIGITS[byte / 16], DIGITS[byte % 16]};
      length = 1;
    }
    text.remove_prefix(length);
  }
  return printable;
}

}  // namespace

std::string Printable(std::string_view text) {
  return Escaped(text, false);
}

std::string PrintableLines(std::string_view text) {
  return Escaped(text, true);
}

}  // namespace ferrowand
