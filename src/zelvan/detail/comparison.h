/// Comparing text without regard to case.
///
/// Only the case of the ASCII letters A to Z is ignored, whatever the locale of the process, so a
/// look-up has the same result on every machine. All other bytes, including those with the high bit
/// set, compare as unsigned values; a letter compares as its lower-case form.
#pragma once

#include <array>
#include <cstddef>
#include <limits>

namespace zelvan {

/// Lower-case forms of all bytes: a table look-up is faster than a test for letters.
constexpr auto small_forms = [] {
  std::array<unsigned char, 256> table{};
  for (int c = 0; c < 256; ++c) {
    const bool is_capital = c >= 'A' && c <= 'Z';
    table[c] = static_cast<unsigned char>(is_capital ? c - 'A' + 'a' : c);
  }
  return table;
}();

constexpr int small_form(char c) { return small_forms[static_cast<unsigned char>(c)]; }

/// Compares at most the first `count` bytes of two texts without regard to case, with the results
/// of `_stricmp`. Returns 0 if those bytes differ at most in case. With a `count` of 0 it reads
/// nothing and returns 0.
///
/// Requires: no null pointer, except with a `count` of 0.
constexpr int _strnicmp(const char* a, const char* b, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const int difference = small_form(a[i]) - small_form(b[i]);
    if (difference != 0 || a[i] == '\0') return difference;
  }
  return 0;
}

/// Compares two terminated texts: negative if `a` comes before `b`, 0 if they differ at most in
/// case, positive if `a` comes after. A text comes after its own prefixes.
///
/// Requires: no null pointer.
constexpr int _stricmp(const char* a, const char* b) {
  return _strnicmp(a, b, std::numeric_limits<std::size_t>::max());
}

}  // namespace zelvan
