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

TEST(StrField, CutsFieldsAndTokens) {
  EXPECT_EQ(fields(plain, "\tab,c 12x -1."), "Wab,c=0,4@5 W12x=0,3@9 N-1.=-1,3@13 E~=0,0@13 ");
  EXPECT_EQ(fields(plain, "$a\\$b$ \"\""), "Sa$b=0,3@6 S~=0,0@9 E~=0,0@9 ");
  EXPECT_EQ(fields(dollar_is_ordinary, "\"a$b\" $c"), "Sa$b=0,3@5 Sc=0,1@8 E~=0,0@8 ");
  EXPECT_EQ(fields(vvcp, "\"a\\\"$b\" $c\\$\\"), "Sa\"$b=0,4@7 Sc$=0,2@13 E~=0,0@13 ");
  EXPECT_TRUE(str_parse(nullptr)->type == STR_END && str_parse(nullptr)->next == nullptr);
  EXPECT_EQ(tokens("a\\,b,\"b,c\",  d ;,e", ",;"), "a\\,b|,\"b,c\"|,d |;none|,e|0");
}

// All lines of up to four of the characters that mean something; then longer ones, with runs about
// as long as a number can be, or as a field: 1599 bytes are the most. In these 1 is any digit, and
// a control character is any byte.
TEST(StrField, KeepsEveryResult) {
  const std::string digits = "11111111111111111111.11e", few = "1.-eE$\"\\ x\t",
                    more = "1111.+--eE$\"\\  x\t\n\v\f\r\x01\x01";
  support::FnvDigest digest;
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
    std::string results = tokens(line, i % 3 == 0 ? "" : i % 3 == 1 ? " .\"" : "x\\");
    for (int parser : {plain, dollar_is_ordinary, other_mode, vvcp})
      results += fields(parser, line);
    str_lower_string(line.data());
    for (const char c : results + line) digest.add(c);
  }
  EXPECT_EQ(digest.value(), 0xbe385e4976f1818du);
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

}  // namespace
