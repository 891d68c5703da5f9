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

/// Returns whether the tests run in this language. Where the environment decides the language, sets
/// it and returns true; on other systems the user's setting decides.
static bool is_language(const char* language) {
  support::set_environment("LC_ALL", language);
  const std::string of_system = support::language();
  return of_system.empty() || of_system == language;
}

TEST(GlyphTokenize, CutsAtPunctuationWhereWordsAreSetApart) {
  if (!is_language("jv") && !is_language("en")) GTEST_SKIP() << "the system has another language";
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
