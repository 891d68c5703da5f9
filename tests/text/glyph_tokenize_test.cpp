#include <zelvan/text/glyph_tokenize.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Tokens = std::vector<std::u16string>;

Tokens glyphs(const std::u16string& text) {
  Tokens out;
  for (const auto& token : GlyphTokenize({text.begin(), text.end()})) {
    out.emplace_back(token.begin(), token.end());
  }
  return out;
}

TEST(GlyphTokenize, CutsByTheLanguage) {
  const struct {
    std::u16string text;
    Tokens words, glyphs;  // where words are set apart, and where they are not
  } rows[] = {
      {u"", {u""}, {}},
      {u" one,2.5 a\\b", {u"", u"one,", u"2.5", u"a\\b"}, {u"one,", u"2.5", u"a\\b"}},
      {u"漢 字", {u"漢", u"字"}, {u"漢", u"", u"字"}},
      {u"漢ab cd 字", {u"漢ab", u"cd", u"字"}, {u"漢", u"ab", u"cd", u"字"}},
      {u"“é”, x", {u"“", u"é”", u"x"}, {u"“", u"é", u"”", u",", u"x"}},
      {u"\x7F\x80\U0001F600", {u"\x7F\x80\U0001F600"}, {u"\x7F", u"\x80", {0xD83D}, {0xDE00}}},
  };
  // The first that is set and not empty rules: LC_ALL, LC_CTYPE, LANG.
  const struct {
    const char *all, *ctype, *lang;
    bool by_glyph;
  } locales[] = {{"en_GB.UTF-8", "ja", "ja", false}, {"", "zh", "de", true},
                 {"", "", "ja_JP.UTF-8@x", true},    {"ZH_TW", "C", "", true},
                 {"C", "ja", "ja", false},           {"jam_JM", "", "", false},
                 {"", "POSIX", "ja", false},         {"", "", "", false}};
  for (const auto& [all, ctype, lang, by_glyph] : locales) {
    setenv("LC_ALL", all, 1);
    setenv("LC_CTYPE", ctype, 1);
    *lang == '\0' ? unsetenv("LANG") : setenv("LANG", lang, 1);
    for (const auto& row : rows) {
      EXPECT_EQ(glyphs(row.text), by_glyph ? row.glyphs : row.words) << all << ctype << lang;
    }
  }
}

// Each character of the table ends a token; no other one does, in all of UTF-16.
TEST(GlyphTokenize, EndsTokensAtItsPunctuation) {
  setenv("LC_ALL", "C", 1);
  const std::u16string table = u" !\"“”#$%&'()*+,-./:;<=>?@[]^_`{|}~";
  for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
    const auto c = static_cast<char16_t>(unit);
    ASSERT_EQ(glyphs({u'a', c, u'b'}).size() == 2, table.find(c) != table.npos) << unit;
  }
}

}  // namespace
