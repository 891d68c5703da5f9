// Bytes above 127, of which the parser asks the C library. The linker puts a C library in its place
// whose locale is Latin-1, as the process has it after setlocale(LC_CTYPE, "de_DE.ISO-8859-1").
#include <zelvan/text/str_field.h>

#include <cstdio>

#include <gtest/gtest.h>

namespace {

/// False once a function was asked about what is neither a byte nor EOF, which it need not know.
bool asks_rightly = true;

bool is_known(int c) { return c == EOF || (c >= 0 && c <= 0xFF); }

}  // namespace

extern "C" {
int __wrap_isspace(int c) {
  asks_rightly = asks_rightly && is_known(c);
  return c == ' ' || (c >= '\t' && c <= '\r') || c == 0xA0;
}
int __wrap_isprint(int c) {
  asks_rightly = asks_rightly && is_known(c);
  return (c >= ' ' && c <= '~') || (c >= 0xA0 && c <= 0xFF);
}
}

TEST(StrParse, AsksTheCLibraryOfHighBytesByTheirSignedValue) {
  const struct {
    const char* text;
    int type;
    int next;
    const char* why;
  } rows[] = {
      {"\xE4hnlich", STR_WORD, 7, "a letter of Latin-1 begins a word"},
      {"\xFF", STR_END, 0, "-1 is EOF, which is not printable"},
      {"\xFFx", STR_END, 0, "nor is it stepped over"},
      {"y\xFF", STR_WORD, 2, "within a word nothing is asked"},
      {"\xA0\xA0x", STR_WORD, 3, "a blank of Latin-1 is skipped"},
  };
  for (const auto& row : rows) {
    char text[16];
    std::snprintf(text, sizeof text, "%s", row.text);
    const str_field* const field = str_parse(text);
    EXPECT_EQ(field->type, row.type) << row.why;
    EXPECT_EQ(field->next - text, row.next) << row.why;
  }
  EXPECT_TRUE(asks_rightly);
}
