#include "base/text_pattern.h"

#include <algorithm>

namespace ferrowand {
namespace {

constexpr std::string_view WILDCARDS = "*?";

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

TextPattern::TextPattern(std::string_view text, PatternRule rule, bool caseCounts)
    : pattern_(text), caseCounts_(caseCounts) {
  if (!caseCounts) std::ranges::transform(pattern_, pattern_.begin(), Lower);
  const bool isPart = rule == PatternRule::Part && text.find_first_of(WILDCARDS) == text.npos;
  if (isPart && !text.empty()) pattern_ = "*" + pattern_ + "*";
}

bool TextPattern::IsSame(char a, char b) const {
  return a == (caseCounts_ ? b : Lower(b));
}

// Of several stars only the last one has to be tried again: what stood before it matches already.
bool TextPattern::Matches(std::string_view text) const {
  if (pattern_.empty()) return true;
  constexpr std::size_t NONE = std::string::npos;
  std::size_t at = 0, in = 0, star = NONE, tried = 0;
  while (in < text.size()) {
    if (at < pattern_.size() && pattern_[at] == '*') {
      star = at++;
      tried = in;
    } else if (at < pattern_.size() && (pattern_[at] == '?' || IsSame(pattern_[at], text[in]))) {
      ++at, ++in;
    } else if (star != NONE) {
      at = star + 1;
      in = ++tried;
    } else {
      return false;
    }
  }
  return pattern_.find_first_not_of('*', at) == NONE;
}

std::vector<TextPattern> PatternsOfWords(std::string_view text) {
  std::vector<TextPattern> patterns;
  while (true) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    if (text.empty()) return patterns;
    const std::string_view word = text.substr(0, text.find(' '));
    patterns.emplace_back(word);
    text.remove_prefix(word.size());
  }
}

}  // namespace ferrowand
