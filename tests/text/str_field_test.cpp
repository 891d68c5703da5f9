#include <zelvan/text/read_field.h>
#include <zelvan/text/str_field.h>

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>
#include <support/random.h>

namespace {

using zelvan::string_rules;

/// A parser that writes into the library's record, and the rules with which `read_field` must
/// agree.
struct Parser {
  str_field* (*parse)(char* text);
  string_rules rules;
};
constexpr Parser plain = {str_parse, string_rules::of_str_parse};
constexpr Parser mode_1 = {[](char* text) { return str_parseEx(text, 1); },
                           string_rules::of_str_parse_mode_1};
constexpr Parser vvcp = {str_parse_vvcp, string_rules::of_str_parse_vvcp};

/// Describes a field in one line: kind, text, value of a number, and what is left of the input.
std::string described(const str_field* field, const std::string& input) {
  static constexpr const char* kinds[] = {"word", "string", "number", "end"};
  const std::string text = field->text == nullptr ? "" : field->text;
  std::string line = kinds[field->type];
  line += field->text == nullptr ? " without text" : " '" + text + "'";
  if (field->length != text.size()) line += " of another length";
  if (field->type == STR_NUMBER || field->value != 0.0) {
    line += " = " + std::to_string(field->value);
  }
  return line + ", left '" + input.substr(field->next - input.data()) + "'";
}

void expect_field(const Parser& parser, std::string input, const char* expected, const char* why) {
  SCOPED_TRACE("input '" + input + "': " + why);
  zelvan::field_record record;
  EXPECT_EQ(described(parser.parse(input.data()), input), expected);
  EXPECT_EQ(described(zelvan::read_field(input.data(), &record, parser.rules), input), expected);
}

TEST(StrParse, TakesAWordUpToABlankOrTheEnd) {
  expect_field(plain, "abc def", "word 'abc', left ' def'", "a blank ends it");
  expect_field(plain, " \t\n abc", "word 'abc', left ''", "white space is skipped before");
  expect_field(plain, "a,b\tc", "word 'a,b\tc', left ''", "and nothing else ends it");
  expect_field(plain, "a\"b$", "word 'a\"b$', left ''", "quotes within are ordinary");
}

TEST(StrParse, TakesAStringUpToEitherCloser) {
  expect_field(plain, "\"a b\" c", "string 'a b', left ' c'", "quotes keep blanks");
  expect_field(plain, "\"a$b\"", "string 'a', left 'b\"'", "a dollar closes what quotes opened");
  expect_field(plain, "$a\"b", "string 'a', left 'b'", "quotes close what a dollar opened");
  expect_field(plain, "$a\\$b\\\\$", "string 'a$b\\', left ''", "a backslash escapes the next");
  expect_field(plain, "\"a\\\"b", "string 'a\\', left 'b'", "but not within quotes");
  expect_field(plain, "\"\"x", "string without text, left 'x'", "an empty string has no text");
  expect_field(plain, "$a\\", "string 'a', left ''", "a last backslash is dropped");
}

TEST(StrParse, TakesANumberThatStandsByItself) {
  expect_field(plain, "12.5 x", "number '12.5' = 12.500000, left ' x'", "up to the blank");
  expect_field(plain, "1.", "number '1.' = 1.000000, left ''", "a point without decimals");
  expect_field(plain, "2E+003", "number '2E+003' = 2000.000000, left ''", "of 3 digits at most");
  expect_field(plain, "12E", "number '12' = 12.000000, left ''", "an E without digits is skipped");
  expect_field(plain, "1e1234", "word '1e1234', left ''", "4 digits are too many");
  expect_field(plain, "12\tx", "word '12\tx', left ''", "a tab follows, which is no blank");
  expect_field(plain, ".", "word '.', left ''", "a point without a digit");
  expect_field(plain, "-", "word '-', left ''", "a sign alone");
  expect_field(plain, "-ab", "word '-ab', left ''", "a sign before letters");
  expect_field(plain, "+ 5", "number '+' = 0.000000, left ' 5'", "a digit two places on");
  expect_field(plain, "-. ", "number '-.' = 0.000000, left ' '", "without a digit not -0.0");
}

TEST(StrParse, KeepsTwentyDigitsOfANumber) {
  const std::string digits = "12345678901234567890";
  std::string longer = digits + "12345 x";
  const str_field* const field = str_parse(longer.data());
  EXPECT_STREQ(field->text, digits.c_str());
  EXPECT_EQ(field->value, 12345678901234567890.0) << "the value shrinks with the text";
  EXPECT_STREQ(field->next, " x");
  std::string decimals = "-0." + digits + "e2";
  EXPECT_STREQ(str_parse(decimals.data())->text, "-0.1234567890123456789e2")
      << "the zero before the point counts";
}

TEST(StrParse, EndsAtTheEndAndAtWhatCannotStartAField) {
  expect_field(plain, "", "end without text, left ''", "an empty text");
  expect_field(plain, " \x01z", "end without text, left '\x01z'", "a control character");
  expect_field(plain, "\xC4z", "end without text, left '\xC4z'", "no letter in the locale C");
  const str_field* const field = str_parse(nullptr);
  EXPECT_EQ(field->type, STR_END);
  EXPECT_EQ(field->next, nullptr);
}

TEST(StrParse, RefusesATextBeyondItsBuffer) {
  for (const std::string opening : {"", "\"", "$"}) {
    std::string fits = opening + std::string(1599, 'w');
    EXPECT_EQ(str_parse(fits.data())->length, 1599u) << opening;
    std::string too_long = " " + opening + std::string(1600, 'w') + " x";
    const str_field* const field = str_parse(too_long.data());
    EXPECT_EQ(field->type, STR_END) << opening;
    EXPECT_EQ(field->next, too_long.data() + 1) << opening;
  }
}

TEST(ReadField, LeavesTheRecordsOfOthersAlone) {
  char word[] = "word";
  const str_field* const of_parse = str_parse(word);
  zelvan::field_record first, second;
  zelvan::read_field("first", &first);
  zelvan::read_field("2.25", &second);
  EXPECT_STREQ(of_parse->text, "word");
  EXPECT_STREQ(first.field.text, "first");
  EXPECT_EQ(zelvan::read_field(nullptr, &first)->next, nullptr);
}

TEST(StrParseEx, LetsADollarStandInAStringInModeOne) {
  expect_field(mode_1, "\"a$b\" c", "string 'a$b', left ' c'", "within quotes");
  expect_field(mode_1, "$a\\\"b\"", "string 'a\"b', left ''", "a backslash still escapes");
  std::string input = "\"a$b\"";
  EXPECT_STREQ(str_parseEx(input.data(), 2)->text, "a") << "any other mode is that of str_parse";
}

TEST(StrParseVvcp, ClosesByQuotesAloneAndEscapesInBothKinds) {
  expect_field(vvcp, "\"a$b\\\"c\" d", "string 'a$b\"c', left ' d'", "in quotes");
  expect_field(vvcp, "$a$b\\\"c\"d", "string 'a$b\"c', left 'd'", "after a dollar");
}

// The C library rounds correctly, so it judges every number of at most 20 digits.
TEST(StrParse, RoundsNumbersAsTheCLibraryDoes) {
  support::Random random(1);
  for (int i = 0; i < 20000; ++i) {
    std::string input = std::string("-+").substr(random.below(3), 1);
    const int whole_digits = 1 + random.below(10);
    const int decimals = random.below(11);
    for (int k = 0; k < whole_digits + decimals; ++k) {
      if (k == whole_digits) input += '.';
      input += static_cast<char>('0' + random.below(10));
    }
    if (random.below(2) == 0) input.append("e").append(std::to_string(random.below(700) - 350));
    ASSERT_EQ(str_parse(input.data())->value, std::strtod(input.c_str(), nullptr)) << input;
  }
}

TEST(StrToken, CutsAtADelimiterOutsideQuotesAndEscapes) {
  const auto expect = [](std::string text, const char* token, const char* rest, const char* why) {
    SCOPED_TRACE("text '" + text + "': " + why);
    const std::string before = text;
    char delimiters[] = ",;";
    char* next = text.data();
    char found = '?';
    EXPECT_STREQ(str_token(text.data(), delimiters, &next, &found), token);
    EXPECT_STREQ(next, rest);
    EXPECT_EQ(found, next == nullptr ? '\0' : before[next - text.data() - 1]);
  };
  expect(" a b,c", "a b", "c", "leading blanks are skipped");
  expect("a ;b", "a ", "b", "any of the set; trailing blanks stay");
  expect("a\"b,c", "a\"b,c", nullptr, "an open quote reaches to the end");
  expect(",x", nullptr, "x", "an empty token");
  expect("\"b,c\",d", "\"b,c\"", "d", "quotes hide delimiters and stay");
  expect("\"\",\",d", "\"\",\"", "d", "the first of two quotes is skipped, the second opens");
  expect("a\\,b,c", "a\\,b", "c", "a backslash hides the next one and stays");
}

TEST(StrLowerString, MakesAsciiLettersSmallAndNothingElse) {
  char text[] = "AZaz@[`{\xC4 09";
  str_lower_string(text);
  EXPECT_STREQ(text, "azaz@[`{\xC4 09");
}

}  // namespace
