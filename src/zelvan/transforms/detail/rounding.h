/// The only rounding rule from real to device coordinates.
#pragma once

#include <zelvan/detail/pair.h>
#include <zelvan/transforms/records.h>

#include <cstdint>

namespace zelvan {

/// Rounds to whole device units, halves away from zero; returns INT_MIN if the result does not fit
/// 32 bits, and for a NaN.
///
/// The half is added in double precision, so the number just below 0.5 rounds to 1. Callers rely on
/// that, which is why no rounding function of the standard library is used. The half takes the sign
/// of the value, since a branch on random signs would be mispredicted. So -0.0 gets -0.5 instead of
/// 0.5; both truncate to 0.
inline int_pt_t round_to_device(Pair v) {
  using Bits = std::int64_t __attribute__((vector_size(16)));
  using Ints = std::int32_t __attribute__((vector_size(8)));
  const Bits sign = reinterpret_cast<Bits>(v) & INT64_MIN;
  const Pair half = reinterpret_cast<Pair>(sign | reinterpret_cast<Bits>(Pair{0.5, 0.5}));
  const Pair sum = v + half;  // has the sign of `v`
  const Pair magnitude = reinterpret_cast<Pair>(reinterpret_cast<Bits>(sum) ^ sign);
  const Pair fitting = magnitude < 0x1p31 ? sum : Pair{-0x1p31, -0x1p31};
  const Ints rounded = __builtin_convertvector(fitting, Ints);
  return {rounded[0], rounded[1]};
}

inline int_pt_t round_to_device(real_pt_t p) { return round_to_device(Pair{p.x, p.y}); }

}  // namespace zelvan
