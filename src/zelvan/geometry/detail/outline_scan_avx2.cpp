// A vector holds two points, x and y by turns, and so do the bounds beside it. Every comparison
// with a NaN fails, as in the plain forms.

#include <zelvan/geometry/detail/outline_scan.h>

#if defined(__x86_64__)

#include <bit>

#include <immintrin.h>

#define ZELVAN_AVX2 __attribute__((target("avx2")))

namespace {

using zelvan::ClipBox;

struct Bounds {
  __m256d low, high;

  ZELVAN_AVX2 explicit Bounds(const ClipBox& box)
      : low(_mm256_setr_pd(box.left, box.bottom, box.left, box.bottom)),
        high(_mm256_setr_pd(box.right, box.top, box.right, box.top)) {}
};

ZELVAN_AVX2 inline __m256d load(const real_pt_t* two_points) {
  return _mm256_loadu_pd(&two_points->x);
}

// Bit 0 for the x of the first point, bit 1 for its y, bits 2 and 3 for the second.
ZELVAN_AVX2 inline unsigned lanes(__m256d mask) {
  return static_cast<unsigned>(_mm256_movemask_pd(mask));
}

ZELVAN_AVX2 inline __m256d between(__m256d v, const Bounds& bounds) {
  return _mm256_and_pd(_mm256_cmp_pd(v, bounds.low, _CMP_GT_OQ),
                       _mm256_cmp_pd(v, bounds.high, _CMP_LT_OQ));
}

// In a lane each of x and y: strictly beyond the one side, of two opposite ones, that is meant.
struct Beyond {
  __m256d bound, sign;  // with the sign turned, above becomes below
  unsigned wanted;

  ZELVAN_AVX2 Beyond(const ClipBox& box, int side)
      : wanted(side == zelvan::left_side || side == zelvan::right_side ? 0b0101 : 0b1010) {
    const double bounds[] = {box.bottom, box.right, box.top, box.left};
    const bool is_high = side == zelvan::right_side || side == zelvan::top_side;
    sign = _mm256_set1_pd(is_high ? -0.0 : 0.0);
    bound = _mm256_xor_pd(_mm256_set1_pd(bounds[side]), sign);
  }
  ZELVAN_AVX2 unsigned missing(__m256d v) const {
    return wanted & ~lanes(_mm256_cmp_pd(_mm256_xor_pd(v, sign), bound, _CMP_LT_OQ));
  }
};

struct Inside {
  Bounds bounds;

  ZELVAN_AVX2 explicit Inside(const ClipBox& box) : bounds(box) {}
  ZELVAN_AVX2 unsigned missing(__m256d v) const { return 0b1111 & ~lanes(between(v, bounds)); }
};

// How many of the points, up to an even number of them, have no lane missing.
template <class Test>
ZELVAN_AVX2 inline int count_pairs(const real_pt_t* points, int n, const Test& test) {
  for (int i = 0; i + 1 < n; i += 2) {
    const unsigned missing = test.missing(load(points + i));
    if (missing != 0) return i + ((missing & 0b0011) == 0 ? 1 : 0);
  }
  return n & ~1;
}

}  // namespace

namespace zelvan::avx2 {

ZELVAN_AVX2 OutlineExtent extent_of(const real_pt_t* points, int n, const ClipBox& box) {
  const Bounds bounds(box);
  const __m256d all = _mm256_castsi256_pd(_mm256_set1_epi64x(-1));
  __m256d inside = all, low = all, high = all, finite = all;
  int i = 0;
  for (; i + 1 < n; i += 2) {
    const __m256d v = load(points + i);
    inside = _mm256_and_pd(inside, between(v, bounds));
    low = _mm256_and_pd(low, _mm256_cmp_pd(v, bounds.low, _CMP_LE_OQ));
    high = _mm256_and_pd(high, _mm256_cmp_pd(v, bounds.high, _CMP_GE_OQ));
    const __m256d nothing = _mm256_sub_pd(v, v);  // NaN where it isn't finite
    finite = _mm256_and_pd(finite, _mm256_cmp_pd(nothing, nothing, _CMP_ORD_Q));
  }
  OutlineExtent rest = {true, true, true};
  unsigned low_sides = lanes(low), high_sides = lanes(high);
  if (i < n) {
    const real_pt_t& p = points[i];
    rest = plain::extent_of(&p, 1, box);
    low_sides &= (p.x <= box.left ? 0b0101u : 0u) | (p.y <= box.bottom ? 0b1010u : 0u);
    high_sides &= (p.x >= box.right ? 0b0101u : 0u) | (p.y >= box.top ? 0b1010u : 0u);
  }
  const unsigned apart = (low_sides & low_sides >> 2) | (high_sides & high_sides >> 2);
  return {lanes(inside) == 0b1111 && rest.is_inside, (apart & 0b0011) != 0,
          lanes(finite) == 0b1111 && rest.is_finite};
}

ZELVAN_AVX2 int count_inside(const real_pt_t* points, int n, const ClipBox& box) {
  const int found = count_pairs(points, n, Inside(box));
  return found == n - 1 ? found + plain::count_inside(points + found, 1, box) : found;
}

ZELVAN_AVX2 int count_beyond(const real_pt_t* points, int n, const ClipBox& box, int side) {
  const int found = count_pairs(points, n, Beyond(box, side));
  return found == n - 1 ? found + plain::count_beyond(points + found, 1, box, side) : found;
}

// The closing flags are the two numbers that are 2 but for their last bit.
ZELVAN_AVX2 int count_open(const int* edge_flags, int n) {
  const __m256i closing = _mm256_set1_epi32(drw_edge_close_invisible);
  const __m256i all_but_last_bit = _mm256_set1_epi32(~1);
  int i = 0;
  for (; i + 8 <= n; i += 8) {
    const __m256i flags = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(edge_flags + i));
    const __m256i closes = _mm256_cmpeq_epi32(_mm256_and_si256(flags, all_but_last_bit), closing);
    const int mask = _mm256_movemask_ps(_mm256_castsi256_ps(closes));
    if (mask != 0) return i + std::countr_zero(static_cast<unsigned>(mask));
  }
  return i + plain::count_open(edge_flags + i, n - i);
}

}  // namespace zelvan::avx2

#endif
