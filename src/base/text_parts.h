// Small things that are done to texts in several rooms. Letters are those from A to Z.
#pragma once

#include <string>
#include <string_view>

namespace ferrowand {

std::string LowerCase(std::string_view text);
// Without the white space at both ends.
std::string_view Trimmed(std::string_view text);
// With CR LF for every line feed that has no CR in front, as the system's text fields want it.
std::string WithCrLf(std::string_view text);
// The line at the front, without its end (LF or CR LF); takes it away.
std::string_view TakeLine(std::string_view& text);

}  // namespace ferrowand
