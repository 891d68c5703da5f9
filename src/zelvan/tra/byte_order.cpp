#include <zelvan/tra/byte_order.h>
#include <zelvan/tra/detail/byte_strings.h>
#include <zelvan/tra/detail/vector_kernels.h>

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

template <class Word>
void swap_in_place(void* value) {
  store(value, reversed(load<Word>(value)));
}

template <class Word, zelvan::VectorKernel kernel>
void swap_elements(std::size_t count, const void* src, void* dst) {
  const auto* from = static_cast<const unsigned char*>(src);
  auto* to = static_cast<unsigned char*>(dst);
  const std::size_t bytes = count * sizeof(Word);
  for (std::size_t i = zelvan::run<kernel>(bytes, from, to); i < bytes; i += sizeof(Word)) {
    store(to + i, reversed(load<Word>(from + i)));
  }
}

// Halves, then pairs, then neighbours change places (H. Warren, "Hacker's Delight", 7-1).
unsigned char bits_reversed(unsigned b) {
  b = (b & 0x0F) << 4 | (b & 0xF0) >> 4;
  b = (b & 0x33) << 2 | (b & 0xCC) >> 2;
  b = (b & 0x55) << 1 | (b & 0xAA) >> 1;
  return static_cast<unsigned char>(b);
}

}  // namespace

void tra_swap_2(void* value) { swap_in_place<std::uint16_t>(value); }
void tra_swap_4(void* value) { swap_in_place<std::uint32_t>(value); }
void tra_swap_8(void* value) { swap_in_place<std::uint64_t>(value); }

void tra_swap_bytes(unsigned short type, unsigned int count, const void* src, void* dst) {
  switch (type) {
    case 0x42:
    case 0x52:
    case 0x62:
      return swap_elements<std::uint16_t, zelvan::avx2::swap_2>(count, src, dst);
    case 0x74:
    case 0x84:
    case 0x94:
    case 0xA4:
      return swap_elements<std::uint32_t, zelvan::avx2::swap_4>(count, src, dst);
    case 0xB8:
      return swap_elements<std::uint64_t, zelvan::avx2::swap_8>(count, src, dst);
  }
  std::printf("tra_swap_bytes: invalid primitive type %#02x\n", unsigned{type});
  std::exit(1);
}

void tra_reverse_bits(unsigned short count, const void* src, void* dst) {
  const auto* from = static_cast<const unsigned char*>(src);
  auto* to = static_cast<unsigned char*>(dst);
  for (std::size_t i = zelvan::run<zelvan::avx2::reverse_bits>(count, from, to); i < count; ++i) {
    to[i] = bits_reversed(from[i]);
  }
}

int UtlByteOrderIsIntel() { return 1; }
int utl_is_little_endian() { return 1; }
