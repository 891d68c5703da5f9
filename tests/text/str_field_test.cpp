#include <zelvan/text/str_field.h>

#include "support/guarded_array.h"
#include "support/random.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ostream>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// A field as a value. `next` is counted from the start of the text, -1 for null.
struct Field {
  int type;
  double value;
  bool has_text;
  std::string text;
  std::ptrdiff_t next;

  bool operator==(const Field& other) const {
    return type == other.type && std::memcmp(&value, &other.value, sizeof value) == 0 &&
           has_text == other.has_text && text == other.text && next == other.next;
  }
  friend std::ostream& operator<<(std::ostream& out, const Field& f) {
    return out << "type " << f.type << " value " << f.value << " text "
               << (f.has_text ? '[' + f.text + ']' : "null") << " next " << f.next;
  }
};

enum Parser { plain, dollar_is_ordinary, vvcp };

Field parse(Parser parser, char* line, std::ptrdiff_t from) {
  const str_field* f = parser == plain                ? str_parse(line + from)
                       : parser == dollar_is_ordinary ? str_parseEx(line + from, 1)
                                                      : str_parse_vvcp(line + from);
  const bool has_text = f->text != nullptr;
  EXPECT_EQ(f->length, has_text ? std::strlen(f->text) : 0);
  return {f->type, f->value, has_text, has_text ? f->text : "", f->next - line};
}

/// What the parsers should answer, from patterns instead of a scan.
Field model(Parser parser, const std::string& line, std::ptrdiff_t from) {
  const auto start = line.begin() + static_cast<std::ptrdiff_t>(
                                        line.find_first_not_of("\t\n\v\f\r ", from) == line.npos
                                            ? line.size()
                                            : line.find_first_not_of("\t\n\v\f\r ", from));
  const auto field = [&](int type, double value, const std::string& text, auto next) {
    return Field{type, value, type != STR_END && !text.empty(), text, next - line.begin()};
  };
  if (start == line.end() || *start < ' ' || *start == 127) return field(STR_END, 0.0, "", start);

  static const std::regex string_in_quotes[] = {std::regex("\"([^\"$]*)[\"$]?"),
                                                std::regex("\"([^\"]*)\"?"),
                                                std::regex(R"x("((?:\\[\s\S]|[^"\\])*)\\?"?)x")};
  static const std::regex string_in_dollars[] = {
      std::regex(R"x(\$((?:\\[\s\S]|[^"$\\])*)\\?["$]?)x"),
      std::regex(R"x(\$((?:\\[\s\S]|[^"\\])*)\\?"?)x"),
      std::regex(R"x(\$((?:\\[\s\S]|[^"\\])*)\\?"?)x")};
  static const std::regex number(
      R"((?=[.]?\d|[+-]\d|[+-][.]|[+-][\s\S]\d)([+-]?\d*([.]\d*)?)([eE][+-]?(\d{0,3}))?(?= |$))");
  static const std::regex escape(R"(\\([\s\S]))");
  const auto here = std::regex_constants::match_continuous;
  std::smatch m;
  if (*start == '"' || *start == '$') {
    const bool in_quotes = *start == '"';
    std::regex_search(start, line.end(), m,
                      (in_quotes ? string_in_quotes : string_in_dollars)[parser], here);
    const bool escapes = !in_quotes || parser == vvcp;
    const std::string text = escapes ? std::regex_replace(m.str(1), escape, "$1") : m.str(1);
    return field(STR_STRING, 0.0, text, m[0].second);
  }
  if (std::regex_search(start, line.end(), m, number, here)) {
    std::string text = m.str(1);
    const auto digits =
        std::count_if(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (digits > 20) text.resize(text.size() - static_cast<std::size_t>(digits - 20));
    if (m[4].length() > 0) text += m.str(3);
    return field(STR_NUMBER, std::atof(text.c_str()), text, m[0].second);
  }
  const auto end = std::find(start, line.end(), ' ');
  return field(STR_WORD, 0.0, std::string(start, end), end);
}

