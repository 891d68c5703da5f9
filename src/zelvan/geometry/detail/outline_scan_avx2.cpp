// A vector holds two points as x, y, x, y, and so do the bounds. Comparisons with a NaN have the
// same results as in the plain forms.

#include <zelvan/geometry/detail/outline_scan.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>

#include <immintrin.h>

namespace zelvan {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

struct Bounds {
  __m256d low, high;

  ZELVAN_AVX2 explicit Bounds(const ClipBox& box)
      : low{box.left, box.bottom, box.left, box.bottom},
        high{box.right, box.top, box.right, box.top} {}
};

// The result of a comparison: in each lane all bits are set if it is true, else none.
using Mask = decltype(__m256d() < __m256d());

ZELVAN_AVX2 inline __m256d load(const real_pt_t* two_points) {
  return _mm256_loadu_pd(&two_points->x);
}

// Loads one point into both halves.
ZELVAN_AVX2 inline __m256d load_one(const real_pt_t* point) {
  return _mm256_broadcast_pd(reinterpret_cast<const __m128d*>(point));
}

// Returns a bit mask: bit 0 for the x of the first point, bit 1 for its y, bits 2 and 3 for the
// second.
ZELVAN_AVX2 inline unsigned lanes(Mask mask) {
  return static_cast<unsigned>(_mm256_movemask_pd(reinterpret_cast<__m256d>(mask)));
}

constexpr unsigned all_lanes = 0b1111;

// Returns true if the lanes include the x of both points or the y of both.
inline bool of_both_points(unsigned lanes) { return (lanes & lanes >> 2 & 0b0011) != 0; }

ZELVAN_AVX2 inline Mask between(__m256d v, const Bounds& bounds) {
  return (v > bounds.low) & (v < bounds.high);
}

// Returns how many leading points pass a test. `failing(v)` returns the lanes that fail it.
template <class Test>
ZELVAN_AVX2 inline int count_leading(const real_pt_t* points, int n, const Test& failing) {
  int i = 0;
#pragma GCC unroll 4  // otherwise polygons inside take a sixth longer
  for (; i + 1 < n; i += 2) {
    const unsigned fails = failing(load(points + i));
    if (fails != 0) return i + ((fails & 0b0011) == 0 ? 1 : 0);
  }
  if (i < n && failing(load_one(points + i)) == 0) ++i;
  return i;
}

// A bit for each coordinate of 32 points, in the order x, y, x, y, as in `lanes`.
using LaneSet = std::uint64_t;

// Moves the even bits together, so that bit 2 i becomes bit i. Each step halves the number of gaps.
inline std::uint32_t even_bits(LaneSet lanes) {
  LaneSet bits = lanes & 0x5555555555555555;
  bits = (bits | bits >> 1) & 0x3333333333333333;
  bits = (bits | bits >> 2) & 0x0f0f0f0f0f0f0f0f;
  bits = (bits | bits >> 4) & 0x00ff00ff00ff00ff;
  bits = (bits | bits >> 8) & 0x0000ffff0000ffff;
  return static_cast<std::uint32_t>(bits | bits >> 16);
}

// Iterates over closing flags. The address of the next eight flags does not depend on the flags
// before them, so the processor can work on several outlines at once.
class ClosingFlags {
 public:
  ClosingFlags(const int* edge_flags, int from, int end)
      : edge_flags_(edge_flags), end_(end), block_(std::int64_t{from} - 8) {}

  // Returns the index of the next closing flag, or the end.
  ZELVAN_AVX2 int next() {
    while (closing_ == 0) {
      block_ += 8;
      if (block_ >= end_) return end_;
      closing_ = end_ - block_ >= 8 ? closing_of_eight() : closing_of_rest();
    }
    const int found = static_cast<int>(block_) + std::countr_zero(closing_);
    closing_ &= closing_ - 1;
    return found;
  }

