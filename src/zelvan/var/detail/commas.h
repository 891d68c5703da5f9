/// Where the commas of a line are.
#pragma once

#include <cstdint>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace zelvan {

namespace plain {

inline std::uint32_t commas_in_32(const char* text) {
  std::uint32_t commas = 0;
  for (int i = 0; i < 32; ++i) commas |= std::uint32_t{text[i] == ','} << i;
  return commas;
}

}  // namespace plain

/// Bit k is set if the byte `text[k]` is a comma. *Requires:* 32 bytes.
inline std::uint32_t commas_in_32(const char* text) {
#if defined(__SSE2__)
  const auto commas_in_16 = [](const char* p) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i is_comma = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(','));
    return static_cast<std::uint32_t>(_mm_movemask_epi8(is_comma));
  };
  return commas_in_16(text) | commas_in_16(text + 16) << 16;
#else
  return plain::commas_in_32(text);
#endif
}

}  // namespace zelvan
