// Each of eight lanes keeps the best of every eighth entry. If lanes tie at the end, the lowest
// index wins, as in a sequential search. The last step takes the last eight entries, even if some
// were compared before; that changes nothing.

#include <zelvan/colour/detail/closest_color.h>

#include <algorithm>
#include <bit>

#include <immintrin.h>

namespace zelvan {
namespace {

/// Loads four channels from `first` on, and four from the entry that is four entries later.
ZELVAN_AVX2 __m256 channels(const int* first) {
  const auto* low = reinterpret_cast<const __m128i*>(first);
  const auto* high = reinterpret_cast<const __m128i*>(first + 4 * 3);
  const __m256i both = _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(low)),
                                               _mm_loadu_si128(high), 1);
  return _mm256_castsi256_ps(both);
}

/// Returns the minimum of the eight lanes, in every lane.
ZELVAN_AVX2 __m256 lowest(__m256 v) {
  v = _mm256_min_ps(v, _mm256_permute2f128_ps(v, v, 1));
  v = _mm256_min_ps(v, _mm256_permute_ps(v, _MM_SHUFFLE(1, 0, 3, 2)));
  return _mm256_min_ps(v, _mm256_permute_ps(v, _MM_SHUFFLE(2, 3, 0, 1)));
}

ZELVAN_AVX2 __m256i lowest(__m256i v) {
  v = _mm256_min_epu32(v, _mm256_permute2x128_si256(v, v, 1));
  v = _mm256_min_epu32(v, _mm256_shuffle_epi32(v, _MM_SHUFFLE(1, 0, 3, 2)));
  return _mm256_min_epu32(v, _mm256_shuffle_epi32(v, _MM_SHUFFLE(2, 3, 0, 1)));
}

}  // namespace

ZELVAN_AVX2 Closest find_closest(Avx2, const ColorRGB* colors, unsigned int from, unsigned int to,
                                 const ColorRGB& target, Closest best) {
  if (to < from || to - from < 8) return find_closest(Plain{}, colors, from, to, target, best);
  const __m256i target_red = _mm256_set1_epi32(target.red);
  const __m256i target_green = _mm256_set1_epi32(target.green);
  const __m256i target_blue = _mm256_set1_epi32(target.blue);
  const __m256i lanes = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
  __m256 lane_distances = _mm256_set1_ps(best.distance);
  __m256i lane_indices = _mm256_set1_epi32(static_cast<int>(best.index));

  for (unsigned int next = from; next < to; next += 8) {
    const unsigned int i = std::min(next, to - 8);
    // Each half holds twelve channels, r g b r | g b r g | b r g b. They are sorted into reds,
    // greens and blues.
    const __m256 a = channels(&colors[i].red);
    const __m256 b = channels(&colors[i + 1].green);
    const __m256 c = channels(&colors[i + 2].blue);
    const __m256 ab = _mm256_shuffle_ps(a, b, _MM_SHUFFLE(1, 0, 2, 1));
    const __m256 bc = _mm256_shuffle_ps(b, c, _MM_SHUFFLE(2, 1, 3, 2));
    const __m256i red = _mm256_castps_si256(_mm256_shuffle_ps(a, bc, _MM_SHUFFLE(2, 0, 3, 0)));
    const __m256i green = _mm256_castps_si256(_mm256_shuffle_ps(ab, bc, _MM_SHUFFLE(3, 1, 2, 0)));
    const __m256i blue = _mm256_castps_si256(_mm256_shuffle_ps(ab, c, _MM_SHUFFLE(3, 0, 3, 1)));

    const __m256 dr = _mm256_cvtepi32_ps(_mm256_sub_epi32(red, target_red));
    const __m256 dg = _mm256_cvtepi32_ps(_mm256_sub_epi32(green, target_green));
    const __m256 db = _mm256_cvtepi32_ps(_mm256_sub_epi32(blue, target_blue));
    const __m256 sum = dg * dg + dr * dr + db * db;
    // A negative red turns the distance into a NaN, which is neither 0 nor less than anything.
    const __m256 distance = _mm256_or_ps(sum, _mm256_castsi256_ps(_mm256_srai_epi32(red, 31)));

    const int exact = _mm256_movemask_ps(_mm256_cmp_ps(distance, _mm256_setzero_ps(), _CMP_EQ_OQ));
    if (exact != 0) {
      return {0.0f, i + static_cast<unsigned int>(std::countr_zero(static_cast<unsigned>(exact)))};
    }
    const __m256 closer = _mm256_cmp_ps(distance, lane_distances, _CMP_LT_OQ);
    const __m256i indices = _mm256_add_epi32(_mm256_set1_epi32(static_cast<int>(i)), lanes);
    lane_distances = _mm256_blendv_ps(lane_distances, distance, closer);
    lane_indices = _mm256_blendv_epi8(lane_indices, indices, _mm256_castps_si256(closer));
  }

  // Choose the lowest index among the lanes at the least distance. The others get the largest
  // index.
  const __m256 distance = lowest(lane_distances);
  const __m256 farther = _mm256_cmp_ps(lane_distances, distance, _CMP_NEQ_OQ);
  const __m256i index = lowest(lane_indices | _mm256_castps_si256(farther));
  return {_mm256_cvtss_f32(distance),
          static_cast<unsigned int>(_mm_cvtsi128_si32(_mm256_castsi256_si128(index)))};
}

}  // namespace zelvan
