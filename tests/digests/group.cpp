#include "digests/group.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

/// Returns the number in hexadecimal, which loses no bit. Not by %a, which C libraries write in
/// several ways.
std::string Log::to_word(double v) {
  if (std::isnan(v)) return "nan";
  const std::string sign = std::signbit(v) ? "-" : "";
  if (std::isinf(v) || v == 0.0) return sign + (v == 0.0 ? "0" : "inf");
  const std::uint64_t bits = support::bits(v);
  const int exponent = static_cast<int>(bits >> 52 & 0x7FF);
  char digits[20];
  std::snprintf(digits, sizeof digits, "%013llx", bits & 0xFFFFFFFFFFFFFULL);
  std::string number = std::string(exponent != 0 ? "0x1." : "0x0.") + digits;
  number.erase(number.find_last_not_of("0.") + 1);
  return sign + number + 'p' + std::to_string(std::max(exponent, 1) - 1023);
}

std::string Log::to_word(std::int64_t v) { return std::to_string(v); }

std::string Log::to_word(std::string_view text) {
  std::string word = "\"";
  for (const char c : text) {
    char escaped[8] = {c};
    const bool is_plain = c >= ' ' && c < 0x7F && c != '"' && c != '\\';
    if (!is_plain) std::snprintf(escaped, sizeof escaped, "\\x%02x", c & 0xFFu);
    word += escaped;
  }
  return word + '"';
}

void Log::append_words(const std::vector<std::string>& words, std::size_t longest) {
  if (words.size() == 1) {
    line_ += ' ' + words[0];
    return;
  }
  line_ += " (";
  if (words.size() > longest) {
    line_ += std::to_string(words.size()) + " values";
  } else {
    for (const std::string& word : words) line_ += (line_.back() == '(' ? "" : " ") + word;
  }
  line_ += ')';
}

void Log::print_line() const { std::printf("%s\n", line_.c_str()); }
