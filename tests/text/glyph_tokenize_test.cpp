#include <zelvan/text/glyph_tokenize.h>

#include <string>

#include <gtest/gtest.h>
#include <support/system.h>

namespace {

using support::set_environment;

/// The tokens of `text`, a slash behind each.
std::u16string cut(const std::u16string& text) {
  std::u16string tokens;
  for (const auto& token : GlyphTokenize({text.begin(), text.end()})) {
    tokens.append(token.begin(), token.end()).append(u"/");
  }
  return tokens;
}

TEST(GlyphTokenize, CutsByTheLanguage) {
  const struct {
    std::u16string text, words, glyphs;  // where words are set apart, and where they are not
  } rows[] = {{u"", u"/", u""},
              {u" one,2.5 a\\b ", u"/one,/2.5/a\\b/", u"one,/2.5/a\\b/"},
              {u"漢 字", u"漢/字/", u"漢//字/"},
              {u"漢ab cd 字", u"漢ab/cd/字/", u"漢/ab/cd/字/"},
              {u"“é”, x", u"“/é”/x/", u"“/é/”/,/x/"},
              {u"a\x7F\x80\U0001F600", u"a\x7F\x80\U0001F600/", u"a\x7F/\x80/\xD83D/\xDE00/"}};
  const struct {
    const char *all, *ctype, *lang;  // the first that is not empty rules
    bool by_glyph;
  } locales[] = {{"en_GB.UTF-8", "ja", "ja", false}, {"", "zh", "de", true},
                 {"", "", "ja_JP.UTF-8@x", true},    {"ZH_TW", "C", "", true},
                 {"C", "ja", "ja", false},           {"jam_JM", "", "", false},
                 {"", "de_DE", "ja", false},         {"", "", "", false}};
  const std::string system = support::language();
  for (const auto& [all, ctype, lang, by_glyph] : locales) {
    set_environment("LC_ALL", all);
    set_environment("LC_CTYPE", ctype);
    set_environment("LANG", *lang != '\0' ? lang : nullptr);
    const bool cuts_glyphs = system.empty() ? by_glyph : system == "ja";
    for (const auto& row : rows) {
      EXPECT_EQ(cut(row.text), cuts_glyphs ? row.glyphs : row.words) << all << ctype << lang;
    }
  }
}

// Each character of the table ends a token; no other one does, in all of UTF-16.
TEST(GlyphTokenize, EndsTokensAtItsPunctuation) {
  set_environment("LC_ALL", "C");
  if (support::language() == "ja") GTEST_SKIP() << "each character is a token, by the system";
  const std::u16string table = u" !\"“”#$%&'()*+,-./:;<=>?@[]^_`{|}~";
  for (int unit = 1; unit <= 0xFFFF; ++unit) {
    const std::u16string text = {u'a', static_cast<char16_t>(unit), u'b'};
    ASSERT_EQ(cut(text) != text + u'/', table.find(text[1]) != table.npos) << unit;
  }
}

}  // namespace
