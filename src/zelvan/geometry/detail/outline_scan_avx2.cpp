// A vector holds two points, x and y by turns, and so do the bounds beside it. Every comparison
// with a NaN has the outcome that it has in the plain forms.

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

// Twice the same.
ZELVAN_AVX2 inline __m256d load_one(const real_pt_t* point) {
  return _mm256_broadcast_pd(reinterpret_cast<const __m128d*>(point));
}

// Bit 0 for the x of the first point, bit 1 for its y, bits 2 and 3 for the second.
ZELVAN_AVX2 inline unsigned lanes(__m256d mask) {
  return static_cast<unsigned>(_mm256_movemask_pd(mask));
}

ZELVAN_AVX2 inline __m256d not_between(__m256d v, const Bounds& bounds) {
  return _mm256_or_pd(_mm256_cmp_pd(v, bounds.low, _CMP_NGT_UQ),
                      _mm256_cmp_pd(v, bounds.high, _CMP_NLT_UQ));
}

// In a lane each of x and y: strictly beyond the one side, of two opposite ones, that is meant.
struct Beyond {
  __m256d bound, sign;  // with the sign turned, above becomes below
  unsigned wanted;

  ZELVAN_AVX2 Beyond(const ClipBox& box, int side)
      : wanted(side == zelvan::left_side || side == zelvan::right_side ? 0b0101 : 0b1010) {
    const double bounds[] = {box.left, box.bottom, box.right, box.top};
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
  ZELVAN_AVX2 unsigned missing(__m256d v) const { return lanes(not_between(v, bounds)); }
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

// All edges between so many points.
inline zelvan::EdgeSet edges_between(int n) {
  return 0x5555555555555555 & ((zelvan::EdgeSet{1} << 2 * (n - 1)) - 1);
}

// What is seen of an outline, pair by pair.
struct Seen {
  __m256d low, high;   // set where none is strictly within that bound
  __m256d some;        // set where some are not, of either bound
  __m256d not_finite;  // +0 where all are finite

  ZELVAN_AVX2 Seen()
      : low(_mm256_castsi256_pd(_mm256_set1_epi64x(-1))),
        high(low),
        some(_mm256_setzero_pd()),
        not_finite(some) {}
  ZELVAN_AVX2 void add(__m256d v, const Bounds& bounds) {
    const __m256d is_low = _mm256_cmp_pd(v, bounds.low, _CMP_NGT_UQ);
    const __m256d is_high = _mm256_cmp_pd(v, bounds.high, _CMP_NLT_UQ);
    low = _mm256_and_pd(low, is_low);
    high = _mm256_and_pd(high, is_high);
    some = _mm256_or_pd(some, _mm256_or_pd(is_low, is_high));
    not_finite = _mm256_or_pd(not_finite, _mm256_sub_pd(v, v));
  }
};

}  // namespace

namespace zelvan::avx2 {

ZELVAN_AVX2 int find_closing(const int* edge_flags, int from, int end) {
  // The closing flags are the two numbers that are 2 but for their last bit.
  const __m256i closing = _mm256_set1_epi32(drw_edge_close_invisible);
  const __m256i all_but_last_bit = _mm256_set1_epi32(~1);
  int i = from;
  for (; end - i >= 8; i += 8) {
    const __m256i flags = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(edge_flags + i));
    const __m256i closes = _mm256_cmpeq_epi32(_mm256_and_si256(flags, all_but_last_bit), closing);
    const int mask = _mm256_movemask_ps(_mm256_castsi256_ps(closes));
    if (mask != 0) return i + std::countr_zero(static_cast<unsigned>(mask));
  }
  return plain::find_closing(edge_flags, i, end);
}

ZELVAN_AVX2 FoundOutline find_outline(const drw_pset_t& set, int from, const ClipBox& box) {
  const Bounds bounds(box);
  for (int first = from, last; first < set.n_points; first = last + 1) {
    last = find_closing(set.edge_flags, first, set.n_points);
    if (last == set.n_points) return {};
    Seen seen;
    int i = first;
    for (; i < last; i += 2) seen.add(load(set.points + i), bounds);
    if (i == last) seen.add(load_one(set.points + i), bounds);
    const unsigned low = lanes(seen.low), high = lanes(seen.high);
    const bool is_apart = ((low & low >> 2 & 0b0011) | (high & high >> 2 & 0b0011)) != 0;
    if (is_apart || last == first) continue;
    const auto has_nan = _mm256_cmp_pd(seen.not_finite, seen.not_finite, _CMP_UNORD_Q);
    return {first, last - first + 1,
            lanes(has_nan) != 0     ? OutlineKind::not_finite
            : lanes(seen.some) == 0 ? OutlineKind::inside
                                    : OutlineKind::mixed};
  }
  return {};
}

ZELVAN_AVX2 int count_inside(const real_pt_t* points, int n, const ClipBox& box) {
  const int found = count_pairs(points, n, Inside(box));
  return found == n - 1 ? found + plain::count_inside(points + found, 1, box) : found;
}

ZELVAN_AVX2 int count_beyond(const real_pt_t* points, int n, const ClipBox& box, int side) {
  const int found = count_pairs(points, n, Beyond(box, side));
  return found == n - 1 ? found + plain::count_beyond(points + found, 1, box, side) : found;
}

ZELVAN_AVX2 bool has_repeats(const real_pt_t* points, int n) {
  if (n < 3) return plain::has_repeats(points, n);
  const auto compare = [=](int i) ZELVAN_AVX2 {  // two points with those before, both coordinates
    const __m256d same = _mm256_cmp_pd(load(points + i - 1), load(points + i), _CMP_EQ_OQ);
    return _mm256_and_pd(same, _mm256_permute_pd(same, 0b0101));
  };
  __m256d repeats = compare(n - 2);
  for (int i = 1; i < n - 2; i += 2) repeats = _mm256_or_pd(repeats, compare(i));
  return lanes(repeats) != 0;
}

ZELVAN_AVX2 EdgeSet near_edges(const real_pt_t* points, int n, const ClipBox& outer,
                               const ClipBox& inner) {
  const Bounds out(outer), in(inner);
  // Two bits a point, as in `lanes`; each two points come in at the top.
  EdgeSet below = 0, above = 0, not_inside = 0;
  const auto look_at = [&](__m256d v) ZELVAN_AVX2 {
    below = below >> 4 | EdgeSet{lanes(_mm256_cmp_pd(v, out.low, _CMP_LT_OQ))} << 60;
    above = above >> 4 | EdgeSet{lanes(_mm256_cmp_pd(v, out.high, _CMP_GT_OQ))} << 60;
    not_inside = not_inside >> 4 | EdgeSet{lanes(not_between(v, in))} << 60;
  };
  int i = 0;
  for (; i + 1 < n; i += 2) look_at(load(points + i));
  if (i < n) look_at(load_one(points + i)), i += 2;
  const EdgeSet apart = (below & below >> 2) | (above & above >> 2);
  const EdgeSet near = not_inside | not_inside >> 2;
  const EdgeSet is_near = (near | near >> 1) & ~(apart | apart >> 1);
  return is_near >> (64 - 2 * i) & edges_between(n);
}

}  // namespace zelvan::avx2

#endif
