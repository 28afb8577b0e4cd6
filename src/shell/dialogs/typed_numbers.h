// What a user typed into a form, as numbers. Nothing, after saying so, when it is no such number.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ferrowand {

class Reporter;

std::optional<std::vector<double>> NumbersOf(Reporter& reporter,
                                             std::span<const std::string> typed);
std::optional<int> WholeNumberOf(Reporter& reporter, const std::string& typed, const char* what,
                                 int least, int most);

}  // namespace ferrowand
