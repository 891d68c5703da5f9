/// How names compare in the `Var` family.
#pragma once

#include <array>
#include <cstddef>

namespace zelvan {

/// Only so many characters of a name are significant.
constexpr std::size_t significant_name_length = 1600;

constexpr bool is_control(char c) { return c >= 1 && c <= 31; }

/// What each byte counts as. The case of ASCII letters never counts.
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

inline constexpr ByteMeanings in_text = byte_meanings(false);
inline constexpr ByteMeanings in_name = byte_meanings(true);

/// True if two texts mean the same up to their ends, or for their first `limit` bytes. Inline,
/// since most texts that are compared differ in their first bytes.
constexpr bool means_the_same(const char* a, const char* b, const ByteMeanings& meanings,
                              std::size_t limit) {
  for (std::size_t i = 0; i < limit; ++i) {
    const unsigned char meaning = meanings[static_cast<unsigned char>(a[i])];
    if (meaning != meanings[static_cast<unsigned char>(b[i])]) return false;
    if (meaning == '\0') return true;
  }
  return true;
}

/// True if two names are the same: the case of ASCII letters doesn't count, and a name ends at
/// its first control character. A null name is an empty one.
constexpr bool is_same_name(const char* a, const char* b) {
  if (a == nullptr) a = "";
  if (b == nullptr) b = "";
  return means_the_same(a, b, in_name, significant_name_length);
}

/// True if two texts are the same but for the case of ASCII letters, control characters and all.
constexpr bool is_same_text(const char* a, const char* b) {
  return means_the_same(a, b, in_text, static_cast<std::size_t>(-1));
}

}  // namespace zelvan
