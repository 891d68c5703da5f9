/// From a real channel to an integer one.
#pragma once

#include <climits>

namespace zelvan {

/// Cuts the fraction off; the smallest `int` for what doesn't fit, and for what is no number.
inline int truncate_to_int(double v) {
  const bool fits = v > -2147483649.0 && v < 2147483648.0;  // false for NaN as well
  return fits ? static_cast<int>(v) : INT_MIN;
}

/// A channel of 0 to 1 on a scale from 0 to `scale`. Halves go up.
inline int quantise(double channel, int scale) { return truncate_to_int(channel * scale + 0.5); }

}  // namespace zelvan
