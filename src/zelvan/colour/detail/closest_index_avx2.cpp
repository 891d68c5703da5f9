// A block is one vector of each channel. Only the few entries at least as close as the best so far
// are compared one by one.

#include <zelvan/colour/detail/closest_index.h>

#include <bit>

#include <immintrin.h>

namespace zelvan {

ZELVAN_AVX2 Closest closest_around(Avx2, const ColorBlock* start, const FloatColor& target,
                                   Closest best) {
  const __m256 red = _mm256_set1_ps(target.red);
  const __m256 green = _mm256_set1_ps(target.green);
  const __m256 blue = _mm256_set1_ps(target.blue);
  const auto look = [=](const ColorBlock& block, Closest& nearest) ZELVAN_AVX2 {
    const __m256 dr = _mm256_loadu_ps(block.red) - red;
    const __m256 dg = _mm256_loadu_ps(block.green) - green;
    const __m256 db = _mm256_loadu_ps(block.blue) - blue;
    const __m256 distance = dr * dr + dg * dg + db * db;
    const __m256 limit = _mm256_set1_ps(nearest.distance);
    auto close =
        static_cast<unsigned int>(_mm256_movemask_ps(_mm256_cmp_ps(distance, limit, _CMP_LE_OQ)));
    if (close == 0) return;
    float distances[ColorBlock::size];
    _mm256_storeu_ps(distances, distance);
    for (; close != 0; close &= close - 1) {
      const int i = std::countr_zero(close);
      take_closer(distances[i], block.index[i], nearest);
    }
  };
  return walk_blocks(start, target, best, look);
}

}  // namespace zelvan
