/// A running digest of numbers: equal on every machine if and only if all of them are.
#pragma once

#include <cmath>
#include <cstdint>

namespace support {

/// Takes a number into the digest. No step loses anything, so a difference stays one.
inline void add_to_digest(std::uint64_t& digest, std::int64_t number) {
  digest = (digest ^ static_cast<std::uint64_t>(number)) * 0x9E3779B97F4A7C15;
  digest ^= digest >> 32;
}

/// Takes all NaN as one: which operand's payload survives an addition of two is the compiler's
/// choice, and no result of the library depends on it.
inline void add_to_digest(std::uint64_t& digest, double number) {
  if (std::isnan(number)) number = NAN;
  add_to_digest(digest, __builtin_bit_cast(std::int64_t, number));
}

}  // namespace support
