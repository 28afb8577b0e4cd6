#include "gamedata/game_letters.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace ferrowand {
namespace {

constexpr std::size_t LETTERS = 256;

constexpr char16_t WIDE_FORMS = 0xFF01;  // of '!' and so on
constexpr char16_t CONTROL_PICTURES = 0x2400;
constexpr char16_t BLOCKS = 0x2580;

constexpr std::array<char16_t, LETTERS> MakeTable() {
  std::array<char16_t, LETTERS> table{};
  for (unsigned c = 0; c < LETTERS; ++c) {
    char16_t letter = static_cast<char16_t>(c);
    if (c < 0x20) letter = static_cast<char16_t>(CONTROL_PICTURES + c);
    if (c > 0x7F) letter = static_cast<char16_t>(BLOCKS + (c - 0x80));
    if (c > 0xA0) letter = static_cast<char16_t>(WIDE_FORMS + (c - 0xA1));
    table[c] = letter;
  }
  table[0x7F] = 0x2190;                        // an arrow to the left
  table[0xA0] = 0x3000;                        // a wide space
  table[0xFF] = 0x21D0;                        // the arrow in the other colour
  table[0x10] = 0x3010, table[0x11] = 0x3011;  // brackets
  table[0x90] = 0x3014, table[0x91] = 0x3015;
  table[0x12] = 0x24EA, table[0x92] = 0x24FF;  // a zero in a circle
  for (unsigned digit = 1; digit < 10; ++digit) {
    table[0x12 + digit] = static_cast<char16_t>(0x245F + digit);
    table[0x92 + digit] = static_cast<char16_t>(0x2775 + digit);
  }
  return table;
}

constexpr std::array<char16_t, LETTERS> TABLE = MakeTable();

}  // namespace

std::u16string GameLetters(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  for (const char c : bytes) text.push_back(TABLE[static_cast<std::uint8_t>(c)]);
  return text;
}

std::optional<std::string> GameBytes(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const char16_t letter : text) {
    const auto found = std::ranges::find(TABLE, letter);
    if (found == TABLE.end()) return std::nullopt;
    bytes.push_back(static_cast<char>(found - TABLE.begin()));
  }
  return bytes;
}

}  // namespace ferrowand
