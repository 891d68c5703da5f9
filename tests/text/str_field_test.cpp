#include <zelvan/text/str_field.h>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"

#include <cstdio>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

namespace {

/// A copy of `line` that ends at a page which can't be read, until the next one is made.
char* flush_copy(const std::string& line) {
  static support::GuardedArray<char> room(50000);
  return std::strcpy(room.end() - line.size() - 1, line.c_str());
}

constexpr int plain = 0, dollar_is_ordinary = 1, other_mode = 2, vvcp = 3;

/// The fields of `line`, each a W(ord), S(tring), N(umber) or E(nd) with its text, value, length
/// and the place of `next`.
std::string fields(int parser, const std::string& line) {
  char *const text = flush_copy(line), *p = text, numbers[80];
  std::string result;
  for (int type = STR_WORD; type != STR_END;) {
    const str_field* const f = parser == vvcp    ? str_parse_vvcp(p)
                               : parser == plain ? str_parse(p)
                                                 : str_parseEx(p, parser);
    type = f->type, p = f->next;
    std::snprintf(numbers, 80, "=%.17g,%d@%d ", f->value, int(f->length), int(p - text));
    result += "WSNE"[type] + std::string(f->text == nullptr ? "~" : f->text) + numbers;
  }
  EXPECT_EQ(line, text) << "the caller's text was written to";
  return result;
}

TEST(StrParse, CutsFields) {
  EXPECT_EQ(fields(plain, "\tab,c 12x -x\t"), "Wab,c=0,4@5 W12x=0,3@9 W-x\t=0,3@13 E~=0,0@13 ");
  EXPECT_EQ(fields(plain, "-1. +.5 1e1234"), "N-1.=-1,3@3 N+.5=0.5,3@7 W1e1234=0,6@14 E~=0,0@14 ");
  EXPECT_EQ(fields(plain, "12E 1e+5 - 5"),
            "N12=12,2@3 N1e+5=100000,4@8 N-=0,1@10 N5=5,1@12 E~=0,0@12 ");
  EXPECT_EQ(fields(plain, "1234567890.123456789012e1"),
            "N1234567890.1234567890e1=12345678901.234568,23@25 E~=0,0@25 ");
  EXPECT_EQ(fields(plain, "\"\" \"a\\$b \x01"), "S~=0,0@2 Sa\\=0,2@7 Wb=0,1@8 E~=0,0@9 ");
  EXPECT_EQ(fields(plain, "$a\\$b$ \"c"), "Sa$b=0,3@6 Sc=0,1@9 E~=0,0@9 ");
  EXPECT_EQ(fields(dollar_is_ordinary, "\"a$b\" $c\"d"),
            "Sa$b=0,3@5 Sc=0,1@9 Wd=0,1@10 E~=0,0@10 ");
  EXPECT_EQ(fields(vvcp, "\"a\\\"$b\" $c\\$\\"), "Sa\"$b=0,4@7 Sc$=0,2@13 E~=0,0@13 ");
  EXPECT_TRUE(str_parse(nullptr)->type == STR_END && str_parse(nullptr)->next == nullptr);
}

// All lines of up to four of the characters that mean something; then longer ones, with runs about
// as long as a number can be, or as a field: 1599 bytes are the most. In these 1 is any digit, and
// a control character is any byte.
TEST(StrParse, KeepsEveryField) {
  const std::string digits = "11111111111111111111.11e", few = "1.-eE$\"\\ x\t",
                    more = "1111.+--eE$\"\\  x\t\n\v\f\r\x01\x01";
  support::Digest digest;
  support::Random random(4);
  for (int i = -16104; i <= 20000; ++i) {
    std::string line;
    for (int n = -i; n > 0; n = (n - 1) / 11) line += few[(n - 1) % 11];
    if (i > 0 && i % 4 == 0)
      line = digits.substr(random.below(24)) + std::to_string(i % 701 - 350) + ' ';
    for (int n = i > 0 ? random.below(16) : 0; n > 0; --n) {
      const char c = more[random.below(more.size())];
      const int length = random.below(99) == 0 ? 1595 : random.below(4) == 0 ? 25 : 4;
      line.append(length - random.below(3) - 1, c);
    }
    for (char& c : line) {
      if (c == '1' && i > 0) c = static_cast<char>('0' + random.below(10));
      if (c == '\x01') c = static_cast<char>(1 + random.below(255));
    }
    for (int parser : {plain, dollar_is_ordinary, other_mode, vvcp}) {
      for (const char c : fields(parser, line)) digest.add(c);
    }
  }
  EXPECT_EQ(digest.value(), 0x680d3348baccd85bu);
}

// Two records and two text buffers, but one buffer for numbers.
TEST(StrParse, SharesOnlyTheBufferOfNumbers) {
  char word[] = "word", other[] = "other", number[] = "1.5", broken[] = "2.5x";
  const str_field *f = str_parseEx(word, 1), *g = str_parse_vvcp(other);
  EXPECT_EQ(f->text + std::string(g->text), "wordother");
  EXPECT_EQ(f, str_parse(number));
  str_parse_vvcp(broken);  // read as a number before it turns out to be a word
  EXPECT_EQ(f->text + std::to_string(f->value), "2.51.500000");
}

/// The tokens of `line`, each with what ended it behind a bar.
std::string tokens(const std::string& line, std::string delimiters) {
  std::string result;
  for (char* next = flush_copy(line); next != nullptr;) {
    char found = '?';
    const char* token = str_token(next, delimiters.data(), &next, &found);
    result += (token == nullptr ? "none" : token) + std::string(1, '|') + (found ? found : '0');
  }
  return result;
}

TEST(StrToken, CutsAtDelimitersOutsideQuotesAndEscapes) {
  EXPECT_EQ(tokens("a,\"b,c\",  d ;,e", ",;"), "a|,\"b,c\"|,d |;none|,e|0");
  EXPECT_EQ(tokens("a\\,b,\"\",a\",b,\"c,d\\", ","), "a\\,b|,\"\",a\"|,b|,\"c,d\\|0");
  support::Digest digest;
  for (int i = 0; i < 1 << 18; ++i) {  // all lines of six of these
    std::string line;
    for (int n = 0; n < 18; n += 3) line += "a,\" \\;\t\""[i >> n & 7];
    for (const char c : tokens(line, i % 3 == 0 ? "" : i % 3 == 1 ? " ;\"" : ",\\")) digest.add(c);
  }
  EXPECT_EQ(digest.value(), 0x1aac45bbfaa409f9u);
}

TEST(StrLowerString, TouchesAsciiCapitalsOnly) {
  for (int c = 1; c < 256; ++c) {
    char text[] = {static_cast<char>(c), 'Z', '\0'};
    str_lower_string(text);
    EXPECT_EQ(text[0], static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c));
    EXPECT_EQ(text[1], 'z');
  }
}

}  // namespace
