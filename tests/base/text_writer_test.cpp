#include "base/text_writer.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>

namespace ferrowand {
namespace {

std::string Written(double value) {
  TextWriter out;
  out.PutFloat(value);
  return std::string(out.Text());
}

TEST(TextWriter, FloatsHaveSixDecimalsAndNoExponent) {
  const std::pair<double, const char*> cases[] = {
      {0, "0.000000"},
      {-0.0, "-0.000000"},
      {1, "1.000000"},
      {-128, "-128.000000"},
      {0.5, "0.500000"},
      {-0.0000001, "-0.000000"},
      {0.0000005, "0.000000"},  // a little below the half
      {1e15, "1000000000000000.000000"},
      {1e22, "10000000000000000000000.000000"},
      {0.1f, "0.100000"},
      // What is no number no reader would take back.
      {std::nan(""), "0.000000"},
      {HUGE_VAL, "0.000000"},
      {-HUGE_VAL, "0.000000"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(Written(value), text);
}

TEST(TextWriter, FloatsReadAsTheLibraryPrintsThem) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 20000; ++i) {
    const double anyBits = std::bit_cast<double>(random());
    const double usual = static_cast<double>(static_cast<std::int32_t>(random())) / 4096;
    for (const double value : {anyBits, usual, std::trunc(usual), double(float(usual * 0.1))}) {
      if (!std::isfinite(value)) continue;
      char text[400];
      std::snprintf(text, sizeof text, "%f", value);
      ASSERT_EQ(Written(value), text);
    }
  }
}

TEST(TextWriter, IntegersReachTheirLimits) {
  TextWriter out;
  for (const int value : {0, -1, INT_MAX, INT_MIN}) {
    out.PutInt(value);
    out.Put(' ');
  }
  EXPECT_EQ(out.Text(), "0 -1 2147483647 -2147483648 ");
}

}  // namespace
}  // namespace ferrowand
