#include <zelvan/text/str_field.h>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <regex>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace {

enum Parser { plain, dollar_is_ordinary, vvcp };
using Field = std::tuple<int, std::uint64_t, std::string, std::ptrdiff_t>;

Field field(int type, double value, const char* text, std::ptrdiff_t next) {
  return {type, support::bits(value), text == nullptr ? "none" : text, next};
}

/// What a parser should make of `line` from `p` on, with a pattern for numbers.
Field model(Parser parser, const char* line, const char* p) {
  static const std::regex number(
      R"((?=[.]?\d|[+-]\d|[+-][.]|[+-][\s\S]\d)([+-]?\d*([.]\d*)?)([eE][+-]?(\d{0,3}))?(?= |$))");
  p += std::strspn(p, " \t\n\v\f\r");
  const char* next = p + std::strcspn(p, " ");
  std::string text(p, next);
  std::cmatch m;
  int type = STR_WORD;
  if (*p == '"' || *p == '$') {
    const bool escapes = *p == '$' || parser == vvcp;
    type = STR_STRING, text = "", next = p + 1;
    for (; *next != '\0' && *next != '"' && (*next != '$' || parser != plain); ++next) {
      if (*next == '\\' && escapes && *++next == '\0') break;
      text += *next;
    }
    next += *next != '\0';
  } else if (std::regex_search(p, m, number, std::regex_constants::match_continuous)) {
    type = STR_NUMBER, text = m.str(1), next = m[0].second;
    const auto digits = std::count_if(text.begin(), text.end(), [](char c) { return c >= '0'; });
    text.resize(text.size() - static_cast<std::size_t>(std::max<std::ptrdiff_t>(digits - 20, 0)));
    if (m[4].length() > 0) text += m.str(3);
  }
  if (*p < ' ' || *p == 127 || text.size() > 1599) return field(STR_END, 0.0, nullptr, p - line);
  return field(type, type == STR_NUMBER ? std::atof(text.c_str()) : 0.0,
               text.empty() ? nullptr : text.c_str(), next - line);
}

/// Walks `line` with each parser, field by field, and compares with the model.
void expect_like_model(const std::string& line) {
  support::GuardedArray<char> text(std::string(line.c_str(), line.size() + 1));
  for (const Parser parser : {plain, dollar_is_ordinary, vvcp}) {
    str_field* f = nullptr;
    for (char* p = text.data(); f == nullptr || f->type != STR_END; p = f->next) {
      f = parser == vvcp                    ? str_parse_vvcp(p)
          : parser == plain && f == nullptr ? str_parse(p)
                                            : str_parseEx(p, parser == plain ? 2 : 1);
      ASSERT_EQ(field(f->type, f->value, f->text, f->next - text.data()),
                model(parser, text.data(), p))
          << parser << " of [" << line << ']';
      ASSERT_EQ(f->length, f->text == nullptr ? 0 : std::strlen(f->text));
    }
  }
  ASSERT_EQ(line, text.data()) << "the caller's text was written to";
}

// All lines of up to four of the characters that mean something; then longer ones, with runs of
// one character about as long as a number can be, or as a field: 1599 bytes are the most.
TEST(StrParse, EqualsTheModel) {
  const std::string alphabet = "1.-eE$\"\\ x\t", more = "10987654.+--eE$\"\\  x\t\n\x01\x7f\xe9";
  for (int number = 0; number < 16105 && !HasFatalFailure(); ++number) {
    std::string line;
    for (int n = number; n > 0; n = (n - 1) / 11) line += alphabet[(n - 1) % 11];
    expect_like_model(line);
  }
  support::Random random(4);
  for (int i = 0; i < 50000 && !HasFatalFailure(); ++i) {
    std::string line;
    for (int n = random.below(16); n > 0; --n) {
      const int length = random.below(99) == 0 ? 1594 : random.below(4) == 0 ? 24 : 3;
      line.append(length + random.below(3) - 2, more[random.below(more.size())]);
    }
    expect_like_model(line);
  }
  char overflow[] = "-1e999", underflow[] = "-1e-999";
  EXPECT_EQ(str_parse(overflow)->value, -HUGE_VAL);
  EXPECT_EQ(support::bits(str_parse(underflow)->value), support::bits(-0.0));
  EXPECT_TRUE(str_parse(nullptr)->type == STR_END && str_parse(nullptr)->next == nullptr);
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

/// The tokens of `text`, each with what ended it behind a bar.
std::string tokens(const std::string& line, std::string delimiters) {
  support::GuardedArray<char> text(std::string(line.c_str(), line.size() + 1));
  std::string result;
  for (char* next = text.data(); next != nullptr;) {
    char found = '?';
    const char* token = str_token(next, delimiters.data(), &next, &found);
    result += (token == nullptr ? "none" : token) + std::string(1, '|') + (found ? found : '0');
  }
  return result;
}

TEST(StrToken, CutsAtDelimitersOutsideQuotesAndEscapes) {
  EXPECT_EQ(tokens("a,\"b,c\",  d ;,e", ",;"), "a|,\"b,c\"|,d |;none|,e|0");
  EXPECT_EQ(tokens("a\\,b,\"\",a\",b,\"c,d\\", ","), "a\\,b|,\"\",a\"|,b|,\"c,d\\|0");
  EXPECT_EQ(tokens("a, ", ","), "a|,none|0");
  EXPECT_EQ(tokens(" a, \\", ""), "a, \\|0");
}

TEST(StrLowerString, TouchesAsciiCapitalsOnly) {
  for (int c = 1; c < 256; ++c) {
    char text[] = {static_cast<char>(c), '\0'};
    str_lower_string(text);
    EXPECT_EQ(text[0], static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c));
  }
}

}  // namespace
