#include <zelvan/tra/byte_order.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

TEST(SwapInPlace, ReversesBytesAtAnyAlignment) {
  std::string text = "-ab1234abcdefgh-";
  tra_swap_2(&text[1]);
  tra_swap_4(&text[3]);
  tra_swap_8(&text[7]);
  EXPECT_EQ(text, "-ba4321hgfedcba-");
}

TEST(SwapBytes, ReversesEachElementOfItsTypesSize) {
  const auto expect = [](unsigned short type, unsigned count, const std::string& expected) {
    const std::string source = "0123456789abcdef";
    std::string swapped(source.size(), '.');
    tra_swap_bytes(type, count, source.data(), swapped.data());
    EXPECT_EQ(swapped, expected) << std::hex << "type 0x" << type;
  };
  for (const int type : {0x42, 0x52, 0x62}) expect(type, 7, "1032547698badc..");
  for (const int type : {0x74, 0x84, 0x94, 0xA4}) expect(type, 3, "32107654ba98....");
  expect(0xB8, 1, "76543210........");
}

TEST(SwapBytes, FinishesAnElementBeforeTheNext) {
  std::string text = "ab......";
  tra_swap_bytes(0x42, 3, &text[0], &text[2]);
  EXPECT_EQ(text, "abbaabba") << "each target is the next source";
}

// A death test reads descriptor 2; here standard output takes its place.
TEST(SwapBytesDeathTest, EndsTheProcessOnAnUnknownType) {
  const auto swap_nothing = [](unsigned short type) {
    dup2(2, 1);
    close(2);
    tra_swap_bytes(type, 0, nullptr, nullptr);
  };
  EXPECT_EXIT(swap_nothing(0x41), testing::ExitedWithCode(1),
              "^tra_swap_bytes: invalid primitive type 0x41\n$");
}

TEST(ReverseBits, SwapsBitZeroWithBitSevenAndSoOn) {
  const unsigned char source[] = {0b0000'0001, 0b1001'0010, 0b0011'0111, 0b0000'0001};
  std::vector<unsigned char> reversed(4);
  tra_reverse_bits(3, source, reversed.data());
  EXPECT_EQ(reversed, (std::vector<unsigned char>{0b1000'0000, 0b0100'1001, 0b1110'1100, 0}));
}

TEST(ByteOrder, IsLittleEndian) {
  EXPECT_EQ(UtlByteOrderIsIntel(), 1);
  EXPECT_EQ(utl_is_little_endian(), 1);
}

}  // namespace
