#include <zelvan/tra/byte_order.h>
#include <zelvan/tra/character_sets.h>

#include "support/guarded_array.h"
#include "tra/float_models.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using support::Double;
using support::Single;

struct Operation {
  int size;  // of an element
  std::function<void(unsigned short count, const void* src, void* dst)> run;
};

// An array is its elements one after the other, at every length, at any alignment, and for
// every way in which the two buffers can overlap; in place is the distance 0.
TEST(Translation, TakesTheElementsOneByOneInAscendingOrder) {
  std::vector<Operation> operations = {{1, tra_reverse_bits},
                                       {1, std::bind_front(tra_convert_charset, 1)},
                                       {4, std::bind_front(tra_convert_flpt, 5, 0xA4)},
                                       {4, std::bind_front(tra_convert_flpt, 0x113, 0xA4)},
                                       {8, std::bind_front(tra_convert_flpt, -256 + 4, 0xB8)},
                                       {8, std::bind_front(tra_convert_flpt, 16, 0xB8)}};
  for (const int type : {0x42, 0x52, 0x62, 0x74, 0x84, 0x94, 0xA4, 0xB8}) {
    operations.push_back({type & 15, std::bind_front(tra_swap_bytes, type)});
  }
  std::mt19937 engine(1);
  constexpr int reach = 33;  // a vector and a byte
  for (const auto& [size, run] : operations) {
    for (int n = 0; n <= 70; ++n) {
      std::vector<unsigned char> start(n * size + reach);
      std::generate(start.begin(), start.end(), std::ref(engine));
      support::GuardedArray<unsigned char> got(start.size());
      for (int distance = -reach; distance <= reach; ++distance) {
        const int from = std::max(-distance, 0), to = std::max(distance, 0);
        auto expected = start;
        for (int i = 0; i < n * size; i += size) run(1, &expected[from + i], &expected[to + i]);
        std::copy(start.begin(), start.end(), got.begin());
        run(static_cast<unsigned short>(n), got.data() + from, got.data() + to);
        ASSERT_TRUE(std::equal(got.begin(), got.end(), expected.begin()))
            << n << " elements of " << size << " bytes, " << distance << " apart";
      }
    }
  }
}

TEST(Translation, TurnsElementsAsAWhole) {
  std::string text = "tomorecompiler", bits = "\x01\xF0\xA5\x53";
  tra_swap_2(&text[0]);
  tra_swap_4(&text[2]);
  tra_swap_8(&text[6]);
  tra_reverse_bits(4, bits.data(), bits.data());
  EXPECT_EQ(text + bits, "oteromrelipmoc\x80\x0F\xA5\xCA");
  for (const int type : {0x42, 0x52, 0x62, 0x74, 0x84, 0x94, 0xA4, 0xB8}) {
    std::string in = "compiler", out = in;
    tra_swap_bytes(static_cast<unsigned short>(type), 1, in.data(), out.data());
    std::reverse(in.begin(), in.begin() + (type & 15));
    EXPECT_EQ(out, in) << type;
  }
  tra_convert_flpt(3, 0xB8, 1, &text[0], &text[2]);  // no change of format is one move
  EXPECT_EQ(text, "ototeromrepmoc");
  EXPECT_EQ(UtlByteOrderIsIntel() + utl_is_little_endian(), 2);
}

// Every 4099th single (tests/exhaustive takes them all); of the doubles every exponent and
// characteristic with fractions beside each power of two, and ten million of any bits.
TEST(ConvertFlpt, GivesTheValues) {
  support::walk<Single>(0, 1ull << 32, 4099);
  for (Double i = 0; i < 4096 * 53; ++i) {
    const Double word = (i / 53 << 52) + (1ull << i % 53);
    support::walk<Double>(word - 2, word + 2, 1);
  }
  std::mt19937_64 engine(1);
  for (int i = 0; i < 10'000'000; ++i) {
    const Double word = engine();
    support::walk<Double>(word, word + 1, 1);
  }
  EXPECT_EQ(support::ibm_of(Double{0xC05DA80000000000}), 0xC276A00000000000) << "-118.625";
  EXPECT_EQ(support::ibm_of(Single{0x007FFFFF}), 0x213FFFFF) << "a denormal loses its last bit";
  EXPECT_EQ(support::ieee_of(Double{0x410F000000000000}), 0x3FEE000000000000) << "0.9375";
  EXPECT_EQ(support::ieee_of(Single{0x61100000}), 0x7F800000) << "infinity";
}

// A checksum of all 256 places (FNV-1a), and a few of them spelled out to find the way by.
TEST(ConvertCharset, HoldsBothTables) {
  const struct {
    short code;
    Double checksum;
    std::string in, out;
  } rows[] = {
      {1, 0xd03ac6d6642c4b3d, "Az09 \xA0_[\n~\x13", {"\xC1\xA9\xF0\xF9@@\xBF\xAD%\xA1", 11}},
      {2, 0x50de4f1a9ce368b6, "\xC1\xA9\xF0\xB9@\x6D\xBF\x6A\x25\x8B", "Az09 _-|\n{"}};
  for (auto [code, checksum, in, out] : rows) {
    Double sum = 0xcbf29ce484222325;
    for (int i = 0; i < 256; ++i) {
      auto byte = static_cast<unsigned char>(i);
      tra_convert_charset(code, 1, &byte, &byte);
      sum = (sum ^ byte) * 0x100000001b3;
    }
    EXPECT_EQ(sum, checksum) << code;
    tra_convert_charset(code, static_cast<unsigned short>(in.size()), in.data(), in.data());
    EXPECT_EQ(in, out) << code;
  }
}

TEST(ImpossibleRequestDeathTest, IsReportedOnItsStream) {
  const std::string unimplemented =
      "ZVN MSG\\(.*tra_prm0.cpp,[0-9]+\\): tra_convert_flpt: unimplemented conversion";
  const struct {
    int stream, status;
    std::function<void()> request;
    std::string text;
  } rows[] = {
      {1, 1, [] { tra_swap_bytes(0x41, 0, 0, 0); }, "tra_swap_bytes: invalid primitive type 0x41"},
      {1, 1, [] { tra_swap_bytes(0, 1, 0, 0); }, "tra_swap_bytes: invalid primitive type 00"},
      {1, 1, [] { tra_convert_charset(-1, 0, 0, 0); }, "tra_convert_charset: .* ffffffff"},
      {2, 9, [] { tra_convert_flpt(8, 0xB8, 0, 0, 0); }, unimplemented},
      {2, 9, [] { tra_convert_flpt(4, 0x84, 1, 0, 0); }, unimplemented}};
  for (const auto& row : rows) {  // the other stream leads nowhere, and 9 says that it returned
    EXPECT_EXIT((dup2(2, row.stream), close(3 - row.stream), row.request(), exit(9)),
                testing::ExitedWithCode(row.status), "^" + row.text + "\n$");
  }
}

}  // namespace
