#include <zelvan/tra/byte_order.h>
#include <zelvan/tra/character_sets.h>

#include "support/bits.h"
#include "support/float_models.h"
#include "support/guarded_array.h"

#include <functional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

// An array is its elements one after the other, at every length up to 70, and for every way in
// which the two buffers can overlap; in place is the distance 0. Last come the highest counts.
TEST(Translation, TakesTheElementsOneByOneInAscendingOrder) {
  using Operation = std::function<void(unsigned count, const void* src, void* dst)>;
  std::vector<std::pair<int, Operation>> operations = {
      {1, tra_reverse_bits},
      {1, std::bind_front(tra_convert_charset, 1)},
      {1, std::bind_front(tra_convert_charset, 2)},
      {4, std::bind_front(tra_convert_flpt, 16, 0xA4)},
      {8, std::bind_front(tra_convert_flpt, 4, 0xB8)},
      {4, std::bind_front(tra_convert_flpt, 0x105, 0xA4)},
      {8, std::bind_front(tra_convert_flpt, -256 + 19, 0xB8)}};
  for (const int type : {0x42, 0x52, 0x62, 0x74, 0x84, 0x94, 0xA4, 0xB8}) {
    operations.emplace_back(type & 15, std::bind_front(tra_swap_bytes, type));
  }
  std::mt19937 random(1);
  constexpr int reach = 33;  // a vector and a byte
  for (const auto& [size, run] : operations) {
    for (int i = 0; i <= 71 * 2 * reach; ++i) {
      const bool is_last = i == 71 * 2 * reach;
      const int n = !is_last ? i / 2 / reach : &size < &operations[7].first ? 65535 : 70000;
      const int distance = is_last ? 0 : i % (2 * reach) - reach;
      const int from = std::max(-distance, 0), to = std::max(distance, 0);
      std::string start(n * size + reach, '\0');
      for (char& c : start) c = static_cast<char>(random());
      support::GuardedArray<char> got(start);
      for (int k = 0; k < n * size; k += size) run(1, &got[from + k], &got[to + k]);
      const std::string expected(got.begin(), got.end());
      std::copy(start.begin(), start.end(), got.begin());
      run(n, &got[from], &got[to]);
      ASSERT_EQ(std::string(got.begin(), got.end()), expected) << n << ' ' << distance;
    }
  }
}

TEST(Translation, TurnsElementsAsAWhole) {
  std::string text = "tomorecompiler";
  tra_swap_2(&text[0]), tra_swap_4(&text[2]), tra_swap_8(&text[6]);
  EXPECT_EQ(text, "oteromrelipmoc");
  tra_swap_bytes(0x62, 1, &text[0], &text[2]);
  tra_swap_bytes(0x94, 1, &text[2], &text[2]);
  tra_swap_bytes(0xB8, 1, &text[6], &text[6]);
  tra_convert_flpt(3, 0xA4, 2, &text[0], &text[2]);  // no change of format is one move
  tra_convert_flpt(-256, 0xB8, 1, &text[1], &text[0]);
  EXPECT_EQ(text, "totmootccoiler");
  EXPECT_EQ(UtlByteOrderIsIntel() + utl_is_little_endian(), 2);
}

// Every 4099th single (tests/exhaustive takes them all); of both widths every exponent and
// characteristic with fractions beside powers of two; and three million doubles of any bits.
TEST(ConvertFlpt, GivesTheValues) {
  support::walk(24, 0, (1ull << 32) / 4099, 4099);
  for (int i = 0; i < 4096 * 53 && !HasFailure(); ++i) {
    const support::Word word = (i / 53 * 1ull << 52) + (1ull << i % 53);
    support::walk(56, word - 2, 5, 1);
    support::walk(24, word >> 32, 9, 1);
  }
  std::mt19937_64 random(1);
  for (int i = 0; i < 600'000 && !HasFailure(); ++i) support::walk(56, random(), 5, 1);
}

// A checksum of both tables and of the reversed bytes.
TEST(Translation, MapsEachByte) {
  support::FnvDigest digest;
  for (int i = 0; i < 768; ++i) {
    unsigned char byte = i & 255;
    i < 512 ? tra_convert_charset(1 + i / 256, 1, &byte, &byte) : tra_reverse_bits(1, &byte, &byte);
    digest.add(std::uint64_t{byte});
  }
  EXPECT_EQ(digest.value(), 9653993944258988334u);
}

// Words go to one stream; the other is closed. A status of 9 says that the call returned.
TEST(ImpossibleRequestDeathTest, IsReportedOnItsStream) {
  const auto expect = [](int stream, int status, std::string text, auto request) {
    EXPECT_EXIT((dup2(2, stream), close(3 - stream), request(), exit(9)),
                testing::ExitedWithCode(status), "^" + text + "\n$");
  };
  const std::string type = "tra_swap_bytes: invalid primitive type ";
  const std::string code = "tra_convert_charset: invalid conversion ";
  const std::string conversion =
      "ZVN MSG\\(.*tra_prm0.cpp,.+\\): tra_convert_flpt: unimplemented conversion";
  expect(1, 1, type + "0x41", [] { tra_swap_bytes(0x41, 0, nullptr, nullptr); });
  expect(1, 1, type + "00", [] { tra_swap_bytes(0, 1, nullptr, nullptr); });
  expect(1, 1, code + "ffffffff", [] { tra_convert_charset(-1, 0, nullptr, nullptr); });
  expect(1, 1, code + "3", [] { tra_convert_charset(3, 0, nullptr, nullptr); });
  expect(2, 9, conversion, [] { tra_convert_flpt(8, 0xB8, 0, nullptr, nullptr); });
  expect(2, 9, conversion, [] { tra_convert_flpt(4, 0x84, 1, nullptr, nullptr); });
}

}  // namespace
