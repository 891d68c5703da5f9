/// The library's one rule from real to device integer.
#pragma once

#include <zelvan/transforms/records.h>

#include <climits>
#include <cmath>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace zelvan {

/// The whole part; INT_MIN if it does not fit 32 bits, or for what is not a number.
inline int truncate_to_device(double t) {
#if defined(__SSE2__)
  return _mm_cvttsd_si32(_mm_set_sd(t));  // the instruction's own answer to what does not fit
#else
  // The language leaves the conversion of anything beyond the bounds undefined.
  const bool fits = t > -2147483649.0 && t < 2147483648.0;  // false for NaN as well
  return fits ? static_cast<int>(t) : INT_MIN;
#endif
}

/// Rounds to whole device units, halves away from zero; INT_MIN if that does not fit.
///
/// The half is added in double precision, so the number just below 0.5 gives 1. Callers rely
/// on that, which is why no rounding function of the standard library stands here. Copying the
/// sign spares a branch that signs in disorder would defeat; -0.0 then gets -0.5 for 0.5, and
/// both truncate to 0.
inline int round_to_device(double v) { return truncate_to_device(v + std::copysign(0.5, v)); }

/// Both coordinates of a point, where the processor can at once.
inline int_pt_t round_to_device(real_pt_t p) {
#if defined(__SSE2__)
  const __m128d v = _mm_setr_pd(p.x, p.y);
  const __m128d half = _mm_or_pd(_mm_and_pd(v, _mm_set1_pd(-0.0)), _mm_set1_pd(0.5));
  int_pt_t rounded;
  _mm_storel_epi64(reinterpret_cast<__m128i*>(&rounded), _mm_cvttpd_epi32(_mm_add_pd(v, half)));
  return rounded;
#else
  return {round_to_device(p.x), round_to_device(p.y)};
#endif
}

/// The rounded point times 8 in 32 bits, high bits being lost.
inline int_pt_t round_to_device_times_eight(real_pt_t p) {
  const auto shift = [](int v) { return static_cast<int>(static_cast<unsigned>(v) << 3); };
  const int_pt_t r = round_to_device(p);
  return {shift(r.x), shift(r.y)};
}

/// The low 16 bits of the rounded point's coordinates.
inline short_pt_t round_to_device_short(real_pt_t p) {
  const int_pt_t r = round_to_device(p);
  return {static_cast<short>(r.x), static_cast<short>(r.y)};
}

}  // namespace zelvan
