/// The library's one rule from real to device integer.
#pragma once

#include <zelvan/transforms/records.h>

#include <climits>
#include <cmath>

namespace zelvan {

/// Rounds to whole device units, halves away from zero; INT_MIN if that does not fit 32 bits, and
/// for what is not a number.
///
/// The half is added in double precision, so the number just below 0.5 gives 1. Callers rely
/// on that, which is why no rounding function of the standard library stands here. Copying the
/// sign spares a branch that signs in disorder would defeat; -0.0 then gets -0.5 for 0.5, and
/// both truncate to 0.
inline int round_to_device(double v) {
  const double t = v + std::copysign(0.5, v);
  const bool fits =
      std::fabs(t) < 0x1p31;  // false for NaN; down to -2^31 - 1 INT_MIN is right anyway
  return fits ? static_cast<int>(t) : INT_MIN;
}

inline int_pt_t round_to_device(real_pt_t p) {
  return {round_to_device(p.x), round_to_device(p.y)};
}

}  // namespace zelvan
