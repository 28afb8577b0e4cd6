// What a user types to find texts by.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ferrowand {

enum class PatternRule {
  Part,  // stands somewhere in the text, unless it has wildcards
  Whole
};

// `*` stands for any letters or none, `?` for one; a pattern with one of them is the whole text.
// Bytes are compared, those of A to Z in any case unless the case counts.
class TextPattern {
 public:
  TextPattern() = default;  // empty
  explicit TextPattern(std::string_view text, PatternRule rule = PatternRule::Part,
                       bool caseCounts = false);

  // Nothing was typed: every text matches.
  bool IsEmpty() const { return pattern_.empty(); }
  bool Matches(std::string_view text) const;

 private:
  bool IsSame(char a, char b) const;

  std::string pattern_;
  bool caseCounts_ = false;
};

// One pattern for each word between blanks.
std::vector<TextPattern> PatternsOfWords(std::string_view text);

}  // namespace ferrowand
