#include <zelvan/tra/detail/elements.h>

#include <immintrin.h>

namespace zelvan {
namespace {

/// Reverses the bytes of each element; `flip` is the element size minus 1.
template <int flip>
ZELVAN_AVX2 __m256i swapped(__m256i v) {
  const __m256i places = _mm256_setr_epi8(
      0 ^ flip, 1 ^ flip, 2 ^ flip, 3 ^ flip, 4 ^ flip, 5 ^ flip, 6 ^ flip, 7 ^ flip, 8 ^ flip,
      9 ^ flip, 10 ^ flip, 11 ^ flip, 12 ^ flip, 13 ^ flip, 14 ^ flip, 15 ^ flip, 0 ^ flip,
      1 ^ flip, 2 ^ flip, 3 ^ flip, 4 ^ flip, 5 ^ flip, 6 ^ flip, 7 ^ flip, 8 ^ flip, 9 ^ flip,
      10 ^ flip, 11 ^ flip, 12 ^ flip, 13 ^ flip, 14 ^ flip, 15 ^ flip);
  return _mm256_shuffle_epi8(v, places);
}

template <class Element>
ZELVAN_AVX2 __m256i apply(const SwapBytes<Element>&, __m256i v) {
  return swapped<sizeof(Element) - 1>(v);
}

/// Reverses the bits of each byte: looks up its two reversed halves and exchanges them.
ZELVAN_AVX2 __m256i apply(const ReverseBits&, __m256i v) {
  const __m256i reversed = _mm256_setr_epi8(0, 8, 4, 12, 2, 10, 6, 14, 1, 9, 5, 13, 3, 11, 7, 15, 0,
                                            8, 4, 12, 2, 10, 6, 14, 1, 9, 5, 13, 3, 11, 7, 15);
  const __m256i half = _mm256_set1_epi8(0x0F);
  const __m256i low = v & half;
  const __m256i high = _mm256_srli_epi16(v, 4) & half;
  return _mm256_slli_epi16(_mm256_shuffle_epi8(reversed, low), 4) |
         _mm256_shuffle_epi8(reversed, high);
}

/// Looks up 32 bytes in a table of 16 rows, row by row in each half.
///
/// Row r contributes its step to every byte of row r or later in the same half. The XOR of a byte's
/// steps is the entry of its own row. For bytes before the row, and those of the other half, the
/// index is negative, and the shuffle returns 0.
ZELVAN_AVX2 __m256i apply(const LookUp& look_up, __m256i v) {
  const __m256i row_length = _mm256_set1_epi8(16);
  __m256i result = _mm256_setzero_si256();
  __m256i place[2] = {v, v ^ _mm256_set1_epi8(-128)};
  for (int row = 0; row < 8; ++row) {
    for (int half = 0; half < 2; ++half) {
      const auto* step = reinterpret_cast<const __m128i*>(look_up.steps[8 * half + row]);
      const __m256i steps = _mm256_broadcastsi128_si256(_mm_load_si128(step));
      result ^= _mm256_shuffle_epi8(steps, place[half]);
      place[half] = _mm256_subs_epi8(place[half], row_length);
    }
  }
  return result;
}

// The conversions of numbers. Where the plain form branches, these compute every case and select
// one. A shift by more bits than the word has produces 0; so does a negative count, which reads as
// a very large one. The position of a leading 1 is the exponent of an exact conversion to floating
// point, so the rounding mode doesn't matter.

ZELVAN_AVX2 __m256i word(unsigned v) { return _mm256_set1_epi32(static_cast<int>(v)); }
ZELVAN_AVX2 __m256i word64(unsigned long long v) {
  return _mm256_set1_epi64x(static_cast<long long>(v));
}
ZELVAN_AVX2 __m256i choose(__m256i condition, __m256i yes, __m256i no) {
  return _mm256_blendv_epi8(no, yes, condition);
}

ZELVAN_AVX2 __m256i apply(const IbmToIeeeSingle&, __m256i v) {
  const __m256i ibm = swapped<3>(v);
  const __m256i sign = ibm & word(0x8000'0000);
  const __m256i x = _mm256_srli_epi32(ibm, 24) & word(0x7F);
  const __m256i f = ibm & word(0x00FF'FFFF);
  const __m256i as_float = _mm256_castps_si256(_mm256_cvtepi32_ps(f));  // 24 bits: exact
  // The value is F * 2^(4 X - 280). `field` is its exponent field, which may still be out of range.
  const __m256i scale = _mm256_sub_epi32(_mm256_slli_epi32(x, 2), word(280));
  const __m256i field = _mm256_add_epi32(_mm256_srli_epi32(as_float, 23), scale);
  const __m256i normal = _mm256_add_epi32(as_float, _mm256_slli_epi32(scale, 23));
  const __m256i significand = (as_float & word(0x007F'FFFF)) | word(0x0080'0000);
  const __m256i denormal = _mm256_srlv_epi32(significand, _mm256_sub_epi32(word(1), field));
  const __m256i is_zero = _mm256_cmpeq_epi32(f, word(0));
  const __m256i nan_unless_x_is_0 = ~_mm256_cmpeq_epi32(x, word(0)) & word(0x7FFF'FFFF);
  __m256i result = choose(_mm256_cmpgt_epi32(field, word(0)), normal, denormal);
  result = choose(_mm256_cmpgt_epi32(field, word(254)), word(0x7F80'0000), result);
  result = choose(is_zero, nan_unless_x_is_0, result);
  return swapped<3>(sign | result);
}

ZELVAN_AVX2 __m256i apply(const IeeeToIbmSingle&, __m256i v) {
  const __m256i ieee = swapped<3>(v);
  const __m256i sign = ieee & word(0x8000'0000);
  const __m256i magnitude = ieee & word(0x7FFF'FFFF);
  const __m256i f = ieee & word(0x007F'FFFF);
  const __m256i field = _mm256_srli_epi32(magnitude, 23);
  // Normalise a denormal: its fraction, converted to a float, counts units of 2^-149.
  const __m256i is_denormal = _mm256_cmpeq_epi32(field, word(0));
  const __m256i as_float = _mm256_castps_si256(_mm256_cvtepi32_ps(f));  // 23 bits: exact
  const __m256i e =
      choose(is_denormal, _mm256_sub_epi32(_mm256_srli_epi32(as_float, 23), word(127 + 149)),
             _mm256_sub_epi32(field, word(127)));
  const __m256i fraction = choose(is_denormal, as_float, f);
  const __m256i m = _mm256_slli_epi32(fraction, 8) | word(0x8000'0000);
  const __m256i e1 = _mm256_add_epi32(e, word(1));
  const __m256i s = _mm256_sub_epi32(word(0), e1) & word(3);
  const __m256i x = _mm256_add_epi32(_mm256_srai_epi32(_mm256_add_epi32(e1, s), 2), word(64));
  __m256i result = _mm256_slli_epi32(x, 24) | _mm256_srli_epi32(_mm256_srlv_epi32(m, s), 8);
  result = choose(_mm256_cmpeq_epi32(field, word(255)), word(0x2000'0000), result);
  result = choose(_mm256_cmpeq_epi32(magnitude, word(0)), word(0), result);
  return swapped<3>(sign | result);
}

ZELVAN_AVX2 __m256i apply(const IeeeToIbmDouble&, __m256i v) {
  const __m256i ieee = swapped<7>(v);
  const __m256i sign = ieee & word64(0x8000'0000'0000'0000);
  const __m256i field = _mm256_srli_epi64(ieee, 52) & word64(0x7FF);
  const __m256i f = (ieee & word64(0x000F'FFFF'FFFF'FFFF)) | word64(0x0010'0000'0000'0000);
  // The exponent plus 260; a quarter of it is the characteristic.
  const __m256i places = field - word64(1023 - 260);
  const __m256i x = _mm256_srli_epi64(places, 2);
  const __m256i normal = _mm256_slli_epi64(x, 56) | _mm256_sllv_epi64(f, places & word64(3));
  const __m256i small = _mm256_srlv_epi64(f, -places);
  const __m256i is_small = places < word64(0);
  const __m256i is_zero = field < word64(1023 - 312);
  const __m256i is_large = field > word64(1023 + 251);
  const __m256i is_special = field == word64(0x7FF);
  __m256i result = choose(is_small, small, normal);
  result = choose(is_large, word64(0x7FFF'FFFF'FFFF'FFFF), result);
  result = choose(is_special, word64(0x7F00'0000'0000'0000), result);
  return swapped<7>(~is_zero & (sign | result));
}

ZELVAN_AVX2 __m256i apply(const IbmToIeeeDouble&, __m256i v) {
  const __m256i ibm = swapped<7>(v);
  const __m256i sign = ibm & word64(0x8000'0000'0000'0000);
  const __m256i x = _mm256_srli_epi64(ibm, 56) & word64(0x7F);
  const __m256i f = ibm & word64(0x00FF'FFFF'FFFF'FFFF);
  // Find the position of the leading 1, in the upper 28 bits if they aren't 0. An integer below
  // 2^52 is converted with the bits of the double 2^52: OR them in, then subtract 2^52.
  const __m256i upper = _mm256_srli_epi64(f, 28);
  const __m256i has_no_upper = upper == word64(0);
  const __m256i half = choose(has_no_upper, f, upper);
  const __m256d two_to_52 = _mm256_castsi256_pd(word64(0x4330'0000'0000'0000));
  const __m256d as_double = _mm256_or_pd(_mm256_castsi256_pd(half), two_to_52) - two_to_52;
  const __m256i field = _mm256_srli_epi64(_mm256_castpd_si256(as_double), 52);
  const __m256i place = field - choose(has_no_upper, word64(1023), word64(1023 - 28));
  const __m256i up = word64(52) - place;
  const __m256i down = place - word64(52);
  // One of the two shifts has a negative count and produces 0, unless both counts are 0.
  const __m256i shifted = _mm256_sllv_epi64(f, up) | _mm256_srlv_epi64(f, down);
  const __m256i exponent = _mm256_slli_epi64(x, 2) + word64(711) + place;
  const __m256i number =
      sign | _mm256_slli_epi64(exponent, 52) | (shifted & word64(0x000F'FFFF'FFFF'FFFF));
  const __m256i nan_unless_0 = ibm != word64(0);  // all bits set
  return swapped<7>(choose(f == word64(0), nan_unless_0, number));
}

template <class Step>
ZELVAN_AVX2 std::size_t apply_to_each(const Step& step, const Buffers& buffers) {
  constexpr std::size_t vector_size = sizeof(__m256i);
  const auto [bytes, from, to] = buffers;  // copies, so no write can change them
  std::size_t i = 0;
  for (; bytes - i >= vector_size; i += vector_size) {
    const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from + i));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to + i), apply(step, v));
  }
  return i;
}

}  // namespace

template <class Step>
std::size_t translate_vectors(Avx2, const Step& step, const Buffers& buffers) {
  return apply_to_each(step, buffers);
}

template std::size_t translate_vectors(Avx2, const SwapBytes<std::uint16_t>&, const Buffers&);
template std::size_t translate_vectors(Avx2, const SwapBytes<std::uint32_t>&, const Buffers&);
template std::size_t translate_vectors(Avx2, const SwapBytes<std::uint64_t>&, const Buffers&);
template std::size_t translate_vectors(Avx2, const ReverseBits&, const Buffers&);
template std::size_t translate_vectors(Avx2, const LookUp&, const Buffers&);
template std::size_t translate_vectors(Avx2, const IeeeToIbmSingle&, const Buffers&);
template std::size_t translate_vectors(Avx2, const IbmToIeeeSingle&, const Buffers&);
template std::size_t translate_vectors(Avx2, const IeeeToIbmDouble&, const Buffers&);
template std::size_t translate_vectors(Avx2, const IbmToIeeeDouble&, const Buffers&);

}  // namespace zelvan
