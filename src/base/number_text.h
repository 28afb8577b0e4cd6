// Numbers out of text, the same on every system and in every country.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace ferrowand {

// The decimal number at the front of `text`, as the C library's own conversions read it: leading
// white space and a sign allowed, 0 for no number, clamped to what 32 bits hold.
std::int32_t ParseInt(std::string_view text);
// Likewise. Always finite, also as a float: what is too large becomes the largest float of its
// sign, what is too small 0.
double ParseFloat(std::string_view text);

// What a person typed as a number: blanks around it are allowed, anything else is not. Finite, also
// as a float.
std::optional<double> ReadNumber(std::string_view text);

}  // namespace ferrowand
