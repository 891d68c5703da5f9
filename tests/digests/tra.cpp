#include <zelvan/tra/byte_order.h>
#include <zelvan/tra/character_sets.h>
#include <zelvan/tra/foreign_floats.h>

#include "digests/group.h"
#include "support/random.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>

namespace {

using support::Random;
using Bytes = std::vector<unsigned char>;

struct Operation {
  int size;  // of an element
  std::function<void(unsigned count, const void* src, void* dst)> run;
};

std::vector<Operation> all_operations() {
  std::vector<Operation> operations = {{1, tra_reverse_bits}};
  for (const int type : {0x42, 0x52, 0x62, 0x74, 0x84, 0x94, 0xA4, 0xB8}) {
    operations.push_back({type & 15, std::bind_front(tra_swap_bytes, type)});
  }
  for (const int code : {TRA_ASCII_TO_EBCDIC, TRA_EBCDIC_TO_ASCII}) {
    operations.push_back({1, std::bind_front(tra_convert_charset, code)});
  }
  for (const int format : {0, 3, 4, 16, 0x105, 19 - 256}) {
    operations.push_back({4, std::bind_front(tra_convert_flpt, format, 0xA4)});
    operations.push_back({8, std::bind_front(tra_convert_flpt, format, 0xB8)});
  }
  return operations;
}

// Arrays of any bytes at every length that leaves a vector a rest of its own, the two of which lie
// apart, in one place, or overlap.
const Group arrays("tra.arrays", [](Digest& digest) {
  constexpr int reach = 33;  // a vector and a byte
  Random random(1);
  for (const auto& [size, run] : all_operations()) {
    for (int i = 0; i < 71 * 8; ++i) {
      const int n = i / 8, distance = i % 8 == 0 ? 0 : random.below(2 * reach) - reach;
      Bytes bytes(static_cast<std::size_t>(n * size + reach));
      for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random.below(256));
      run(static_cast<unsigned>(n), bytes.data() + std::max(-distance, 0),
          bytes.data() + std::max(distance, 0));
      digest(bytes);
    }
    for (const unsigned most : {65535u, 70000u}) {  // some counts have 16 bits, and wrap
      Bytes bytes(70000 * 8);
      for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<unsigned char>(i * i);
      run(most, bytes.data(), bytes.data());
      digest(bytes);
    }
  }
  digest(UtlByteOrderIsIntel(), utl_is_little_endian());
});

// The swaps in place, and every byte.
const Group bytes("tra.bytes", [](Digest& digest) {
  for (int i = 0; i < 256; ++i) {
    std::array<unsigned char, 8> two, four, eight;
    for (int k = 0; k < 8; ++k) two[k] = four[k] = eight[k] = static_cast<unsigned char>(i + k);
    tra_swap_2(&two[i % 3]);
    tra_swap_4(&four[i % 3]);
    tra_swap_8(&eight[0]);
    unsigned char byte = static_cast<unsigned char>(i), mapped[3];
    tra_reverse_bits(1, &byte, &mapped[0]);
    tra_convert_charset(TRA_ASCII_TO_EBCDIC, 1, &byte, &mapped[1]);
    tra_convert_charset(TRA_EBCDIC_TO_ASCII, 1, &byte, &mapped[2]);
    digest(two, four, eight, mapped);
  }
});

/// Takes some numbers in both directions and both widths, each by itself and as arrays.
void take_conversions(Digest& digest, const std::vector<std::uint64_t>& words) {
  Bytes big_endian;
  for (const std::uint64_t word : words) {
    for (int shift = 56; shift >= 0; shift -= 8) {
      big_endian.push_back(static_cast<unsigned char>(word >> shift));
    }
  }
  for (const int format : {4, 16}) {
    for (const unsigned short type : {0xA4, 0xB8}) {
      const std::size_t size = type & 15u;
      const auto count = static_cast<unsigned short>(big_endian.size() / size);
      Bytes together(big_endian.size()), alone(big_endian.size());
      tra_convert_flpt(format, type, count, big_endian.data(), together.data());
      for (std::size_t i = 0; i < big_endian.size(); i += 5 * size) {
        tra_convert_flpt(format, type, 1, &big_endian[i], &alone[i]);
      }
      digest(together, alone);
    }
  }
}

// Every exponent and characteristic with fractions beside powers of two; then any numbers.
const Group floats("tra.floats", [](Digest& digest) {
  Random random(2);
  std::vector<std::uint64_t> words;
  for (std::uint64_t exponent = 0; exponent < 4096; ++exponent) {
    words.clear();
    for (int bit = 0; bit < 53; ++bit) {
      const std::uint64_t word = (exponent << 52) + (std::uint64_t{1} << bit);
      for (const int beside : {-1, 0, 1})
        words.push_back(word + static_cast<std::uint64_t>(beside));
    }
    for (int i = 0; i < 30; ++i) {
      words.push_back(std::uint64_t(random.below(1 << 16)) << 48 | random.below(1 << 16));
      words.push_back(std::bit_cast<std::uint64_t>(random.unit()) ^ exponent << 52);
    }
    take_conversions(digest, words);
  }
});

}  // namespace
