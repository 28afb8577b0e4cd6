// Texts of the game as a window shows them. A byte is a letter of the game's own table: those above
// 127 are the same letters in another colour, and some are no letters at all. Each has one
// character that can be shown, and typed or pasted back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ferrowand {

// Coloured letters come as wide ones, golden digits in circles. Whatever the bytes are, GameBytes
// gives them back.
std::u16string GameLetters(std::string_view bytes);
// Nothing where the game has no such letter.
std::optional<std::string> GameBytes(std::u16string_view text);

}  // namespace ferrowand