/// Walks `line` with each parser, field by field, and compares with the model.
void expect_like_model(const std::string& line) {
  support::GuardedArray<char> text(std::string(line.c_str(), line.size() + 1));
  for (const Parser parser : {plain, dollar_is_ordinary, vvcp}) {
    std::ptrdiff_t from = 0;
    int type = STR_WORD;
    for (std::size_t fields = 0; type != STR_END; ++fields) {
      ASSERT_LE(fields, line.size());
      const Field expected = model(parser, line, from);
      const Field got = parse(parser, text.data(), from);
      ASSERT_EQ(got, expected) << "parser " << parser << " at " << from << " of [" << line << ']';
      type = got.type;
      from = got.next;
    }
  }
  ASSERT_EQ(line, text.data()) << "the caller's text was written to";
}

// All short lines over the characters that mean something.
TEST(StrParse, EqualsTheModelOnEveryShortLine) {
  const std::string alphabet = "1.-eE$\"\\ x\t";
  for (int length = 0; length <= 4; ++length) {
    std::string line(static_cast<std::size_t>(length), alphabet.front());
    for (bool is_last = false; !is_last;) {
      expect_like_model(line);
      if (HasFatalFailure()) return;
      is_last = true;
      for (char& c : line) {
        const std::size_t at = alphabet.find(c) + 1;
        c = alphabet[at % alphabet.size()];
        if (at < alphabet.size()) {
          is_last = false;
          break;
        }
      }
    }
  }
}

TEST(StrParse, EqualsTheModelOnRandomLines) {
  const std::vector<std::string> pieces = {
      "\"",   "$", "\\",   "0",    "7",    "123456789", "00000000000", "+",    "-",
      ".",    "e", "E",    "e308", " ",    " ",         "\t",          "\n",   "x",
      "name", ",", "\x01", "\x7f", "\xe9", "\xff",      "9999",        "E-330"};
  support::Random random(4);
  for (int i = 0; i < 20000; ++i) {
    std::string line;
    for (int n = random.below(16); n > 0; --n) line += pieces[random.below(int(pieces.size()))];
    expect_like_model(line);
    if (HasFatalFailure()) FAIL() << "line " << i << " of seed 4";
  }
}

