/// From a real number to an `int`.
#pragma once

#include <climits>
#include <cmath>

namespace zelvan {

/// Cuts the fraction off; returns INT_MIN if that does not fit, or for what is not a number.
inline int truncate_to_int(double v) {
  // False for NaN as well. From -2^31 down to -2^31 - 1 the number fits, and INT_MIN is right.
  const bool is_smaller = std::fabs(v) < 0x1p31;
  return is_smaller ? static_cast<int>(v) : INT_MIN;
}

}  // namespace zelvan
