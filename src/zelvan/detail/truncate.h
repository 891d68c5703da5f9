/// Conversion of a real number to an `int`.
#pragma once

#include <climits>
#include <cmath>

namespace zelvan {

/// Truncates towards zero; returns INT_MIN if the result doesn't fit or the value is a NaN.
inline int truncate_to_int(double v) {
  // False for NaN as well. From -2^31 down to above -2^31 - 1 the result is INT_MIN, which is
  // right.
  const bool is_smaller = std::fabs(v) < 0x1p31;
  return is_smaller ? static_cast<int>(v) : INT_MIN;
}

}  // namespace zelvan
