/// How names compare: those of the `Var` family and of colours.
#pragma once

#include <array>
#include <cstddef>

namespace zelvan {

constexpr bool is_control(char c) { return c >= 1 && c <= 31; }

/// What each byte counts as; a 0 ends the name. The case of ASCII letters never counts.
using ByteMeanings = std::array<unsigned char, 256>;

constexpr ByteMeanings byte_meanings(bool control_ends) {
  ByteMeanings meanings{};
  for (std::size_t c = 0; c < meanings.size(); ++c) {
    const bool is_capital = c >= 'A' && c <= 'Z';
    const bool ends = control_ends && is_control(static_cast<char>(c));
    meanings[c] = static_cast<unsigned char>(ends ? 0 : is_capital ? c - 'A' + 'a' : c);
  }
  return meanings;
}

/// Names as they are looked up: they end at their first control character, and only so many of
/// their characters count.
struct AsName {
  static constexpr ByteMeanings meanings = byte_meanings(true);
  static constexpr std::size_t most = 1600;
};

/// Names as they are written: whole texts, control characters and all.
struct AsWritten {
  static constexpr ByteMeanings meanings = byte_meanings(false);
  static constexpr std::size_t most = static_cast<std::size_t>(-1);
};

template <class Rule>
constexpr unsigned char meaning(char c) {
  return Rule::meanings[static_cast<unsigned char>(c)];
}

/// The place of the first difference of two names from `start` on, up to which both are known to be
/// the same; `Rule::most` if there is none. Inline, since most names differ in their first bytes.
template <class Rule>
constexpr std::size_t first_difference(const char* a, const char* b, std::size_t start = 0) {
  for (std::size_t i = start; i < Rule::most; ++i) {
    const unsigned char byte = meaning<Rule>(a[i]);
    if (byte != meaning<Rule>(b[i])) return i;
    if (byte == '\0') break;
  }
  return Rule::most;
}

template <class Rule>
constexpr bool is_same(const char* a, const char* b) {
  return first_difference<Rule>(a, b) == Rule::most;
}

}  // namespace zelvan
