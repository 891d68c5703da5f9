// Only an edge whose ends lie on different sides of the point's height can count. So vectors of
// vertices are compared with the height, where a NaN counts as above. The few edges that change
// sides are then tested one by one.

#include <zelvan/pick/detail/winding.h>

#include <bit>
#include <cstdint>

#include <immintrin.h>

namespace zelvan {
namespace {

constexpr unsigned int block = 16;

// Returns a bit for each of four points: set if `y` is at least the point's height.
ZELVAN_AVX2 inline std::uint32_t four_reached(const DblPt* points, double y) {
  const __m256d p01 = _mm256_loadu_pd(&points[0].x);
  const __m256d p23 = _mm256_loadu_pd(&points[2].x);
  const __m256d y0213 = _mm256_unpackhi_pd(p01, p23);
  const __m256d y0123 = _mm256_permute4x64_pd(y0213, 0b11011000);
  const __m256d mask = _mm256_cmp_pd(_mm256_set1_pd(y), y0123, _CMP_GE_OQ);
  return static_cast<std::uint32_t>(_mm256_movemask_pd(mask));
}

// Returns the sum over the edges that start at the points whose bit is set in `changing`.
ZELVAN_AVX2 inline int winding_of_changes(const DblPt* points, std::uint32_t changing,
                                          std::uint32_t reached, double x, double y) {
  int winding = 0;
  for (; changing != 0; changing &= changing - 1) {
    const int i = std::countr_zero(changing);
    winding += winding_of_crossing(points[i], points[i + 1], (reached >> i & 1) != 0, x, y);
  }
  return winding;
}

// Returns `winding` plus the sum over the edges between the points. Inline, since a call would cost
// a ring of 4 vertices a fifth of its time.
[[gnu::always_inline]] ZELVAN_AVX2 inline int add_chain(int winding, const DblPt* points,
                                                        unsigned int n, double x, double y) {
  for (; n > block; points += block, n -= block) {  // a full block reads `block + 1` points
    std::uint32_t reached = 0;
    for (unsigned int i = 0; i < block; i += 4) reached |= four_reached(points + i, y) << i;
    const std::uint32_t last_end = y >= points[block].y ? 1 : 0;
    const std::uint32_t changing = reached ^ (reached >> 1 | last_end << (block - 1));
    winding += winding_of_changes(points, changing, reached, x, y);
  }
  if (n < 4) return winding + winding_of_chain(Plain{}, points, n, x, y);
  // The last four points; the loop may set some of their bits once more.
  std::uint32_t reached = four_reached(points + n - 4, y) << (n - 4);
  for (unsigned int i = 0; i + 4 < n; i += 4) reached |= four_reached(points + i, y) << i;
  const std::uint32_t changing = (reached ^ reached >> 1) & ((1U << (n - 1)) - 1);
  return winding + winding_of_changes(points, changing, reached, x, y);
}

}  // namespace

ZELVAN_AVX2 int winding_of_chain(Avx2, const DblPt* points, unsigned int n, double x, double y) {
  return add_chain(0, points, n, x, y);
}

ZELVAN_AVX2 int winding_of_ring(Avx2, const DblPt* points, unsigned int n, double x, double y) {
  return add_chain(winding_of_edge(points[n - 1], points[0], x, y), points, n, x, y);
}

}  // namespace zelvan
