// Texts as the system's wide functions take and give them. GDI, the clipboard and the keyboard do
// not follow the code page that the program asks for.
#pragma once

#include <string>
#include <string_view>

namespace ferrowand {

// Of UTF-8. What is none, as in the maps of old editors, is read as western European.
std::wstring ToWide(std::string_view text);
std::string FromWide(std::wstring_view text);
// For the system's other functions, which take UTF-8 alone.
std::string AsUtf8(std::string_view text);

}  // namespace ferrowand
