/// Random values, many of them edge cases. One seed produces the same values on every machine.
///
/// Tests put the seed into a SCOPED_TRACE, so that a failure names it.
#pragma once

#include <zelvan/transforms/mtx2d.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace support {

class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  /// Returns a whole number from 0 to `count` - 1. The standard's distributions differ by library.
  int below(int count) { return static_cast<int>(engine_() % static_cast<unsigned>(count)); }

  /// Returns a multiple of 2^-53, from 0 up to but not including 1.
  double unit() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }

  double between(double low, double high) { return low + (high - low) * unit(); }

  /// Returns a plain number most of the time; often a half or its neighbour, a limit of an integer
  /// type, a zero of either sign or a denormal; sometimes an infinity, a NaN or any bits.
  double hard_double() {
    static constexpr double edges[] = {
        0.0, 0.5, 0x1.fffffffffffffp-2, 1.0, 1.5, 2.5, 32767.5, 32768.0, 65535.5, 1e9 + 0.5,
        // Around the largest int, before and after rounding.
        2147483647.0, 2147483647.4999998, 2147483647.5, 2147483648.0, 2147483648.5, 2147483649.0,
        4294967296.0, 0x1p52, 0x1p53, 1e300, 0x1p-1022, 0x1p-1074, INFINITY, NAN};
    const double sign = below(2) == 0 ? 1.0 : -1.0;
    const int kind = below(8);
    if (kind == 0) return sign * edges[below(static_cast<int>(std::size(edges)))];
    if (kind == 1) return sign * (below(2001) + 0.5);
    if (kind > 2) return sign * between(0.0, 5000.0);
    return below(16) == 0 ? __builtin_bit_cast(double, engine_()) : sign * below(100);
  }

  std::vector<real_pt_t> hard_points(int n) {
    std::vector<real_pt_t> points(static_cast<std::size_t>(n));
    for (real_pt_t& p : points) p = {hard_double(), hard_double()};
    return points;
  }

  /// Returns a matrix of type `type` with some zeros of both signs. Elements that the type says are
  /// zero may not be: the type decides, not the elements.
  Mtx2D matrix(int type) {
    Mtx2D m;
    for (double* element : {&m.m11, &m.m12, &m.m21, &m.m22, &m.tx, &m.ty}) {
      const int kind = below(8);
      *element = kind == 0 ? hard_double() : kind < 3 ? 0.0 * (kind - 1.5) : between(-3.0, 3.0);
    }
    m.mirror = below(4);
    m.type = type;
    return m;
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace support
