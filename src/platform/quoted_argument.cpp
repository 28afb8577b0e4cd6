#include "platform/process.h"

namespace ferrowand {

// No name of a file ends in a backslash or has a quote in it.
std::string QuotedArgument(const std::string& text) {
  return text.find_first_of(" \t") == std::string::npos ? text : '"' + text + '"';
}

}  // namespace ferrowand
