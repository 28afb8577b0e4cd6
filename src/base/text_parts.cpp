#include "base/text_parts.h"

#include <algorithm>

namespace ferrowand {
namespace {

constexpr std::string_view WHITE(" \t\r\n\v\f\0", 7);

}  // namespace

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return lower;
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(WHITE);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(WHITE) - first + 1);
}

std::string WithCrLf(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) result += '\r';
    result += text[i];
  }
  return result;
}

std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace ferrowand
