/// What `tra_convert_flpt` must give, worked out from the values that the numbers stand for: with
/// this machine's floating point, of which the library uses none. A number is a big-endian word,
/// and `bits` says which kind: 24 or 56, the bits in the fraction of an IBM number.
#pragma once

#include <zelvan/tra/foreign_floats.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace support {

using Word = std::uint64_t;

inline double power_of_2(int n) { return __builtin_bit_cast(double, Word(1023 + n) << 52); }

inline Word ibm_of(Word ieee, int bits) {
  const Word sign = ieee >> (bits + 7) << (bits + 7), n = ieee - sign;
  const double value =
      bits == 24 ? __builtin_bit_cast(float, unsigned(n)) : __builtin_bit_cast(double, n);
  if (!(value < HUGE_VAL)) return sign | (bits == 24 ? 0x20 : Word{0x7F}) << bits;
  if (value >= 0x1p252) return sign | ~Word{0} >> 1;
  // The characteristic with which 0.F * 16^(X - 64) has no leading zero digit.
  const int x = std::max((int(__builtin_bit_cast(Word, value) >> 52) + 1) / 4 - 191, 0);
  const Word fraction(value * power_of_2(bits + 256 - 4 * x));
  return fraction != 0 || bits == 24 ? sign | Word(x) << bits | fraction : 0;
}

inline Word ieee_of(Word ibm, int bits) {
  const Word sign = ibm >> (bits + 7) << (bits + 7), fraction = ibm << (64 - bits) >> (64 - bits);
  const int x = int(ibm >> bits & 0x7F), excess = std::max(int(std::bit_width(fraction)) - 53, 0);
  if (fraction == 0 && bits == 56) return ibm == 0 ? 0 : ~Word{0};
  if (fraction == 0) return x == 0 ? sign : sign | 0x7FFFFFFF;
  const double value = double(fraction >> excess << excess) * power_of_2(4 * x - 256 - bits);
  if (bits == 56) return sign | __builtin_bit_cast(Word, value);
  if (value >= 0x1p128) return sign | 0x7F800000;
  if (value < 0x1p-126) return sign | Word(value * 0x1p149);
  return sign | __builtin_bit_cast(unsigned, float(value));  // exact: it has 24 bits
}

/// `count` patterns in both directions, from `i` on in steps: each by itself, and as arrays that
/// fill a few vectors and one element more. True if all are as they must be.
inline bool walk(int bits, Word i, Word count, Word step) {
  const unsigned short type = bits == 24 ? 0xA4 : 0xB8;
  const int unused = 56 - bits, size = bits == 24 ? 4 : 8;
  constexpr int most = 33;
  unsigned char source[8 * most], ibm[8 * most], ieee[8 * most];
  while (count > 0) {
    const auto n = static_cast<unsigned short>(std::min<Word>(count, most));
    for (int k = 0; k < n; ++k) {
      const Word word = __builtin_bswap64((i + k * step) << unused);
      std::memcpy(source + k * size, &word, size);
    }
    tra_convert_flpt(4, type, n, source, ibm);
    tra_convert_flpt(16, type, n, source, ieee);
    for (int k = 0; k < n; ++k, --count, i += step) {
      const Word expected[] = {__builtin_bswap64(ibm_of(i, bits) << unused),
                               __builtin_bswap64(ieee_of(i, bits) << unused)};
      Word one[2] = {};
      tra_convert_flpt(4, type, 1, source + k * size, &one[0]);
      tra_convert_flpt(16, type, 1, source + k * size, &one[1]);
      if (one[0] == expected[0] && one[1] == expected[1] &&
          std::memcmp(ibm + k * size, &expected[0], size) == 0 &&
          std::memcmp(ieee + k * size, &expected[1], size) == 0) {
        continue;
      }
      std::printf("%llx is converted wrongly\n", static_cast<unsigned long long>(i));
      return false;
    }
  }
  return true;
}

}  // namespace support
