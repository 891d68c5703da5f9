/// A model of `tra_convert_flpt`: computes results from the values of the numbers with this
/// machine's floating point, which the library does not use. A number is a big-endian word. `bits`,
/// the size of an IBM fraction, is 24 for single and 56 for double precision.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace support {

using Word = std::uint64_t;

inline double power_of_2(int n) { return __builtin_bit_cast(double, Word(1023 + n) << 52); }

inline Word ibm_of(Word ieee, int bits) {
  const Word sign = ieee >> (bits + 7) << (bits + 7);
  const Word n = ieee - sign;
  const double value = bits == 24 ? __builtin_bit_cast(float, static_cast<unsigned>(n))
                                  : __builtin_bit_cast(double, n);
  if (!(value < HUGE_VAL)) return sign | (bits == 24 ? 0x20 : Word{0x7F}) << bits;
  if (value >= 0x1p252) return sign | ~Word{0} >> 1;
  // The exponent X with which the fraction F of 0.F * 16^(X - 64) has no leading zero digit.
  const int exponent = static_cast<int>(__builtin_bit_cast(Word, value) >> 52);
  const int x = std::max((exponent + 1) / 4 - 191, 0);
  const Word fraction(value * power_of_2(bits + 256 - 4 * x));
  return fraction != 0 || bits == 24 ? sign | Word(x) << bits | fraction : 0;
}

inline Word ieee_of(Word ibm, int bits) {
  const Word sign = ibm >> (bits + 7) << (bits + 7);
  const Word fraction = ibm << (64 - bits) >> (64 - bits);
  const int x = static_cast<int>(ibm >> bits & 0x7F);
  if (fraction == 0 && bits == 56) return ibm == 0 ? 0 : ~Word{0};
  if (fraction == 0) return x == 0 ? sign : sign | 0x7FFFFFFF;
  const int excess = std::max(static_cast<int>(std::bit_width(fraction)) - 53, 0);
  const double whole = static_cast<double>(fraction >> excess << excess);
  const double value = whole * power_of_2(4 * x - 256 - bits);
  if (bits == 56) return sign | __builtin_bit_cast(Word, value);
  if (value >= 0x1p128) return sign | 0x7F800000;
  if (value < 0x1p-126) return sign | Word(value * 0x1p149);
  return sign | __builtin_bit_cast(unsigned, static_cast<float>(value));  // exact: at most 24 bits
}

}  // namespace support
