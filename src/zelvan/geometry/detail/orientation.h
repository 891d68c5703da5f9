/// On which side of a line a point lies, decided exactly.
#pragma once

#include <zelvan/transforms/records.h>

#include <cmath>

namespace zelvan {

/// A value as `fraction` times 2 to the power of `exponent`: it may lie beyond all doubles.
struct WideNumber {
  double fraction;
  int exponent;
};

/// Twice the signed area of the triangle `a`, `b`, `c`, positive if it runs counter-clockwise:
/// its sign is exact, its magnitude within rounding. Takes a fraction of a microsecond.
/// Requires: finite coordinates.
WideNumber exact_orientation(const real_pt_t& a, const real_pt_t& b, const real_pt_t& c);

/// The difference of two products of differences has the right sign when it is farther from
/// zero than this; infinite or NaN where something overflowed. The bound is that of
/// J. R. Shewchuk, "Adaptive precision floating-point arithmetic and fast robust geometric
/// predicates", Discrete & Computational Geometry 18 (1997), and a term for what underflows.
inline double orientation_noise(double product, double other_product) {
  constexpr double relative = 0x1.8000000000004p-52;  // (3 + 16 e) e, where e is 2^-53
  return relative * (std::fabs(product) + std::fabs(other_product)) + 0x1p-1000;
}

inline int sign_of(double v) { return (v > 0.0) - (v < 0.0); }

/// The sign of that area: -1, 0 or 1. It turns with each swap of two points.
inline int orientation_sign(const real_pt_t& a, const real_pt_t& b, const real_pt_t& c) {
  const double left = (a.x - c.x) * (b.y - c.y);
  const double right = (a.y - c.y) * (b.x - c.x);
  const double area = left - right;
  if (std::fabs(area) > orientation_noise(left, right)) return sign_of(area);
  return sign_of(exact_orientation(a, b, c).fraction);
}

}  // namespace zelvan
