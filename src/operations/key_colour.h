// Colours as values of keys: three numbers, each from 0 to 255, or from 0 to 1.
#pragma once

#include <string>
#include <string_view>

#include "platform/colour.h"

namespace ferrowand {

// White for what is no colour.
Colour ColourOfKey(std::string_view value);
// By the same measure as the value that it takes the place of; from 0 to 255 where that is none.
std::string ColourForKey(Colour colour, std::string_view before);

}  // namespace ferrowand
