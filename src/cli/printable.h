// Text out of files on its way to a terminal.
#pragma once

#include <string>
#include <string_view>

namespace ferrowand {

// With control characters, and bytes that are no UTF-8, as \xNN: a terminal would obey them.
std::string Printable(std::string_view text);
// The same of a message, which keeps its line feeds.
std::string PrintableLines(std::string_view text);

}  // namespace ferrowand
