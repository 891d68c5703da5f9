#include "digests/group.h"
#include "support/float_models.h"

#include <functional>

namespace {

using Bytes = std::vector<unsigned char>;

struct Operation {
  int size;  // of an element
  std::function<void(unsigned count, const void* src, void* dst)> run;
  bool moves = false;  // all bytes at once
};

std::vector<Operation> all_operations() {
  std::vector<Operation> operations = {{1, tra_reverse_bits},
                                       {1, std::bind_front(tra_convert_charset, 1)},
                                       {1, std::bind_front(tra_convert_charset, 2)}};
  for (const int type : {0x42, 0x52, 0x62, 0x74, 0x84, 0x94, 0xA4, 0xB8}) {
    operations.push_back({type & 15, std::bind_front(tra_swap_bytes, type)});
  }
  for (const int format : {0, 3, 4, 16, 0x105, 19 - 256}) {
    operations.push_back(
        {4, std::bind_front(tra_convert_flpt, format, 0xA4), format == 0 || format == 3});
    operations.push_back(
        {8, std::bind_front(tra_convert_flpt, format, 0xB8), format == 0 || format == 3});
  }
  return operations;
}

// Arrays of any bytes at every length that leaves a vector a rest of its own, the two of which lie
// apart, in one place, or overlap; and as many as can be, where some counts of 16 bits wrap. They
// are their elements one by one, in ascending order.
const Group arrays("tra.arrays", [](Digest& digest) {
  constexpr int reach = 33;  // a vector and a byte
  Random random(1);
  for (const auto& [size, run, moves] : all_operations()) {
    for (int i = 0; i <= 71 * 12; ++i) {
      const int n = i < 71 * 12 ? i / 12 : size < 4 ? 65535 : 70000;
      const int distance = i % 12 == 0 ? 0 : random.below(2 * reach) - reach;
      const int from = std::max(-distance, 0), to = std::max(distance, 0);
      Bytes bytes(n * size + reach);
      for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random.below(256));
      Bytes one_by_one = bytes;
      for (int k = 0; k < n; ++k) {
        run(1, one_by_one.data() + from + k * size, one_by_one.data() + to + k * size);
      }
      run(n, bytes.data() + from, bytes.data() + to);
      digest(bytes);
      digest.expect(bytes == one_by_one || n > 65535 || (moves && distance > 0));
    }
  }
  std::uint64_t words[] = {0x0123456789ABCDEF, 0x0123456789ABCDEF, 0x0123456789ABCDEF};
  tra_swap_2(&words[0]);
  tra_swap_4(&words[1]);
  tra_swap_8(&words[2]);
  digest(words, UtlByteOrderIsIntel(), utl_is_little_endian());
});

// Beside the values that the numbers stand for: every 16411th single (tests/exhaustive takes them
// all); of both widths every exponent and characteristic with fractions beside powers of two; and
// doubles of any bits.
const Group floats("tra.floats", [](Digest& digest) {
  digest.expect(support::walk(24, 0, (1ull << 32) / 16411, 16411));
  for (int i = 0; i < 4096 * 53; ++i) {
    const support::Word word = (i / 53 * 1ull << 52) + (1ull << i % 53);
    digest.expect(support::walk(56, word - 2, 5, 1));
    digest.expect(support::walk(24, word >> 32, 9, 1));
  }
  std::mt19937_64 random(1);
  for (int i = 0; i < 100'000; ++i) digest.expect(support::walk(56, random(), 5, 1));
});

}  // namespace
