// What a compiled level holds, as far as its header tells.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ferrowand {

// Lines to show: the version, then a line for each kind of thing in it, with its count and bytes.
// What the header's numbers say is shown as they say it, bytes that are not there as 0; behind it
// stands what cannot be so. A file that cannot be opened gives one line that says so.
std::vector<std::string> BspSummary(const std::string& path);

// The same of the first bytes of a file of that size.
std::vector<std::string> BspSummaryOf(std::string_view head, std::uint64_t fileSize);

}  // namespace ferrowand
