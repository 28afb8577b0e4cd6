#include "base/number_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace ferrowand {
namespace {

TEST(NumberText, IntegersAreReadAsFarAsTheyGo) {
  const std::pair<const char*, std::int32_t> cases[] = {
      {"16", 16},
      {" \t\r\n-16 x", -16},
      {"+7", 7},
      {"12.9", 12},
      {"007", 7},
      {"", 0},
      {"-", 0},
      {"+-5", 0},
      {"--5", 0},
      {"abc", 0},
      {"0x10", 0},
      {"2147483647", 2147483647},
      {"2147483648", std::numeric_limits<std::int32_t>::max()},
      {"-99999999999999999999", std::numeric_limits<std::int32_t>::min()}};
  for (const auto& [text, value] : cases) EXPECT_EQ(ParseInt(text), value) << text;
}

TEST(NumberText, FloatsAreReadAsFarAsTheyGo) {
  const std::pair<const char*, double> cases[] = {
      {"1.5", 1.5}, {" +.5", 0.5},      {"-5.", -5}, {"1e3x", 1000}, {"1e", 1},
      {"1,5", 1},   {"-0.25 7", -0.25}, {"", 0},     {"nan", 0},     {"-inf", 0},
      {"x", 0},     {"+-1", 0},         {"0x10", 0}, {".", 0},       {"infinity", 0},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(ParseFloat(text), value) << text;
}

TEST(NumberText, FloatsBeyondTheirRangeStayFinite) {
  const double largest = std::numeric_limits<float>::max();
  const std::string zeros(400, '0');
  const std::pair<std::string, double> cases[] = {
      {"1e39", largest},
      {"-1e39", -largest},
      {"1e400", largest},
      {"-1e99999999999999999999", -largest},
      {"1" + zeros, largest},
      {"-1" + zeros + ".5", -largest},
      {"0." + zeros + "1", 0},
      {"0." + zeros + "1e800", largest},
      {"1" + zeros + "e-800", 0},
      {"1e-400", 0},
      {"1e-99999999999999999999", 0},
      {"1" + zeros + "e-400", 1},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(ParseFloat(text), value) << text;
}

TEST(NumberText, WhatIsTypedIsANumberOrNothing) {
  for (const char* text : {"", " ", "x", "1x", "1,5", "+-1", "0x10", "nan", "inf", "1e39", "1 2"}) {
    EXPECT_FALSE(ReadNumber(text)) << text;
  }
  EXPECT_EQ(ReadNumber(" +1.5e1\t"), 15);
  EXPECT_EQ(ReadNumber("-.25"), -0.25);
}

}  // namespace
}  // namespace ferrowand
