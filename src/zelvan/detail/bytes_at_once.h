/// Some bytes of a text as one number, to look at all of them at once.
#pragma once

#include <cstdint>
#include <cstring>

namespace zelvan {

/// Four bytes, the first in the lowest place. *Requires:* they are all there. Compilers make a
/// single load of it.
constexpr std::uint32_t four_bytes(const char* text) {
  const auto byte = [text](int i) { return std::uint32_t{static_cast<unsigned char>(text[i])}; };
  return byte(0) | byte(1) << 8 | byte(2) << 16 | byte(3) << 24;
}

/// Eight bytes likewise.
inline std::uint64_t eight_bytes(const char* text) {
  std::uint64_t bytes;
  std::memcpy(&bytes, text, sizeof bytes);
  return bytes;
}

/// The bit that a capital ASCII letter lacks and its small form has, in each byte that is either.
/// What two texts make of their bytes with these bits set is equal where they are, case aside.
constexpr std::uint64_t case_bits(std::uint64_t bytes) {
  constexpr std::uint64_t each = 0x0101010101010101;
  const std::uint64_t small = bytes | 0x20 * each;
  // Sums of seven bits, so that no byte carries into the next; the eighth then tells the result.
  const std::uint64_t seven_bits = small & 0x7F * each;
  const std::uint64_t from_a = seven_bits + (0x80 - 'a') * each;
  const std::uint64_t behind_z = seven_bits + (0x7F - 'z') * each;
  return (from_a & ~behind_z & ~small & 0x80 * each) >> 2;
}

}  // namespace zelvan
