/// What `tra_convert_flpt` must give, as big-endian words, worked out from the values that the
/// numbers stand for: with this machine's floating point, of which the library uses none.
#pragma once

#include <zelvan/tra/foreign_floats.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include <gtest/gtest.h>

namespace support {

using Single = std::uint32_t;
using Double = std::uint64_t;

inline double power_of_2(int n) { return std::bit_cast<double>(Double(1023 + n) << 52); }

/// The characteristic with which 0.F * 16^(X - 64) has no leading zero digit.
inline int digits_of(double v) { return (int(std::bit_cast<Double>(v) >> 52) + 1) / 4 - 191; }

inline Single ibm_of(Single ieee) {
  const Single sign = ieee >> 31 << 31;
  const double value = std::bit_cast<float>(ieee ^ sign);
  if (!(value < HUGE_VAL)) return sign | 0x20000000;
  const int x = digits_of(value);
  return value == 0.0 ? sign : sign | Single(x) << 24 | Single(value * power_of_2(280 - 4 * x));
}

inline Single ieee_of(Single ibm) {
  const Single sign = ibm >> 31 << 31, x = ibm >> 24 & 0x7F;
  const double value = (ibm & 0xFFFFFF) * power_of_2(4 * int(x) - 280);
  if (value == 0.0) return x == 0 ? sign : sign | 0x7FFFFFFF;
  if (value >= 0x1p128) return sign | 0x7F800000;
  if (value < 0x1p-126) return sign | Single(value * 0x1p149);
  return sign | std::bit_cast<Single>(float(value));  // exact: it has 24 bits
}

inline Double ibm_of(Double ieee) {
  const Double sign = ieee >> 63 << 63;
  const double value = std::bit_cast<double>(ieee ^ sign);
  if (!(value < HUGE_VAL)) return sign | 0x7F00000000000000;
  if (value >= 0x1p252) return sign | 0x7FFFFFFFFFFFFFFF;
  const int x = std::max(digits_of(value), 0);
  const Double fraction(value * power_of_2(312 - 4 * x));
  return fraction == 0 ? 0 : sign | Double(x) << 56 | fraction;
}

inline Double ieee_of(Double ibm) {
  const Double fraction = ibm << 8 >> 8, sign = ibm >> 63 << 63;
  if (fraction == 0) return ibm == 0 ? 0 : ~Double{0};
  const int excess = std::max(int(std::bit_width(fraction)) - 53, 0);
  const double kept(fraction >> excess << excess);
  return sign | std::bit_cast<Double>(kept * power_of_2(4 * int(ibm >> 56 & 0x7F) - 312));
}

inline Single turned(Single word) { return __builtin_bswap32(word); }
inline Double turned(Double word) { return __builtin_bswap64(word); }

/// Every `step`-th pattern in both directions.
template <class Word>
void walk(Double first, Double end, Double step) {
  for (Double i = first; i < end; i += step) {
    const Word word(i);
    Word words[] = {turned(word), turned(word)};
    tra_convert_flpt(4, sizeof(Word) == 4 ? 0xA4 : 0xB8, 1, &words[0], &words[0]);
    tra_convert_flpt(16, sizeof(Word) == 4 ? 0xA4 : 0xB8, 1, &words[1], &words[1]);
    if (turned(words[0]) == ibm_of(word) && turned(words[1]) == ieee_of(word)) continue;
    FAIL() << std::hex << word << " gives " << turned(words[0]) << ", " << turned(words[1]);
  }
}

}  // namespace support
