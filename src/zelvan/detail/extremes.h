/// The larger and the smaller of two values, with a fixed result for signed zeros and NaN.
///
/// Both functions return their second argument if the two are equal or one is not a number.
/// std::max and std::min would return the first.
#pragma once

#include <zelvan/detail/pair.h>

namespace zelvan {

/// Returns the larger of the two, or `b` if neither is larger. Branch-free maximum: compilers merge
/// a scalar maximum and minimum of one pair into a branch that the processor mispredicts.
inline double larger_or_second(double a, double b) {
  const Pair first = {a};
  const Pair second = {b};
  return (first > second ? first : second)[0];
}

/// Returns the smaller of the two, or `b` if neither is smaller.
inline double smaller_or_second(double a, double b) { return a < b ? a : b; }

}  // namespace zelvan
