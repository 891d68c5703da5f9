#include <zelvan/text/detail/character_set.h>
#include <zelvan/text/detail/wide_tokens.h>
#include <zelvan/text/tokenize.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

namespace {

using zelvan::Delimiters;
using zelvan::wide_string;
using zelvan::WideSet;
using zelvan::WideText;
using NarrowSet = zelvan::CharacterSet<char>;

constexpr std::size_t none = NarrowSet::none;

constexpr unsigned short number_characters[] = {'0', '1', '2', '3', '4', '5',
                                                '6', '7', '8', '9', '.'};
constexpr WideSet is_of_number(WideText(number_characters, std::size(number_characters)));
constexpr WideSet is_digit(WideText(number_characters, 10));  // without the point

}  // namespace

void zelvan::append_wide_tokens(WideText text, const WideSet& delimiters, Delimiters fate,
                                WideTokens* tokens) {
  const bool keeps = fate == Delimiters::kept;
  std::size_t start = keeps ? 0 : delimiters.first_not_in(text, 0);
  std::size_t end = delimiters.first_in(text, start);
  // With kept delimiters, an empty text still produces one token: its start is 0, not `none`.
  while (start != none) {
    if (start < text.size() && is_digit.contains(text[start])) {
      end = delimiters.first_in(text, is_of_number.first_not_in(text, start));
    }
    const std::size_t token_end = end == none ? text.size() : keeps ? end + 1 : end;
    tokens->emplace_back(is_blank.trimmed(text.substr(start, token_end - start)));
    start = delimiters.first_not_in(text, end);
    end = delimiters.first_in(text, start);
  }
}

std::vector<std::string> tokenize(const std::string& text, const std::string& delimiters) {
  const NarrowSet set(delimiters);
  std::vector<std::string> tokens;
  std::size_t start = set.first_not_in(text, 0);
  while (start != none) {
    const std::size_t end = set.first_in(text, start);
    tokens.push_back(text.substr(start, end == none ? none : end - start));
    start = set.first_not_in(text, end);
  }
  return tokens;
}

std::string trim(const std::string& text, const char* chars) {
  return std::string(NarrowSet(chars).trimmed(text));
}

std::vector<wide_string> wtokenize(const wide_string& text, const wide_string& delimiters) {
  std::vector<wide_string> tokens;
  zelvan::append_wide_tokens(text, WideSet(delimiters), Delimiters::dropped, &tokens);
  return tokens;
}

std::vector<wide_string> wtokenize2(const wide_string& text, const wide_string& delimiters) {
  std::vector<wide_string> tokens;
  zelvan::append_wide_tokens(text, WideSet(delimiters), Delimiters::kept, &tokens);
  return tokens;
}

wide_string wtrim(const wide_string& text, const unsigned short* chars) {
  return wide_string(WideSet(chars).trimmed(text));
}
