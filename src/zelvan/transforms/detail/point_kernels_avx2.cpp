// A vector holds two points as x, y, x, y. Fused multiply-add is never used: it would skip a
// rounding, which changes results.

#include <zelvan/transforms/detail/mapping.h>
#include <zelvan/transforms/detail/point_kernels.h>

#include <immintrin.h>

namespace zelvan {
namespace {

// The mappings for two points at a time.

struct DiagonalPair {
  __m256d factors, translation;

  ZELVAN_AVX2 explicit DiagonalPair(const DiagonalMapping& m)
      : factors(_mm256_setr_pd(m.m11, m.m22, m.m11, m.m22)),
        translation(_mm256_setr_pd(m.tx, m.ty, m.tx, m.ty)) {}
  ZELVAN_AVX2 __m256d operator()(__m256d p) const {
    return _mm256_add_pd(_mm256_mul_pd(factors, p), translation);
  }
};

struct QuadrantPair {
  __m256d factors, translation;

  ZELVAN_AVX2 explicit QuadrantPair(const QuadrantMapping& m)
      : factors(_mm256_setr_pd(m.m21, m.m12, m.m21, m.m12)),
        translation(_mm256_setr_pd(m.tx, m.ty, m.tx, m.ty)) {}
  ZELVAN_AVX2 __m256d operator()(__m256d p) const {
    const __m256d yx = _mm256_permute_pd(p, 0b0101);
    return _mm256_add_pd(_mm256_mul_pd(factors, yx), translation);
  }
};

struct GeneralPair {
  __m256d of_x, of_y, translation;

  ZELVAN_AVX2 explicit GeneralPair(const GeneralMapping& m)
      : of_x(_mm256_setr_pd(m.m11, m.m12, m.m11, m.m12)),
        of_y(_mm256_setr_pd(m.m21, m.m22, m.m21, m.m22)),
        translation(_mm256_setr_pd(m.tx, m.ty, m.tx, m.ty)) {}
  ZELVAN_AVX2 __m256d operator()(__m256d p) const {
    const __m256d xx = _mm256_permute_pd(p, 0b0000);
    const __m256d yy = _mm256_permute_pd(p, 0b1111);
    const __m256d linear = _mm256_add_pd(_mm256_mul_pd(of_x, xx), _mm256_mul_pd(of_y, yy));
    return _mm256_add_pd(linear, translation);
  }
};

ZELVAN_AVX2 DiagonalPair pair_of(const DiagonalMapping& m) { return DiagonalPair(m); }
ZELVAN_AVX2 QuadrantPair pair_of(const QuadrantMapping& m) { return QuadrantPair(m); }
ZELVAN_AVX2 GeneralPair pair_of(const GeneralMapping& m) { return GeneralPair(m); }

// The half has the sign of the value, as in the plain form. For NaN and for results that don't fit,
// the instruction itself returns 0x80000000, which is INT_MIN.
ZELVAN_AVX2 inline __m128i round_pair(__m256d v) {
  const __m256d sign = _mm256_and_pd(v, _mm256_set1_pd(-0.0));
  const __m256d half = _mm256_or_pd(_mm256_set1_pd(0.5), sign);
  return _mm256_cvttpd_epi32(_mm256_add_pd(v, half));
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
  const auto map_pair = pair_of(map);
  int i = 0;
  for (; i + 1 < n; i += 2) {
    const __m256d two_points = _mm256_loadu_pd(reinterpret_cast<const double*>(in + i));
    store(Result{}, out + i, map_pair(two_points));
  }
  if (i < n) out[i] = Result{}(map(in[i].x, in[i].y));
}

template <class Mapping>
ZELVAN_AVX2 void map_corners(const Mapping& map, const real_rect_t& in, int_rect_t* out) {
  const auto map_pair = pair_of(map);
  const __m256d first = map_pair(_mm256_loadu_pd(&in.corners[0].x));
  const __m256d second = map_pair(_mm256_loadu_pd(&in.corners[2].x));
  const __m128d others[] = {_mm256_extractf128_pd(first, 1), _mm256_castpd256_pd128(second),
                            _mm256_extractf128_pd(second, 1)};
  __m128d low = _mm256_castpd256_pd128(first);
  __m128d high = low;
  for (const __m128d corner : others) {  // with a NaN, both instructions return the second operand
    low = _mm_min_pd(corner, low);
    high = _mm_max_pd(corner, high);
  }
  const __m128i box = round_pair(_mm256_set_m128d(high, low));  // left, bottom, right, top
  auto* const corners = reinterpret_cast<__m128i*>(out->corners);
  _mm_storeu_si128(corners, _mm_shuffle_epi32(box, _MM_SHUFFLE(3, 0, 1, 0)));
  _mm_storeu_si128(corners + 1, _mm_shuffle_epi32(box, _MM_SHUFFLE(1, 2, 3, 2)));
}

}  // namespace

template <class Result>
void map_points(Avx2, const Mtx2D& m, int n, const real_pt_t* in, typename Result::Out* out) {
  with_mapping_of(m, [=](const auto& map) { map_pairs<Result>(map, n, in, out); });
}

ZELVAN_AVX2 void map_rect(Avx2, const Mtx2D& m, const real_rect_t& in, int_rect_t* out) {
  with_mapping_of(m, [&](const auto& map) ZELVAN_AVX2 { map_corners(map, in, out); });
}

template void map_points<ToReal>(Avx2, const Mtx2D&, int, const real_pt_t*, real_pt_t*);
template void map_points<ToInt>(Avx2, const Mtx2D&, int, const real_pt_t*, int_pt_t*);
template void map_points<ToIntTimesEight>(Avx2, const Mtx2D&, int, const real_pt_t*, int_pt_t*);
template void map_points<ToShort>(Avx2, const Mtx2D&, int, const real_pt_t*, short_pt_t*);

}  // namespace zelvan
