#include <zelvan/text/tokenize.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Wide = std::basic_string<unsigned short>;

template <class String>
String trimmed(const String& text, const String& set) {
  const std::size_t first = std::min(text.find_first_not_of(set), text.size());
  return text.substr(first, text.find_last_not_of(set) - first + 1);
}

// All three tokenisers, by the searches of the standard's strings.
template <class String>
std::vector<String> cut(const String& text, const String& set, bool wide, bool keeps_delimiters) {
  std::vector<String> tokens;
  std::size_t start = keeps_delimiters ? 0 : text.find_first_not_of(set);
  std::size_t end = text.find_first_of(set, start);
  for (; start != text.npos; end = text.find_first_of(set, start)) {
    if (wide && text[start] == '9') {
      end = text.find_first_of(set, text.find_first_not_of(String{'9', '.'}, start));
    }
    const String token =
        text.substr(start, end == text.npos ? end : end - start + keeps_delimiters);
    tokens.push_back(wide ? trimmed(token, String{' '}) : token);
    start = text.find_first_not_of(set, end);
  }
  return tokens;
}

// Every text of up to 7 characters, one of them far beyond ASCII.
TEST(Tokenize, AgreesWithPlainSearchesOverEverySmallText) {
  const unsigned short alphabet[] = {'a', '9', '.', ' ', 0x20FF};
  for (const Wide& set : {Wide(), Wide{' '}, Wide{0x20FF}, Wide{'.', 0x20FF}, Wide{'9', ' '},
                          Wide{0x20FF, '.', ' ', 'a'}}) {
    for (int number = 0; number < 97656; ++number) {
      Wide text;
      for (int n = number; n > 0; n = (n - 1) / 5) text += alphabet[(n - 1) % 5];
      ASSERT_EQ(wtokenize(text, set), cut(text, set, true, false));
      ASSERT_EQ(wtokenize2(text, set), cut(text, set, true, true));
      ASSERT_EQ(wtrim(text, set.c_str()), trimmed(text, set));
      const std::string narrow(text.begin(), text.end()), narrow_set(set.begin(), set.end());
      ASSERT_EQ(tokenize(narrow, narrow_set), cut(narrow, narrow_set, false, false));
      ASSERT_EQ(trim(narrow, narrow_set.c_str()), trimmed(narrow, narrow_set));
    }
  }
}

}  // namespace
