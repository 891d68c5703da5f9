#include <zelvan/text/glyph_tokenize.h>
#include <zelvan/text/tokenize.h>

#include "support/bits.h"
#include "support/random.h"
#include "support/system.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Wide = std::basic_string<unsigned short>;

/// The tokens, a slash behind each.
template <class String>
std::u16string joined(const std::vector<String>& tokens) {
  std::u16string result;
  for (const String& token : tokens) result.append(token.begin(), token.end()).append(u"/");
  return result;
}

TEST(Tokenize, CutsAtDelimiters) {
  const std::string text = ",3.14,2 x.y -1.5";
  const Wide wide(text.begin(), text.end());
  EXPECT_EQ(joined(tokenize(text, ".,")), u"3/14/2 x/y -1/5/");
  EXPECT_EQ(joined(wtokenize(wide, {'.', ','})), u"3.14/2 x/y -1/5/");
  EXPECT_EQ(joined(wtokenize2(wide, {'.', ','})), u",/3.14,/2 x./y -1./5/");
}

TEST(GlyphTokenize, CutsByTheLanguage) {
  const std::u16string text = u"“漢ab, cd.3.5 字 x\x7F\x80\U0001F600";
  const char* const locales[][3] = {{"", "zh", "de"},   {"", "", "ja_JP.UTF-8@x"},
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

// Every code unit, in a number and as what ends one; then texts as long as a vector, or longer,
// of characters whose low bytes are equal.
TEST(Tokenize, KeepsEveryToken) {
  const Wide some = {'a', '9', '0', '.', ' ', 'b', 0x7F, 0x80, 0xFF, 0x120, 0x2061, 0x20FF, 0};
  support::FnvDigest digest, by_language;
  support::Random random(3);
  for (int i = 0; i < 200000; ++i) {
    const auto unit = static_cast<unsigned short>(i);
    Wide text = {' ', unit, '.', '7', unit, 'b', unit, 'c'}, set = {'.', unit};
    if (i > 0xFFFF) {
      text.resize(random.below(i % 8 == 0 ? 90 : 9)), set.resize(random.below(5));
      for (auto& c : text) c = some[random.below(i % 16 == 0 ? 3 : 13)];
      for (auto& c : set) c = some[random.below(13)];
    }
    const std::string narrow(text.begin(), text.end()), narrow_set(set.begin(), set.end());
    support::set_environment("LC_ALL", i > 0xFFFF && i % 2 == 0 ? "ja" : "C");
    for (const char16_t c : joined(GlyphTokenize(text))) by_language.add(c);
    for (const std::u16string& tokens :
         {joined(tokenize(narrow, narrow_set)), joined(wtokenize(text, set)),
          joined(wtokenize2(text, set)), joined<Wide>({wtrim(text, set.c_str())}),
          joined<std::string>({trim(narrow, narrow_set.c_str())})}) {
      for (const char16_t c : tokens) digest.add(c);
    }
  }
  EXPECT_EQ(digest.value(), 0xa9ac6d4bfbd1eeafu);
  if (support::language().empty()) {
    EXPECT_EQ(by_language.value(), 0xc1be3505350d911eu);
  }
}

}  // namespace
