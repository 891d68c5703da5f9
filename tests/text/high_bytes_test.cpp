// The parser asks the C library about bytes above 127. The linker replaces `isspace` and `isprint`
// by those of a Latin-1 locale: bytes from 0xA0 on are printable, but the parser passes 0xFF as
// EOF.
#include <zelvan/text/str_field.h>

#include <gtest/gtest.h>

extern "C" {
int __wrap_isspace(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
int __wrap_isprint(int c) { return (c >= ' ' && c <= '~') || (c >= 0xA0 && c <= 0xFF); }
}

TEST(StrParse, AsksTheCLibraryAboutHighBytes) {
  char letter[] = "\xE4hnlich";
  char end_of_file[] = "\xFF";
  char within[] = "y\xFF";
  EXPECT_EQ(str_parse(letter)->type, STR_WORD) << "a letter of Latin-1 begins a word";
  EXPECT_EQ(str_parse(end_of_file)->type, STR_END) << "0xFF is printable in no locale";
  EXPECT_EQ(str_parse(within)->length, 2u) << "within a word nothing is asked";
}
