#include <zelvan/tra/foreign_floats.h>

#include "support/float_models.h"

#include <thread>

#include <gtest/gtest.h>

namespace {

using support::Word;

// In arrays of 32, so that the vector form converts them.
void expect_converted(Word first, Word last) {
  constexpr int n = 32;
  unsigned source[n], ibm[n], ieee[n];
  for (; first < last; first += n) {
    for (int k = 0; k < n; ++k) source[k] = __builtin_bswap32(static_cast<unsigned>(first + k));
    tra_convert_flpt(4, 0xA4, n, source, ibm);
    tra_convert_flpt(16, 0xA4, n, source, ieee);
    for (int k = 0; k < n; ++k) {
      const bool is_right = __builtin_bswap32(ibm[k]) == support::ibm_of(first + k, 24) &&
                            __builtin_bswap32(ieee[k]) == support::ieee_of(first + k, 24);
      if (!is_right) FAIL() << std::hex << first + k << " is converted wrongly";
    }
  }
}

// Converts all 2^32 bit patterns in both directions, with two threads.
TEST(ConvertFlpt, AgreesWithTheModelForEverySingle) {
  std::thread upper(expect_converted, Word{1} << 31, Word{1} << 32);
  expect_converted(0, Word{1} << 31);
  upper.join();
}

}  // namespace
