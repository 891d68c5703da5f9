#include <zelvan/tra/byte_order.h>
#include <zelvan/tra/detail/elements.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

static_assert(std::endian::native == std::endian::little,
              "zelvan answers that the byte order is little-endian and runs on no other");

namespace {

using zelvan::load;
using zelvan::reversed;
using zelvan::store;
using zelvan::SwapBytes;
using zelvan::translate;

template <class Word>
void swap_in_place(void* value) {
  store(value, reversed(load<Word>(value)));
}

}  // namespace

// Swaps the halves, then pairs of bits, then neighbouring bits (H. Warren, "Hacker's Delight",
// 7-1).
std::uint8_t zelvan::ReverseBits::operator()(std::uint8_t byte) const {
  unsigned b = byte;
  b = (b & 0x0F) << 4 | (b & 0xF0) >> 4;
  b = (b & 0x33) << 2 | (b & 0xCC) >> 2;
  b = (b & 0x55) << 1 | (b & 0xAA) >> 1;
  return static_cast<std::uint8_t>(b);
}

void tra_swap_2(void* value) { swap_in_place<std::uint16_t>(value); }
void tra_swap_4(void* value) { swap_in_place<std::uint32_t>(value); }
void tra_swap_8(void* value) { swap_in_place<std::uint64_t>(value); }

void tra_swap_bytes(unsigned short type, unsigned int count, const void* src, void* dst) {
  switch (type) {
    case 0x42:
    case 0x52:
    case 0x62:
      return translate(SwapBytes<std::uint16_t>{}, count, src, dst);
    case 0x74:
    case 0x84:
    case 0x94:
    case 0xA4:
      return translate(SwapBytes<std::uint32_t>{}, count, src, dst);
    case 0xB8:
      return translate(SwapBytes<std::uint64_t>{}, count, src, dst);
  }
  std::printf("tra_swap_bytes: invalid primitive type %#02x\n", unsigned{type});
  std::exit(1);
}

void tra_reverse_bits(unsigned short count, const void* src, void* dst) {
  translate(zelvan::ReverseBits{}, count, src, dst);
}

int UtlByteOrderIsIntel() { return 1; }
int utl_is_little_endian() { return 1; }
