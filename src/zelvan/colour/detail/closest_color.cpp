#include <zelvan/colour/detail/closest_color.h>
#include <zelvan/detail/instruction_set.h>

#include <algorithm>

#ifdef __SSE2__
#include <bit>

#include <immintrin.h>
#endif

namespace zelvan {
namespace {

/// The difference as the machine has it, wrapped where 32 bits don't hold it.
float difference(int a, int b) {
  return static_cast<float>(
      static_cast<int>(static_cast<unsigned int>(a) - static_cast<unsigned int>(b)));
}

}  // namespace

Closest closest_one_by_one(const ColorRGB* colors, unsigned int from, unsigned int to,
                           const ColorRGB& target, Closest best) {
  for (unsigned int i = from; i < to; ++i) {
    if (colors[i].red < 0) continue;
    const float dr = difference(colors[i].red, target.red);
    const float dg = difference(colors[i].green, target.green);
    const float db = difference(colors[i].blue, target.blue);
    const float distance = dg * dg + dr * dr + db * db;  // in this order: long sums are rounded
    if (distance == 0.0f) return {0.0f, i};
    if (distance < best.distance) best = {distance, i};
  }
  return best;
}

#ifdef __SSE2__
namespace {

/// Four channels from memory. They are moved about as floats, and read as integers.
__m128 four_channels(const int* first) {
  return _mm_castsi128_ps(_mm_loadu_si128(reinterpret_cast<const __m128i*>(first)));
}

}  // namespace

// Needs no more than every x86-64 has. Each lane keeps the best of every fourth entry; where lanes
// are equal at the end, the lowest index is the one that a walk finds first. The last step goes
// back to a whole four: an entry that is looked at twice is no closer the second time.
Closest closest_by_fours(const ColorRGB* colors, unsigned int from, unsigned int to,
                         const ColorRGB& target, Closest best) {
  if (to < from || to - from < 4) return closest_one_by_one(colors, from, to, target, best);
  const __m128i target_red = _mm_set1_epi32(target.red);
  const __m128i target_green = _mm_set1_epi32(target.green);
  const __m128i target_blue = _mm_set1_epi32(target.blue);
  const __m128i lanes = _mm_setr_epi32(0, 1, 2, 3);
  __m128 lane_distances = _mm_set1_ps(best.distance);
  __m128i lane_indices = _mm_set1_epi32(static_cast<int>(best.index));

  for (unsigned int next = from; next < to; next += 4) {
    const unsigned int i = std::min(next, to - 4);
    // Twelve channels, r g b r | g b r g | b r g b, sorted into four reds, greens and blues.
    const __m128 a = four_channels(&colors[i].red);
    const __m128 b = four_channels(&colors[i + 1].green);
    const __m128 c = four_channels(&colors[i + 2].blue);
    const __m128 ab = _mm_shuffle_ps(a, b, _MM_SHUFFLE(1, 0, 2, 1));
    const __m128 bc = _mm_shuffle_ps(b, c, _MM_SHUFFLE(2, 1, 3, 2));
    const __m128i red = _mm_castps_si128(_mm_shuffle_ps(a, bc, _MM_SHUFFLE(2, 0, 3, 0)));
    const __m128i green = _mm_castps_si128(_mm_shuffle_ps(ab, bc, _MM_SHUFFLE(3, 1, 2, 0)));
    const __m128i blue = _mm_castps_si128(_mm_shuffle_ps(ab, c, _MM_SHUFFLE(3, 0, 3, 1)));

    const __m128 dr = _mm_cvtepi32_ps(_mm_sub_epi32(red, target_red));
    const __m128 dg = _mm_cvtepi32_ps(_mm_sub_epi32(green, target_green));
    const __m128 db = _mm_cvtepi32_ps(_mm_sub_epi32(blue, target_blue));
    const __m128 sum =
        _mm_add_ps(_mm_add_ps(_mm_mul_ps(dg, dg), _mm_mul_ps(dr, dr)), _mm_mul_ps(db, db));
    // A negative red makes a NaN of the distance, which is neither 0 nor less than anything.
    const __m128 distance = _mm_or_ps(sum, _mm_castsi128_ps(_mm_srai_epi32(red, 31)));

    const int exact = _mm_movemask_ps(_mm_cmpeq_ps(distance, _mm_setzero_ps()));
    if (exact != 0) {
      return {0.0f, i + static_cast<unsigned int>(std::countr_zero(static_cast<unsigned>(exact)))};
    }
    const __m128 closer = _mm_cmplt_ps(distance, lane_distances);
    const __m128i is_closer = _mm_castps_si128(closer);
    const __m128i indices = _mm_add_epi32(_mm_set1_epi32(static_cast<int>(i)), lanes);
    lane_distances = _mm_or_ps(_mm_and_ps(closer, distance), _mm_andnot_ps(closer, lane_distances));
    lane_indices =
        _mm_or_si128(_mm_and_si128(is_closer, indices), _mm_andnot_si128(is_closer, lane_indices));
  }

  alignas(16) float distances[4];
  alignas(16) unsigned int found[4];
  _mm_store_ps(distances, lane_distances);
  _mm_store_si128(reinterpret_cast<__m128i*>(found), lane_indices);
  for (int lane = 0; lane < 4; ++lane) take_closer(distances[lane], found[lane], best);
  return best;
}

#else

Closest closest_by_fours(const ColorRGB* colors, unsigned int from, unsigned int to,
                         const ColorRGB& target, Closest best) {
  return closest_one_by_one(colors, from, to, target, best);
}

#endif

Closest closest_in_vectors(const ColorRGB* colors, unsigned int from, unsigned int to,
                           const ColorRGB& target, Closest best) {
  if (has_avx2 && to >= from && to - from >= 8) {
    return avx2::closest_by_eights(colors, from, to, target, best);
  }
  return closest_by_fours(colors, from, to, target, best);
}

}  // namespace zelvan
