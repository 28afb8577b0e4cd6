#include "shell/dialogs/typed_numbers.h"

#include <cmath>

#include "base/number_text.h"
#include "base/report.h"

namespace ferrowand {

std::optional<std::vector<double>> NumbersOf(Reporter& reporter,
                                             std::span<const std::string> typed) {
  std::vector<double> numbers;
  for (const std::string& text : typed) {
    const std::optional<double> number = ReadNumber(text);
    if (!number) {
      reporter.Show("Cannot continue", Format("\"%s\" is not a number", text.c_str()));
      return std::nullopt;
    }
    numbers.push_back(*number);
  }
  return numbers;
}

std::optional<int> WholeNumberOf(Reporter& reporter, const std::string& typed, const char* what,
                                 int least, int most) {
  const std::optional<double> number = ReadNumber(typed);
  if (number && *number >= least && *number <= most && *number == std::floor(*number)) {
    return static_cast<int>(*number);
  }
  reporter.Show("Cannot continue",
                Format("%s must be a whole number from %i to %i", what, least, most));
  return std::nullopt;
}

}  // namespace ferrowand
