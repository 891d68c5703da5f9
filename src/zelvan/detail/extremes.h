/// The larger and the smaller of two values, where zeros of opposite sign and NaN are interface.
///
/// Both return the second value if the two are equal or one is not a number. std::max and std::min
/// would return the first.
#pragma once

#include <zelvan/detail/pair.h>

namespace zelvan {

/// Returns the larger of the two, else the second. In vectors, to stay free of branches: compilers
/// merge a scalar maximum and minimum of one pair into a branch that the processor mispredicts.
inline double larger_or_second(double a, double b) {
  const Pair first = {a};
  const Pair second = {b};
  return (first > second ? first : second)[0];
}

/// Returns the smaller of the two, else the second.
inline double smaller_or_second(double a, double b) { return a < b ? a : b; }

}  // namespace zelvan