 private:
  ZELVAN_AVX2 unsigned closing_of_eight() const {
    // The two closing flags, 2 and 3, are the numbers that become 2 when the lowest bit is cleared.
    const __m256i closing = _mm256_set1_epi32(drw_edge_close_invisible);
    const __m256i all_but_last_bit = _mm256_set1_epi32(~1);
    const auto* flags = reinterpret_cast<const __m256i*>(edge_flags_ + block_);
    const __m256i closes =
        _mm256_cmpeq_epi32(_mm256_and_si256(_mm256_loadu_si256(flags), all_but_last_bit), closing);
    return static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(closes)));
  }
  unsigned closing_of_rest() const {
    unsigned closing = 0;
    for (std::int64_t i = block_; i < end_; ++i) {
      closing |= unsigned{is_closing(edge_flags_[i])} << (i - block_);
    }
    return closing;
  }

  const int* const edge_flags_;
  const int end_;
  std::int64_t block_;    // index of the block's first flag; may exceed an int after the end
  unsigned closing_ = 0;  // bit k: flag k of the block closes and was not yet returned
};

// The extent of an outline in x and y; each half of a vector covers about every other point. NaN
// coordinates are left out.
struct Extent {
  __m256d least, largest;
  Mask has_nan{};  // set where some coordinate is NaN

  ZELVAN_AVX2 Extent() : least(_mm256_set1_pd(infinity)), largest(_mm256_set1_pd(-infinity)) {}
  ZELVAN_AVX2 void add(__m256d v) {
    least = _mm256_min_pd(v, least);  // min and max return the second operand for a NaN
    largest = _mm256_max_pd(v, largest);
    has_nan |= v != v;
  }
  ZELVAN_AVX2 void add(const Extent& other) {
    least = _mm256_min_pd(other.least, least);
    largest = _mm256_max_pd(other.largest, largest);
    has_nan |= other.has_nan;
  }
  ZELVAN_AVX2 bool is_beyond_a_side(const Bounds& bounds) const {
    const unsigned certain = ~lanes(has_nan);
    return of_both_points(certain & lanes(largest < bounds.low)) ||
           of_both_points(certain & lanes(least > bounds.high));
  }
  ZELVAN_AVX2 bool reaches_within(const Bounds& bounds) const {
    return !of_both_points(lanes(~(largest > bounds.low))) &&
           !of_both_points(lanes(~(least < bounds.high)));
  }
  ZELVAN_AVX2 OutlineKind kind(const Bounds& bounds) const {
    const Mask has_infinity = (least == -infinity) | (largest == infinity);
    if (lanes(has_nan | has_infinity) != 0) return OutlineKind::not_finite;
    const Mask is_inside = between(least, bounds) & between(largest, bounds);
    return lanes(is_inside) == all_lanes ? OutlineKind::inside : OutlineKind::mixed;
  }
};

// Returns the extent of at least two points.
ZELVAN_AVX2 inline Extent extent_of(const real_pt_t* points, const real_pt_t* end) {
  Extent extent, other;  // two independent chains, so that neither waits for the other
  for (; end - points >= 4; points += 4) {
    extent.add(load(points));
    other.add(load(points + 2));
  }
  if (end - points >= 2) extent.add(load(points));
  if ((end - points) % 2 != 0) other.add(load(end - 2));  // the last point, and again its neighbour
  extent.add(other);
  return extent;
}

// Returns the next outline of at least two vertices for which `is_wanted` returns true.
template <class Test>
ZELVAN_AVX2 Outline find_outline(const drw_pset_t& set, int from, const Test& is_wanted) {
  ClosingFlags closing_flags(set.edge_flags, from, set.n_points);
  for (int first = from;;) {
    const int last = closing_flags.next();
    if (last >= set.n_points) return {};
    const int count = last - first + 1;
    if (count > 1 && is_wanted(set.points + first, count)) {
      return {set.points + first, set.edge_flags + first, count};
    }
    first = last + 1;
  }
}

}  // namespace

