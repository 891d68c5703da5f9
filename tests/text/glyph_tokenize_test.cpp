#include <zelvan/text/glyph_tokenize.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <support/system.h>

using Tokens = std::vector<std::u16string>;

static Tokens glyphs(const std::u16string& text) {
  Tokens all;
  for (const auto& token : GlyphTokenize({text.begin(), text.end()})) {
    all.emplace_back(token.begin(), token.end());
  }
  return all;
}

/// Sets the language where the environment has a say; elsewhere tells whether it is this one.
static bool is_language(const char* language) {
  support::set_environment("LC_ALL", language);
  const std::string of_system = support::language();
  return of_system.empty() || of_system == language;
}

TEST(GlyphTokenize, CutsAtPunctuationWhereWordsAreSetApart) {
  if (!is_language("en")) GTEST_SKIP() << "the system has another language";
  EXPECT_EQ(glyphs(u"one,two a\\b"), (Tokens{u"one,", u"two", u"a\\b"})) << "no backslash";
  EXPECT_EQ(glyphs(u""), (Tokens{u""}));
  const std::u16string punctuation = u" !\"#$%&'()*+,-./:;<=>?@[]^_`{|}~\u201C\u201D";
  for (char16_t unit = 1; unit != 0; ++unit) {
    const bool cuts = punctuation.find(unit) != std::u16string::npos;
    ASSERT_EQ(glyphs({u'x', unit, u'x'}).size(), cuts ? 2u : 1u) << static_cast<int>(unit);
  }
}

TEST(GlyphTokenize, CutsChineseAndJapaneseByTheUnit) {
  for (const char* language : {"zh", "ja"}) {
    if (!is_language(language)) continue;
    EXPECT_EQ(glyphs(u"漢ab, cd.3.5 字c"), (Tokens{u"漢", u"ab,", u"cd.", u"3.5", u"字", u"c"}));
    EXPECT_EQ(glyphs(u"漢 字"), (Tokens{u"漢", u"", u"字"})) << "a stretch of blanks alone";
    EXPECT_EQ(glyphs(u" a \u201C"), (Tokens{u"a", u"\u201C"})) << "stretches are trimmed";
    EXPECT_EQ(glyphs(u"x\x7F\x80"), (Tokens{u"x\x7F", u"\x80"})) << "ASCII ends at 0x80";
    EXPECT_EQ(glyphs(u""), Tokens{});
  }
}

TEST(GlyphTokenize, AsksTheFirstVariableThatIsNotEmpty) {
  if (!support::language().empty()) GTEST_SKIP() << "the system has its own language";
  const struct {
    const char *lc_all, *lc_ctype, *lang;
    bool by_unit;
    const char* why;
  } rows[] = {
      {nullptr, "zh", "de", true, "LC_CTYPE comes before LANG"},
      {"de", "zh", "zh", false, "LC_ALL comes first"},
      {"", "", "jA_JP.UTF-8@x", true, "in any case, with country, charset and modifier"},
      {"jv_ID.UTF-8", "", "", false, "another language that begins with j"},
      {"jam_JM", "", "", false, "a language of three letters that begins with ja"},
      {"", nullptr, "", false, "no language at all"},
      {"J", nullptr, "", false, "one letter"},
      {"1a", nullptr, "", false, "no letter first"},
      {"j{", nullptr, "", false, "no letter second"},
  };
  for (const auto& row : rows) {
    support::set_environment("LC_ALL", row.lc_all);
    support::set_environment("LC_CTYPE", row.lc_ctype);
    support::set_environment("LANG", row.lang);
    EXPECT_EQ(glyphs(u"漢字").size(), row.by_unit ? 2u : 1u) << row.why;
  }
}
