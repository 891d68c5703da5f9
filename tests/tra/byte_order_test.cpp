#include <zelvan/tra/byte_order.h>

#include <string>

#include <gtest/gtest.h>

TEST(SwapInPlace, ReversesBytesAtAnyAlignment) {
  std::string text = "-ab1234abcdefgh-";
  tra_swap_2(&text[1]);
  tra_swap_4(&text[3]);
  tra_swap_8(&text[7]);
  EXPECT_EQ(text, "-ba4321hgfedcba-");
}

TEST(ByteOrder, IsThatOfEveryMachineTheLibraryIsBuiltFor) {
  EXPECT_EQ(UtlByteOrderIsIntel(), 1);
  EXPECT_EQ(utl_is_little_endian(), 1);
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

TEST(ReverseBits, SwapsBitZeroWithBitSevenAndSoOn) {
  std::string bytes = "\x01\x92\x01";  // 0000'0001, 1001'0010 and a byte beyond the count
  tra_reverse_bits(2, bytes.data(), bytes.data());
  EXPECT_EQ(bytes, "\x80\x49\x01");
}
