#include <zelvan/platform/numbers.h>

#include <cerrno>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

// What number parsers are known to get wrong, each value by hand.
TEST(StrtodC, RoundsCorrectlyAndLeavesErrnoAlone) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const struct {
    const char* text;
    double value;
    const char* why;
  } rows[] = {
      {"+2.5", 2.5, "a sign in front"},
      {"-.5e1", -5.0, "no digit before the point"},
      {"9007199254740993", 9007199254740992.0, "2^53 + 1, a tie: to even"},
      {"9007199254740993.00000001", 9007199254740994.0, "just above the tie"},
      {"2.4703282292062327208e-324", 0.0, "just below half of the least number: down"},
      {"2.4703282292062327209e-324", 0x1p-1074, "just above half of it: up"},
      {"2.2250738585072011e-308", 0x1.ffffffffffffep-1023,
       "the largest denormal, where parsers have looped"},
      {"1e309", infinity, "too large"},
      {"-1e309", -infinity, "too large, below zero"},
      {"-0.0", -0.0, "a zero keeps its sign"},
      {"-", 0.0, "no digit"},
  };
  for (const auto& row : rows) {
    errno = 0;
    const double value = zelvan::platform::strtod_c(row.text);
    EXPECT_EQ(value, row.value) << row.text << ": " << row.why;
    EXPECT_EQ(std::signbit(value), std::signbit(row.value)) << row.text << ": " << row.why;
    EXPECT_EQ(errno, 0) << row.text;
  }
}

}  // namespace
