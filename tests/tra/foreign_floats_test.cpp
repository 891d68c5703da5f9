#include <zelvan/tra/foreign_floats.h>

#include "support/float_models.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

using support::ibm_of;
using support::ieee_of;
using support::Word;

constexpr unsigned short singles = 0xA4, doubles = 0xB8;
constexpr int to_ibm = 4, to_ieee = 16;

/// Converts a number that is written down as in memory, the byte with the sign first.
static Word converted(int format, unsigned short type, Word number) {
  const int unused = type == singles ? 32 : 0;
  Word bytes = __builtin_bswap64(number << unused);
  tra_convert_flpt(format, type, 1, &bytes, &bytes);
  return __builtin_bswap64(bytes) >> unused;
}

TEST(ConvertFlpt, TurnsKnownNumbersIntoOneAnother) {
  EXPECT_EQ(converted(to_ibm, singles, 0xC2ED4000), 0xC276A000) << "-118.625 is -0.76A * 16^2, hex";
  EXPECT_EQ(converted(to_ibm, singles, 0x3DCCCCCD), 0x40199999) << "0.1 loses its last bits";
}

// The model computes with values. Each exponent comes with fractions next to each power of two.
TEST(ConvertFlpt, AgreesWithAModelOfTheValues) {
  for (Word exponent = 0; exponent < 4096 && !HasFailure(); ++exponent) {
    for (int place = 0; place < 3 * 53; ++place) {
      const Word beside_a_power = (Word{1} << place / 3) + place % 3 - 1;
      const Word number = (exponent << 52) + beside_a_power, high = number >> 32;
      EXPECT_EQ(converted(to_ibm, doubles, number), ibm_of(number, 56)) << std::hex << number;
      EXPECT_EQ(converted(to_ieee, doubles, number), ieee_of(number, 56)) << std::hex << number;
      EXPECT_EQ(converted(to_ibm, singles, high), ibm_of(high, 24)) << std::hex << high;
      EXPECT_EQ(converted(to_ieee, singles, high), ieee_of(high, 24)) << std::hex << high;
    }
  }
}

TEST(ConvertFlpt, LooksAtSixBitsOfTheFormat) {
  EXPECT_EQ(converted(0x107, singles, 0x3F800000), 0x41100000u) << "as format 4, to IBM";
  std::string bytes = "0123456789";
  tra_convert_flpt(3, singles, 1, &bytes[0], &bytes[1]);
  EXPECT_EQ(bytes, "0012356789") << "as format 0, which moves 4 bytes";
  tra_convert_flpt(3, doubles, 1, &bytes[0], &bytes[1]);
  EXPECT_EQ(bytes, "0001235679") << "8 bytes";
}

TEST(ConvertFlptDeathTest, ReportsAnUnknownConversionAndReturns) {
  const auto convert_nothing = [](int format, unsigned short type) {
    tra_convert_flpt(format, type, 0, nullptr, nullptr);
    std::exit(9);  // reached only if the call returns
  };
  const char line[] =
      "^ZVN MSG\\(.*tra_prm0.cpp,.+\\): tra_convert_flpt: unimplemented conversion\n$";
  EXPECT_EXIT(convert_nothing(8, doubles), testing::ExitedWithCode(9), line);
  EXPECT_EXIT(convert_nothing(to_ibm, 0x84), testing::ExitedWithCode(9), line);
}
