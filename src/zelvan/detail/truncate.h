/// Conversion of a real number to an `int`.
#pragma once

#include <climits>
#include <cmath>

namespace zelvan {

/// Truncates towards zero; returns INT_MIN if the result doesn't fit or the value is a NaN.
inline int truncate_to_int(double v) {
  // False for a NaN as well. Also false from -2^31 down to just above -2^31 - 1, but there the
  // truncated value is INT_MIN, too.
  const bool is_smaller = std::fabs(v) < 0x1p31;
  return is_smaller ? static_cast<int>(v) : INT_MIN;
}

}  // namespace zelvan
