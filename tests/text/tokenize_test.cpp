#include <zelvan/text/glyph_tokenize.h>

#include "support/system.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// The tokens, a slash behind each.
template <class String>
std::u16string joined(const std::vector<String>& tokens) {
  std::u16string result;
  for (const String& token : tokens) result.append(token.begin(), token.end()).append(u"/");
  return result;
}

TEST(GlyphTokenize, CutsByTheLanguage) {
  const std::u16string text = u"“漢ab, cd.3.5 字 x\x7F\x80\U0001F600";
  const char* const locales[][3] = {{"", "zh", "de"},   {"", "", "jA_JP.UTF-8@x"},
                                    {"ZH_TW", "C", ""}, {"jv_ID.UTF-8", "ja", "ja"},
                                    {"jam_JM", "", ""}, {"", "", ""}};
  for (const auto& locale : locales) {  // of each, the first that is not empty rules
    const char* const names[] = {"LC_ALL", "LC_CTYPE", "LANG"};
    for (int i = 0; i < 3; ++i) support::set_environment(names[i], locale[i]);
    const std::string system = support::language();  // where there is one, it alone rules
    EXPECT_EQ(joined(GlyphTokenize({text.begin(), text.end()})),
              (system.empty() ? &locale < &locales[3] : system == "ja")
                  ? u"“/漢/ab,/cd./3.5/字/x\x7F/\x80/\xD83D/\xDE00/"
                  : u"“/漢ab,/cd./3.5/字/x\x7F\x80\U0001F600/")
        << &locale - locales;
  }
}

}  // namespace
