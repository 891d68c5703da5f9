#include <zelvan/text/tokenize.h>

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Wide = std::basic_string<unsigned short>;

// Narrow texts stand for wide ones, whose 'w' is far beyond ASCII.
Wide wide(const std::string& text) {
  Wide out;
  for (const char c : text) out += c == 'w' ? 0x201C : static_cast<unsigned short>(c);
  return out;
}

std::string trimmed(std::string text, const std::string& set) {
  while (!text.empty() && set.find(text.front()) != set.npos) text.erase(0, 1);
  while (!text.empty() && set.find(text.back()) != set.npos) text.pop_back();
  return text;
}

// All three tokenisers as one walk over the characters.
std::vector<std::string> cut(const std::string& text, const std::string& delimiters,
                             bool keeps_numbers_and_trims, bool keeps_delimiters) {
  const auto is_in = [&](std::size_t i, const std::string& set) {
    return i < text.size() && set.find(text[i]) != set.npos;
  };
  std::vector<std::string> tokens(text.empty() && keeps_delimiters ? 1 : 0);
  std::size_t i = 0;
  while (!keeps_delimiters && is_in(i, delimiters)) ++i;
  while (i < text.size()) {
    const std::size_t start = i;
    if (keeps_numbers_and_trims && is_in(i, "9")) i = text.find_first_not_of("9.", i);
    i = text.find_first_of(delimiters, i);
    const std::string token =
        i == text.npos ? text.substr(start) : text.substr(start, i - start + keeps_delimiters);
    tokens.push_back(keeps_numbers_and_trims ? trimmed(token, " ") : token);
    while (is_in(i, delimiters)) ++i;
  }
  return tokens;
}

std::vector<Wide> wide(const std::vector<std::string>& tokens) {
  std::vector<Wide> out;
  for (const std::string& token : tokens) out.push_back(wide(token));
  return out;
}

// Every text of up to `length` more characters.
void for_each_text(std::size_t length, const std::function<void(const std::string&)>& run,
                   const std::string& text = "") {
  if (testing::Test::HasFailure()) return;
  run(text);
  for (const char c : "a9. w") {
    if (c != '\0' && length > 0) for_each_text(length - 1, run, text + c);
  }
}

TEST(Tokenize, AgreesWithAPlainWalkOverEverySmallText) {
  for (const std::string set : {"", " ", "w", ".w", "9 ", "w. a"}) {
    const Wide wide_set = wide(set);
    for_each_text(7, [&](const std::string& text) {
      SCOPED_TRACE('"' + text + "\" by \"" + set + '"');
      ASSERT_EQ(tokenize(text, set), cut(text, set, false, false));
      ASSERT_EQ(wtokenize(wide(text), wide_set), wide(cut(text, set, true, false)));
      ASSERT_EQ(wtokenize2(wide(text), wide_set), wide(cut(text, set, true, true)));
      ASSERT_EQ(trim(text, set.c_str()), trimmed(text, set));
      ASSERT_EQ(wtrim(wide(text), wide_set.c_str()), wide(trimmed(text, set)));
    });
  }
}

}  // namespace
