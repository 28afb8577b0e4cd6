#include "base/key_bindings.h"

#include <gtest/gtest.h>

namespace ferrowand {
namespace {

TEST(KeyBindingsTest, KeysAreCalledAsTheSystemsListHasThem) {
  const std::pair<int, const char*> cases[] = {
      {0, "Unknown key"},
      {1, "Left mouse button"},
      {5, "Unknown key"},
      {9, "TAB"},
      {32, "Space"},
      {47, "Help"},
      {'0', "0"},
      {'9', "9"},
      {58, "Unknown key"},
      {'A', "A"},
      {'Z', "Z"},
      {93, "Apps button"},
      {96, "Numeric pad 0"},
      {105, "Numeric pad 9"},
      {106, "Multiply"},
      {112, "F1"},
      {135, "F24"},
      {136, "Unknown key"},
      {165, "Right alt"},
      {255, "Unknown key"},
      {-1, "Unknown key"},
      {110, "Decimal point"},
      {145, "Scroll lock"},
      {18, "Alt"},
  };
  for (const auto& [code, name] : cases) EXPECT_EQ(KeyName(code), name) << code;
}

TEST(KeyBindingsTest, ASideOfShiftIsMeantByTheKeyWithoutSide) {
  Options options;
  EXPECT_TRUE(IsBound(options, 'W') && IsBound(options, 16) && IsBound(options, 17));
  EXPECT_FALSE(IsBound(options, 'A') || IsBound(options, 18) || IsBound(options, 160));
  options.keys[0][1] = 165;  // the right Alt
  options.keys[8] = {161, 161};
  EXPECT_TRUE(IsBound(options, 18) && IsBound(options, 16) && IsBound(options, 165));
  options.keys[8] = {'A', 'A'};
  EXPECT_FALSE(IsBound(options, 16));
}

}  // namespace
}  // namespace ferrowand
