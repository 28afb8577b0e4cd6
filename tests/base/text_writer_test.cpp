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

TEST(TextWriter, WhatIsNoNumberNoReaderWouldTakeBack) {
  for (const double value : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    EXPECT_EQ(Written(value), "0.000000");
  }
}

TEST(TextWriter, FloatsReadAsTheLibraryPrintsThem) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 20000; ++i) {
    const double anyBits = std::bit_cast<double>(random());
    const double usual = static_cast<double>(static_cast<std::int32_t>(random())) / 4096;
    for (const double value : {anyBits, usual, std::trunc(usual), double(float(usual * 0.1)),
                               usual * 1e-12, usual * 1e20, i * 0.0000005, i * -0.0}) {
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
