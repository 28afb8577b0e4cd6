#include "base/text_pattern.h"

#include <gtest/gtest.h>

namespace ferrowand {
namespace {

TEST(TextPatternTest, MatchesPartsWholesAndWildcards) {
  struct Case {
    const char *pattern, *text;
    bool part, whole, exact;  // the last: whole, and the case counts
  };
  const Case cases[] = {
      {"", "", true, true, true},
      {"", "door", true, true, true},
      {"door", "func_Door_secret", true, false, false},
      {"DOOR", "door", true, true, false},
      {"door", "doo", false, false, false},
      {"monster_*", "monster_", true, true, true},
      {"monster_*", "a monster_ogre", false, false, false},
      {"*o?r*", "doubledoor1", true, true, true},
      {"t?", "t12", false, false, false},
      {"t??", "t12", true, true, true},
      {"*ab*ab", "abxabab", true, true, true},
      {"*ab*abc", "ababab", false, false, false},
      {"a*", "", false, false, false},
      {"***", "", true, true, true},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(TextPattern(row.pattern).Matches(row.text), row.part) << row.pattern << row.text;
    EXPECT_EQ(TextPattern(row.pattern, PatternRule::Whole).Matches(row.text), row.whole)
        << row.pattern << row.text;
    EXPECT_EQ(TextPattern(row.pattern, PatternRule::Whole, true).Matches(row.text), row.exact)
        << row.pattern << row.text;
  }
}

}  // namespace
}  // namespace ferrowand
