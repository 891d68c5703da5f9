#include <zelvan/text/tokenize.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

using Wide = zelvan::wide_string;
using Tokens = std::vector<std::u16string>;

static Wide wide(const std::u16string& text) { return Wide(text.begin(), text.end()); }
static Tokens plain(const std::vector<Wide>& tokens) {
  Tokens all;
  for (const Wide& token : tokens) all.emplace_back(token.begin(), token.end());
  return all;
}

TEST(Tokenize, DropsRunsOfDelimitersEverywhere) {
  using Narrow = std::vector<std::string>;
  EXPECT_EQ(tokenize("a,,b", ","), (Narrow{"a", "b"}));
  EXPECT_EQ(tokenize(",,a,", ","), (Narrow{"a"}));
  EXPECT_EQ(tokenize(",;,", ";,"), Narrow{});
  EXPECT_EQ(tokenize(" a,b ", ""), (Narrow{" a,b "})) << "no delimiters";
  EXPECT_EQ(tokenize("a\xC4z", "\xC4"), (Narrow{"a", "z"})) << "a byte with the high bit set";
  EXPECT_EQ(tokenize(std::string("a\0b", 3), std::string("\0", 1)), (Narrow{"a", "b"}));
}

TEST(Wtokenize, DropsDelimitersWhereWtokenize2KeepsTheFirst) {
  const auto expect = [](std::u16string text, std::u16string delimiters, Tokens dropped,
                         Tokens kept, const char* why) {
    EXPECT_EQ(plain(wtokenize(wide(text), wide(delimiters))), dropped) << why;
    EXPECT_EQ(plain(wtokenize2(wide(text), wide(delimiters))), kept) << why;
  };
  expect(u"a,,b", u",", {u"a", u"b"}, {u"a,", u"b"}, "a run counts once");
  expect(u",,", u",", {}, {u","}, "nothing but delimiters");
  expect(u"", u",", {}, {u""}, "an empty text");
  expect(u"a, b", u",", {u"a", u"b"}, {u"a,", u"b"}, "blanks are trimmed");
  expect(u"a,  ,b", u",", {u"a", u"", u"b"}, {u"a,", u",", u"b"}, "a token of blanks");
  expect(u" abc", u" ", {u"abc"}, {u"", u"abc"}, "a leading blank is a token, and trimmed");
  expect(u"3.14,2", u".,", {u"3.14", u"2"}, {u"3.14,", u"2"}, "a number stays whole");
  expect(u"-3.4", u".", {u"-3", u"4"}, {u"-3.", u"4"}, "but not after a sign");
  expect(u"1.2.3x y", u" .", {u"1.2.3x", u"y"}, {u"1.2.3x", u"y"}, "any run of digits and dots");
  expect(u"3.", u".", {u"3."}, {u"3."}, "a number up to the end");
  expect(u"a\u4E00b\u4E01", u"\u4E00", {u"a", u"b\u4E01"}, {u"a\u4E00", u"b\u4E01"}, "beyond 255");
}
