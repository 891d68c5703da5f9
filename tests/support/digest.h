/// A running digest of numbers: equal on every machine if and only if all of them are.
#pragma once

#include <cmath>
#include <cstdint>

namespace support {

class Digest {
 public:
  template <class... Numbers>
  void operator()(Numbers... numbers) {
    (mix(bits(numbers)), ...);
  }

  std::uint64_t value() const { return value_; }

 private:
  static std::uint64_t bits(std::int64_t v) { return static_cast<std::uint64_t>(v); }

  // All NaN are one: which operand's payload survives an addition of two is the compiler's choice,
  // and no result of the library depends on it.
  static std::uint64_t bits(double v) {
    return std::isnan(v) ? 0x7ff8000000000000 : __builtin_bit_cast(std::uint64_t, v);
  }

  // No step loses anything, so a difference stays one.
  void mix(std::uint64_t v) {
    value_ = (value_ ^ v) * 0x9E3779B97F4A7C15;
    value_ ^= value_ >> 32;
  }

  std::uint64_t value_ = 0;
};

}  // namespace support
