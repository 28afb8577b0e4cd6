#include "gamedata/game_letters.h"

#include <gtest/gtest.h>

#include <set>

namespace ferrowand {
namespace {

TEST(GameLettersTest, EveryByteHasACharacterOfItsOwnAndComesBack) {
  std::string bytes;
  for (int c = 0; c < 256; ++c) bytes.push_back(static_cast<char>(c));
  const std::u16string text = GameLetters(bytes);
  EXPECT_EQ(std::set(text.begin(), text.end()).size(), 256u);
  EXPECT_EQ(GameBytes(text), bytes);
  EXPECT_EQ(GameLetters("Hi!\xC8\xE9\xA1"), u"Hi!\uFF28\uFF49\uFF01");
  EXPECT_EQ(GameBytes(u"gr\u00FC\u00DF"), std::nullopt);
}

}  // namespace
}  // namespace ferrowand
