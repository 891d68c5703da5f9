/// Loading and storing of integers at any alignment.
#pragma once

#include <cstdint>
#include <cstring>

namespace zelvan {

template <class Word>
Word load(const void* bytes) {
  Word word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

template <class Word>
void store(void* bytes, Word word) {
  std::memcpy(bytes, &word, sizeof word);
}

inline std::uint16_t reversed(std::uint16_t word) { return __builtin_bswap16(word); }
inline std::uint32_t reversed(std::uint32_t word) { return __builtin_bswap32(word); }
inline std::uint64_t reversed(std::uint64_t word) { return __builtin_bswap64(word); }

}  // namespace zelvan
