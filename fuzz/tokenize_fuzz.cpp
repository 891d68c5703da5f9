// Splits a text at a set of delimiters with each of the tokenisers. Required: only delimiters and
// blanks are lost, and punctuation by `GlyphTokenize`; nothing is added, and the order is kept.

#include <zelvan/text/glyph_tokenize.h>
#include <zelvan/text/tokenize.h>

#include "bytes.h"

#include <vector>

namespace {

using fuzz::require;
using Wide = zelvan::wide_string;

/// Requires that the tokens, joined together, are `text` without some characters of `lost`.
template <class String>
void require_kept(const String& text, const std::vector<String>& tokens, const String& lost) {
  std::size_t at = 0;
  for (const String& token : tokens) {
    for (const auto c : token) {
      while (at < text.size() && text[at] != c) {
        require(lost.find(text[at++]) != String::npos);
      }
      require(at++ < text.size());
    }
  }
  while (at < text.size()) require(lost.find(text[at++]) != String::npos);
}

Wide widened(const std::string& text) {
  Wide wide;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    // Some bytes become characters beyond ASCII: the curved quotes, and ideographs.
    wide += byte < 0x80 ? byte : byte < 0x82 ? 0x201C + (byte & 1) : 0x4E00 + byte;
  }
  return wide;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const char* const languages[] = {"zh_CN.UTF-8", "ja", "en_GB", "C"};
  fuzz::Bytes bytes(data, size);
  const int language = bytes.below(4);
  const std::string delimiters = bytes.text(static_cast<std::size_t>(bytes.below(8)));
  const std::string text = bytes.text(2000);

  const std::vector<std::string> tokens = tokenize(text, delimiters);
  for (const std::string& token : tokens) {
    require(!token.empty() && token.find_first_of(delimiters) == std::string::npos);
  }
  require_kept(text, tokens, delimiters);
  const fuzz::ExactText chars(delimiters);
  const std::string trimmed = trim(text, fuzz::ExactText(delimiters).get());
  require(text.find(trimmed) != std::string::npos);

  const Wide wide = widened(text), wide_delimiters = widened(delimiters), blank = {' '};
  require_kept(wide, wtokenize(wide, wide_delimiters), wide_delimiters + blank);
  require_kept(wide, wtokenize2(wide, wide_delimiters), wide_delimiters + blank);
  const Wide set = widened(delimiters.c_str());
  const Wide inner = wtrim(wide, set.c_str());
  require(wide.find(inner) != Wide::npos);
  require(inner.empty() ||
          (set.find(inner.front()) == Wide::npos && set.find(inner.back()) == Wide::npos));

  setenv("LC_ALL", languages[language], 1);
  Wide lost = widened(" !\"#$%&'()*+,-./:;<=>?@[]^_`{|}~");
  lost += 0x201C, lost += 0x201D;
  require_kept(wide, GlyphTokenize(wide), lost);
  return 0;
}
