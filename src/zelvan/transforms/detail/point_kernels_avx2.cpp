// A vector holds two points as x, y, x, y. Fused multiply-add is never used: it would skip a
// rounding, which changes results.

#include <zelvan/transforms/detail/mapping.h>
#include <zelvan/transforms/detail/point_kernels.h>

#include <immintrin.h>

namespace zelvan {
namespace {

// The mappings for two points at a time.

ZELVAN_AVX2 auto for_pairs(const DiagonalMapping& m) {
  const __m256d factors = {m.m11, m.m22, m.m11, m.m22};
  const __m256d translation = {m.tx, m.ty, m.tx, m.ty};
  return [=](__m256d p) ZELVAN_AVX2 { return factors * p + translation; };
}

ZELVAN_AVX2 auto for_pairs(const QuadrantMapping& m) {
  const __m256d factors = {m.m21, m.m12, m.m21, m.m12};
  const __m256d translation = {m.tx, m.ty, m.tx, m.ty};
  return [=](__m256d p) ZELVAN_AVX2 {
    return factors * _mm256_permute_pd(p, 0b0101) + translation;  // y, x of each point
  };
}

ZELVAN_AVX2 auto for_pairs(const GeneralMapping& m) {
  const __m256d of_x = {m.m11, m.m12, m.m11, m.m12};
  const __m256d of_y = {m.m21, m.m22, m.m21, m.m22};
  const __m256d translation = {m.tx, m.ty, m.tx, m.ty};
  return [=](__m256d p) ZELVAN_AVX2 {
    const __m256d xx = _mm256_permute_pd(p, 0b0000);
    const __m256d yy = _mm256_permute_pd(p, 0b1111);
    return (of_x * xx + of_y * yy) + translation;
  };
}

// The half has the sign of the value, as in the plain form. For NaN and for results that don't fit,
// the instruction itself returns 0x80000000, which is INT_MIN.
ZELVAN_AVX2 inline __m128i round_pair(__m256d v) {
  const __m256d sign = _mm256_and_pd(v, _mm256_set1_pd(-0.0));
  const __m256d half = _mm256_or_pd(_mm256_set1_pd(0.5), sign);
  return _mm256_cvttpd_epi32(v + half);
}

ZELVAN_AVX2 void store(ToReal, real_pt_t* out, __m256d v) {
  _mm256_storeu_pd(reinterpret_cast<double*>(out), v);
}

ZELVAN_AVX2 void store(ToInt, int_pt_t* out, __m256d v) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), round_pair(v));
}

ZELVAN_AVX2 void store(ToIntTimesEight, int_pt_t* out, __m256d v) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_slli_epi32(round_pair(v), 3));
}

ZELVAN_AVX2 void store(ToShort, short_pt_t* out, __m256d v) {
  const __m128i low_halves =
      _mm_setr_epi8(0, 1, 4, 5, 8, 9, 12, 13, -1, -1, -1, -1, -1, -1, -1, -1);
  const __m128i packed = _mm_shuffle_epi8(round_pair(v), low_halves);
  _mm_storel_epi64(reinterpret_cast<__m128i*>(out), packed);
}

template <class Result, class Mapping>
ZELVAN_AVX2 void map_pairs(const Mapping& map, int n, const real_pt_t* in,
                           typename Result::Out* out) {
  const auto map_pair = for_pairs(map);
  int i = 0;
#pragma GCC unroll 4  // otherwise points in cache take up to 1.9 times as long
  for (; i + 1 < n; i += 2) {
    const __m256d two_points = _mm256_loadu_pd(reinterpret_cast<const double*>(in + i));
    store(Result{}, out + i, map_pair(two_points));
  }
  if (i < n) out[i] = Result{}(map(in[i].x, in[i].y));
}

}  // namespace

template <class Result>
void map_points(Avx2, const Mtx2D& m, int n, const real_pt_t* in, typename Result::Out* out) {
  with_mapping_of(m, [=](const auto& map) { map_pairs<Result>(map, n, in, out); });
}

ZELVAN_AVX2 void map_rect(Avx2, const Mtx2D& m, const real_rect_t& in, int_rect_t* out) {
  with_mapping_of(m, [&](const auto& map) ZELVAN_AVX2 {
    const auto map_pair = for_pairs(map);
    const __m256d first = map_pair(_mm256_loadu_pd(&in.corners[0].x));
    const __m256d second = map_pair(_mm256_loadu_pd(&in.corners[2].x));
    const __m128d others[] = {_mm256_extractf128_pd(first, 1), _mm256_castpd256_pd128(second),
                              _mm256_extractf128_pd(second, 1)};
    __m128d low = _mm256_castpd256_pd128(first);
    __m128d high = low;
    for (const __m128d corner : others) {  // with a NaN, both return the second operand
      low = _mm_min_pd(corner, low);
      high = _mm_max_pd(corner, high);
    }
    const __m128i box = round_pair(_mm256_set_m128d(high, low));  // left, bottom, right, top
    auto* const corners = reinterpret_cast<__m128i*>(out->corners);
    _mm_storeu_si128(corners, _mm_shuffle_epi32(box, _MM_SHUFFLE(3, 0, 1, 0)));
    _mm_storeu_si128(corners + 1, _mm_shuffle_epi32(box, _MM_SHUFFLE(1, 2, 3, 2)));
  });
}

template void map_points<ToReal>(Avx2, const Mtx2D&, int, const real_pt_t*, real_pt_t*);
template void map_points<ToInt>(Avx2, const Mtx2D&, int, const real_pt_t*, int_pt_t*);
template void map_points<ToIntTimesEight>(Avx2, const Mtx2D&, int, const real_pt_t*, int_pt_t*);
template void map_points<ToShort>(Avx2, const Mtx2D&, int, const real_pt_t*, short_pt_t*);

}  // namespace zelvan
