#include "base/key_bindings.h"

#include <gtest/gtest.h>

namespace ferrowand {
namespace {

TEST(KeyBindingsTest, KeysAreCalledAsTheSystemsListHasThem) {
  const std::pair<int, const char*> cases[] = {
      {1, "Left mouse button"},
      {9, "TAB"},
      {'0', "0"},
      {'Z', "Z"},
      {93, "Apps button"},
      {105, "Numeric pad 9"},
      {110, "Decimal point"},
      {135, "F24"},
      {165, "Right alt"},
      {-1, "Unknown key"},
      {58, "Unknown key"},
      {136, "Unknown key"},
  };
  for (const auto& [code, name] : cases) EXPECT_EQ(KeyName(code), name) << code;
}

TEST(KeyBindingsTest, ASideOfShiftIsMeantByTheKeyWithoutSide) {
  Options options;
  EXPECT_TRUE(IsBound(options, 'W') && IsBound(options, 16));
  EXPECT_FALSE(IsBound(options, 'A') || IsBound(options, 18) || IsBound(options, 160));
  options.keys[0][1] = 165;  // the right Alt
  options.keys[8] = {161, 161};
  EXPECT_TRUE(IsBound(options, 18) && IsBound(options, 16) && IsBound(options, 165));
}

}  // namespace
}  // namespace ferrowand
