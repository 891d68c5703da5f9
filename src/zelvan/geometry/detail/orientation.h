/// Exact decisions on which side of a line a point lies.
#pragma once

#include <zelvan/transforms/records.h>

#include <cmath>

namespace zelvan {

/// A value `fraction` * 2^`exponent`, which may be outside the range of a double.
struct WideNumber {
  double fraction;
  int exponent;
};

/// Returns twice the signed area of the triangle `a`, `b`, `c`, positive if it runs
/// counter-clockwise. The sign is exact, the magnitude correct within rounding. Takes a fraction of
/// a microsecond. Requires: finite coordinates.
WideNumber exact_orientation(const real_pt_t& a, const real_pt_t& b, const real_pt_t& c);

/// Returns an error bound for the computed area, a difference of two products of differences: if
/// the area is larger in magnitude, its sign is right. Infinite or NaN on overflow.
///
/// The bound is that of J. R. Shewchuk, "Adaptive precision floating-point arithmetic and fast
/// robust geometric predicates", Discrete & Computational Geometry 18 (1997), plus a term for
/// underflow.
inline double orientation_error_bound(double product, double other_product) {
  constexpr double relative = 0x1.8000000000004p-52;  // (3 + 16 e) e, where e is 2^-53
  return relative * (std::fabs(product) + std::fabs(other_product)) + 0x1p-1000;
}

inline int sign_of(double v) { return (v > 0.0) - (v < 0.0); }

/// Returns the sign of the area of the triangle `a`, `b`, `c`: -1, 0 or 1. Each swap of two points
/// reverses it.
inline int orientation_sign(const real_pt_t& a, const real_pt_t& b, const real_pt_t& c) {
  const double left = (a.x - c.x) * (b.y - c.y);
  const double right = (a.y - c.y) * (b.x - c.x);
  const double area = left - right;
  if (std::fabs(area) > orientation_error_bound(left, right)) return sign_of(area);
  return sign_of(exact_orientation(a, b, c).fraction);
}

}  // namespace zelvan
