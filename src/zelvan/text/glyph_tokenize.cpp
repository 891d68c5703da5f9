#include <zelvan/platform/locale.h>
#include <zelvan/text/detail/wide_tokens.h>
#include <zelvan/text/glyph_tokenize.h>

#include <cstddef>
#include <iterator>
#include <string_view>
#include <vector>

namespace {

using zelvan::append_wide_tokens;
using zelvan::Delimiters;
using zelvan::WideSet;
using zelvan::WideText;

// The punctuation that ends a token: without the backslash, and with only two characters beyond
// ASCII, the curly double quotes.
constexpr unsigned short punctuation[] = {
    ' ', '!', '"', 0x201C, 0x201D, '#', '$', '%', '&', '\'', '(', ')', '*', '+', ',', '-', '.',
    '/', ':', ';', '<',    '=',    '>', '?', '@', '[', ']',  '^', '_', '`', '{', '|', '}', '~',
};
constexpr WideSet is_delimiter(WideText(punctuation, std::size(punctuation)));

bool language_sets_words_apart() {
  char name[3] = "";
  zelvan::platform::GetLocaleInfoA(name);
  const std::string_view language = name;
  return language != "zh" && language != "ja";
}

bool is_ascii(unsigned short unit) { return unit < 0x80; }

}  // namespace

std::vector<zelvan::wide_string> GlyphTokenize(const zelvan::wide_string& text) {
  std::vector<zelvan::wide_string> tokens;
  if (language_sets_words_apart()) {
    append_wide_tokens(text, is_delimiter, Delimiters::kept, &tokens);
    return tokens;
  }
  for (std::size_t i = 0; i < text.size();) {
    if (!is_ascii(text[i])) {
      tokens.emplace_back(1, text[i++]);
      continue;
    }
    const std::size_t first = i;
    while (i < text.size() && is_ascii(text[i])) ++i;
    const WideText stretch = WideText(text).substr(first, i - first);
    append_wide_tokens(zelvan::is_blank.trimmed(stretch), is_delimiter, Delimiters::kept, &tokens);
  }
  return tokens;
}
