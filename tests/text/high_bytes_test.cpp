// Bytes above 127, of which the parser asks the C library. The linker puts one in its place whose
// locale is Latin-1, where -1 is EOF and every byte from 0xA0 on is printable.
#include <zelvan/text/str_field.h>

#include <cstdio>

#include <gtest/gtest.h>

extern "C" {
int __wrap_isspace(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
int __wrap_isprint(int c) { return (c >= ' ' && c <= '~') || (c >= 0xA0 && c <= 0xFF); }
}

TEST(StrParse, AsksTheCLibraryOfHighBytesByTheirSignedValue) {
  const struct {
    const char* text;
    int type;
    const char* why;
  } rows[] = {
      {"\xE4hnlich", STR_WORD, "a letter of Latin-1 begins a word"},
      {"\xFF", STR_END, "-1 is EOF, which is not printable"},
      {"y\xFF", STR_WORD, "within a word nothing is asked"},
  };
  for (const auto& row : rows) {
    char text[16];
    std::snprintf(text, sizeof text, "%s", row.text);
    EXPECT_EQ(str_parse(text)->type, row.type) << row.why;
  }
}
