/// The bits of numbers and records, for comparisons in which -0.0 differs from 0.0.
#pragma once

#include <zelvan/transforms/mtx2d.h>
#include <zelvan/transforms/records.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace support {

/// The bits of `v`. All NaN are one: which operand's payload survives an addition of two NaN
/// is the compiler's choice, and no result of the library depends on it.
inline std::uint64_t bits(double v) {
  return std::isnan(v) ? 0x7ff8000000000000 : __builtin_bit_cast(std::uint64_t, v);
}

inline std::pair<std::uint64_t, std::uint64_t> bits(const real_pt_t& p) {
  return {bits(p.x), bits(p.y)};
}

inline std::pair<int, int> bits(const int_pt_t& p) { return {p.x, p.y}; }
inline std::pair<int, int> bits(const short_pt_t& p) { return {p.x, p.y}; }

/// All eight fields.
inline std::array<std::uint64_t, 8> bits(const Mtx2D& m) {
  const auto whole = [](int v) { return static_cast<std::uint64_t>(v); };
  return {bits(m.m11), bits(m.m12), bits(m.m21),     bits(m.m22),
          bits(m.tx),  bits(m.ty),  whole(m.mirror), whole(m.type)};
}

}  // namespace support