ZELVAN_AVX2 Outline find_near_outline(Avx2, const drw_pset_t& set, int from, const ClipBox& box) {
  const Bounds bounds(box);
  return find_outline(set, from, [&](const real_pt_t* points, int count) ZELVAN_AVX2 {
    const __m256d two =
        _mm256_insertf128_pd(load_one(points), _mm_loadu_pd(&points[count / 2].x), 1);
    const bool may_be_beyond =
        of_both_points(lanes(two < bounds.low)) || of_both_points(lanes(two > bounds.high));
    return !may_be_beyond || !extent_of(points, points + count).is_beyond_a_side(bounds);
  });
}

ZELVAN_AVX2 Outline find_outline_within(Avx2, const drw_pset_t& set, int from, const ClipBox& box,
                                        OutlineKind* kind) {
  const Bounds bounds(box);
  return find_outline(set, from, [&](const real_pt_t* points, int count) ZELVAN_AVX2 {
    const Extent extent = extent_of(points, points + count);
    if (!extent.reaches_within(bounds)) return false;
    *kind = extent.kind(bounds);
    return true;
  });
}

ZELVAN_AVX2 int count_inside(Avx2, const real_pt_t* points, int n, const ClipBox& box) {
  const Bounds bounds(box);
  return count_leading(
      points, n, [&](__m256d v) ZELVAN_AVX2 { return lanes(between(v, bounds)) ^ all_lanes; });
}

ZELVAN_AVX2 int count_beyond(Avx2, const real_pt_t* points, int n, const ClipBox& box, int side) {
  const Bounds bounds(box);
  const unsigned wanted = side == left_side || side == right_side ? 0b0101 : 0b1010;
  const bool is_low = side == left_side || side == bottom_side;
  return count_leading(points, n, [&](__m256d v) ZELVAN_AVX2 {
    return wanted & ~lanes(is_low ? v < bounds.low : v > bounds.high);
  });
}

ZELVAN_AVX2 bool has_repeats(Avx2, const real_pt_t* points, int n) {
  if (n < 3) return has_repeats(Plain{}, points, n);
  const auto compare = [=](int i) ZELVAN_AVX2 {  // points i and i + 1 with those before
    const Mask same = load(points + i - 1) == load(points + i);
    return same & __builtin_shufflevector(same, same, 1, 0, 3, 2);
  };
  Mask repeats = compare(n - 2);
  for (int i = 1; i < n - 2; i += 2) repeats |= compare(i);
  return lanes(repeats) != 0;
}

ZELVAN_AVX2 EdgeSet near_edges(Avx2, const real_pt_t* points, int n, const ClipBox& outer,
                               const ClipBox& inner) {
  const Bounds out(outer), in(inner);
  LaneSet below = 0, above = 0, not_inside = 0;  // each step shifts two points in at the top
  const auto look_at = [&](__m256d v) ZELVAN_AVX2 {
    below = below >> 4 | LaneSet{lanes(v < out.low)} << 60;
    above = above >> 4 | LaneSet{lanes(v > out.high)} << 60;
    not_inside = not_inside >> 4 | LaneSet{lanes(between(v, in)) ^ all_lanes} << 60;
  };
  int i = 0;
  for (; i + 1 < n; i += 2) look_at(load(points + i));
  if (i < n) {
    look_at(load_one(points + i));
    i += 2;
  }
  const int unused = 64 - 2 * i;
  // An edge is left out if both ends are outside on the same side, or both are inside.
  const LaneSet apart = (below & below >> 2) | (above & above >> 2);
  const LaneSet reaches_out = not_inside | not_inside >> 2;
  // Merge y into x: bit 2 i stands for the edge from point i.
  const LaneSet near = (reaches_out | reaches_out >> 1) & ~(apart | apart >> 1);
  const EdgeSet all = (EdgeSet{1} << (n - 1)) - 1;
  return even_bits(near >> unused) & all;
}

}  // namespace zelvan