// What the model could share as a misreading, spelled out.
TEST(StrParse, KnowsTheseFields) {
  const struct {
    Parser parser;
    const char* line;
    Field expected;
  } rows[] = {
      {plain, "   ", {STR_END, 0.0, false, "", 3}},
      {plain, "abc,def g", {STR_WORD, 0.0, true, "abc,def", 7}},
      {plain, "12.5 x", {STR_NUMBER, 12.5, true, "12.5", 4}},
      {plain, "12.5x", {STR_WORD, 0.0, true, "12.5x", 5}},
      {plain, "0x10", {STR_WORD, 0.0, true, "0x10", 4}},
      {plain, "1e5", {STR_NUMBER, 100000.0, true, "1e5", 3}},
      {plain, "1e1234", {STR_WORD, 0.0, true, "1e1234", 6}},
      {plain, "12E+", {STR_NUMBER, 12.0, true, "12", 4}},
      {plain, "+ 5", {STR_NUMBER, 0.0, true, "+", 1}},
      {plain, "1e999", {STR_NUMBER, HUGE_VAL, true, "1e999", 5}},
      {plain, "-1e-999", {STR_NUMBER, -0.0, true, "-1e-999", 7}},
      {plain,
       "1234567890123456789012345",
       {STR_NUMBER, 12345678901234567890.0, true, "12345678901234567890", 25}},
      {plain, "\"\"", {STR_STRING, 0.0, false, "", 2}},
      {plain, "$a\\$b$", {STR_STRING, 0.0, true, "a$b", 6}},
      {plain, "\"a$b\"", {STR_STRING, 0.0, true, "a", 3}},
      {dollar_is_ordinary, "\"a$b\"", {STR_STRING, 0.0, true, "a$b", 5}},
      {vvcp, "\"a$\\\"b\"", {STR_STRING, 0.0, true, "a$\"b", 7}},
      {plain, "\"a\\b", {STR_STRING, 0.0, true, "a\\b", 4}},
      {plain, "\x01 a", {STR_END, 0.0, false, "", 0}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(parse(row.parser, const_cast<char*>(row.line), 0), row.expected) << row.line;
  }
  const str_field* none = str_parse(nullptr);
  EXPECT_EQ(none->type, STR_END);
  EXPECT_EQ(none->next, nullptr);
}

// 1599 bytes fit, 1600 are refused as the end, at the field's first character. A number of any
// length is cut to 20 digits and fits.
TEST(StrParse, RefusesAFieldThatDoesNotFit) {
  for (const std::size_t size : {1599u, 1600u, 1601u, 50000u}) {
    const std::string body(size, 'a');
    for (const std::string& field :
         {body, '"' + body + '"', '$' + body + '"', '5' + body.substr(1)}) {
      std::string line = "  " + field + " z";
      for (const Parser parser : {plain, dollar_is_ordinary, vvcp}) {
        const Field got = parse(parser, line.data(), 0);
        EXPECT_EQ(got.type == STR_END, size > 1599) << size;
        EXPECT_EQ(got.text.size(), size > 1599 ? 0 : size);
        EXPECT_EQ(got.next, size > 1599 ? 2 : static_cast<std::ptrdiff_t>(line.size()) - 2);
      }
    }
    std::string number(size, '7');
    EXPECT_EQ(parse(plain, number.data(), 0),
              (Field{STR_NUMBER, 77777777777777777777.0, true, std::string(20, '7'),
                     static_cast<std::ptrdiff_t>(size)}));
  }
}

// Two records and two text buffers, but one buffer for numbers.
TEST(StrParse, SharesOnlyTheBufferOfNumbers) {
  char word[] = "word", other[] = "other", number[] = "1.5", broken[] = "2.5x";
  const str_field* f = str_parse(word);
  const str_field* g = str_parse_vvcp(other);
  EXPECT_NE(f, g);
  EXPECT_EQ(f, str_parseEx(word, 1));
  EXPECT_STREQ(f->text, "word");
  EXPECT_STREQ(g->text, "other");
  f = str_parse(number);
  str_parse_vvcp(broken);  // read as a number before it turns out to be a word
  EXPECT_EQ(f->value, 1.5);
  EXPECT_STREQ(f->text, "2.5");
}

/// Tokens of `text` with what ended each, as "token|found" items.
std::vector<std::string> tokens(std::string text, std::string delimiters) {
  std::vector<std::string> result;
  char* next = text.data();
  while (next != nullptr) {
    char found = '?';
    const char* token = str_token(next, delimiters.data(), &next, &found);
    result.push_back((token == nullptr ? "null" : std::string(token)) + '|' +
                     (found == '\0' ? "" : std::string(1, found)));
  }
  return result;
}

TEST(StrToken, CutsAtDelimitersOutsideQuotesAndEscapes) {
  using Tokens = std::vector<std::string>;
  EXPECT_EQ(tokens("a,\"b,c\",d", ","), (Tokens{"a|,", "\"b,c\"|,", "d|"}));
  EXPECT_EQ(tokens("  a ;,x", ",;"), (Tokens{"a |;", "null|,", "x|"}));
  EXPECT_EQ(tokens("a\\,b,c\\", ","), (Tokens{"a\\,b|,", "c\\|"}));
  EXPECT_EQ(tokens("\"\",a\",b", ","), (Tokens{"\"\",a\"|,", "b|"}));
  EXPECT_EQ(tokens("a\"b,c", ","), (Tokens{"a\"b,c|"}));
  EXPECT_EQ(tokens("a,b", ""), (Tokens{"a,b|"}));
  EXPECT_EQ(tokens("   ", ","), (Tokens{"null|"}));
  EXPECT_EQ(tokens("a,", ","), (Tokens{"a|,", "null|"}));
}

TEST(StrLowerString, TouchesAsciiCapitalsOnly) {
  std::string all, expected;
  for (int c = 1; c < 256; ++c) {
    all += static_cast<char>(c);
    expected += static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  }
  str_lower_string(all.data());
  EXPECT_EQ(all, expected);
}

}  // namespace
