/// What a stream has read already and keeps in its buffer.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace zelvan::platform {

constexpr bool is_line_end(char c) { return c == '\n' || c == '\r'; }

#if defined(__SSE2__)
/// Bit k is set if byte k of sixteen is a line end.
inline unsigned line_ends_in_16(const char* bytes) {
  const __m128i all = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(
      _mm_cmpeq_epi8(all, _mm_set1_epi8('\n')), _mm_cmpeq_epi8(all, _mm_set1_epi8('\r')))));
}

/// Copies a `Block` from the start and one from the end of `n` bytes, which may overlap.
template <class Block>
void copy_both_ends(const char* from, char* to, std::ptrdiff_t n) {
  Block first, last;
  const std::ptrdiff_t last_place = n - static_cast<std::ptrdiff_t>(sizeof(Block));
  std::memcpy(&first, from, sizeof first);
  std::memcpy(&last, from + last_place, sizeof last);
  std::memcpy(to, &first, sizeof first);
  std::memcpy(to + last_place, &last, sizeof last);
}
#endif

/// Copies bytes through the first line end, at most `most` of them; gives how many.
inline std::ptrdiff_t copy_line(const char* from, char* to, std::ptrdiff_t most) {
  std::ptrdiff_t n = 0;
#if defined(__SSE2__)
  if (most > 0 && is_line_end(from[0])) most = 1;  // an empty line, or what a carriage return left
  for (; n + 16 <= most; n += 16) {
    if (const unsigned line_ends = line_ends_in_16(from + n); line_ends != 0) {
      const std::ptrdiff_t length = n + std::countr_zero(line_ends) + 1;
      if (length > 16) {
        std::memcpy(to + length - 16, from + length - 16, 16);
      } else if (length >= 8) {
        copy_both_ends<std::uint64_t>(from, to, length);
      } else if (length >= 4) {
        copy_both_ends<std::uint32_t>(from, to, length);
      } else {
        copy_both_ends<std::uint16_t>(from, to, length);
      }
      return length;
    }
    std::memcpy(to + n, from + n, 16);
  }
#endif
  while (n < most) {
    const char byte = to[n] = from[n];
    ++n;
    if (is_line_end(byte)) break;
  }
  return n;
}

// Both functions require that the stream is locked. The C library of GNU shows in its header what
// is left of a buffer, from `_IO_read_ptr` to `_IO_read_end`: the inline form of getc_unlocked is
// made of it, so every stream keeps to that. One that is being written shows nothing, bytes that
// were put back show first and alone, and getc_unlocked goes on to what lies behind.

#if defined(__GLIBC__) && !defined(__UCLIBC__)  // which says that it is both

/// Takes bytes out of the stream's buffer, through the first line end, at most `room` of them;
/// gives how many. None if none are there, or where they can't be seen: then one is to be read.
inline int take_buffered(std::FILE* stream, char* to, int room) {
  const std::ptrdiff_t buffered = stream->_IO_read_end - stream->_IO_read_ptr;
  const std::ptrdiff_t taken =
      copy_line(stream->_IO_read_ptr, to, std::min<std::ptrdiff_t>(buffered, room));
  stream->_IO_read_ptr += taken;
  return static_cast<int>(taken);
}

/// The byte that is read next, which stays in the stream; EOF at the end of the file.
inline int peek(std::FILE* stream) {
  const char* const next = stream->_IO_read_ptr;
  if (next < stream->_IO_read_end) return static_cast<unsigned char>(*next);
  return std::ungetc(getc_unlocked(stream), stream);
}

#else

inline int take_buffered(std::FILE*, char*, int) { return 0; }
inline int peek(std::FILE* stream) { return std::ungetc(getc_unlocked(stream), stream); }

#endif

}  // namespace zelvan::platform
