// Only an edge whose ends lie on different sides of the point's height can count. Which side
// each end is on is found for many ends at a time; the few edges that change sides get the
// plain test. A NaN counts as above, so an edge is passed over only if its plain test would
// add nothing.

#include <zelvan/pick/detail/winding.h>

#if defined(__x86_64__)

#include <bit>
#include <cstdint>

#include <immintrin.h>

#define ZELVAN_AVX2 __attribute__((target("avx2")))

namespace {

constexpr unsigned int block = zelvan::winding_block;

// Bit i is set when y is at least the height of point i.
ZELVAN_AVX2 inline std::uint32_t heights_reached(const DblPt* points, double y) {
  const __m256d height = _mm256_set1_pd(y);
  std::uint32_t reached = 0;
  for (unsigned int i = 0; i < block; i += 4) {
    const __m256d p01 = _mm256_loadu_pd(&points[i].x);
    const __m256d p23 = _mm256_loadu_pd(&points[i + 2].x);
    const __m256d y0213 = _mm256_unpackhi_pd(p01, p23);
    const __m256d y0123 = _mm256_permute4x64_pd(y0213, 0b11011000);
    const __m256d mask = _mm256_cmp_pd(height, y0123, _CMP_GE_OQ);
    reached |= static_cast<std::uint32_t>(_mm256_movemask_pd(mask)) << i;
  }
  return reached;
}

}  // namespace

namespace zelvan::avx2 {

ZELVAN_AVX2 int winding_of_chain(const DblPt* points, unsigned int n, double x, double y) {
  int winding = 0;
  unsigned int first = 0;
  for (; n - first > block; first += block) {  // one point more than the block: its last end
    const DblPt* const p = points + first;
    const std::uint32_t starts = heights_reached(p, y);
    const std::uint32_t last_end = y >= p[block].y ? 1 : 0;
    std::uint32_t changing = starts ^ (starts >> 1 | last_end << (block - 1));
    for (; changing != 0; changing &= changing - 1) {
      const int i = std::countr_zero(changing);
      winding += winding_of_edge(p[i], p[i + 1], x, y);
    }
  }
  return winding + zelvan::winding_of_chain(points + first, n - first, x, y);
}

}  // namespace zelvan::avx2

#endif
