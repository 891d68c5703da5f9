/// Comparing text without regard to case.
///
/// Only the case of the ASCII letters A to Z is ignored, whatever the locale of the process: a name
/// that is found today is found on every machine. All other bytes, those with the high bit set
/// included, stand for themselves and compare as unsigned values, a letter as its small form.
#pragma once

#include <array>
#include <cstddef>
#include <limits>

namespace zelvan {

/// Each byte, or the small form of a capital letter: a look-up is faster than a test for letters.
constexpr auto small_forms = [] {
  std::array<unsigned char, 256> table{};
  for (int c = 0; c < 256; ++c) {
    const bool is_capital = c >= 'A' && c <= 'Z';
    table[c] = static_cast<unsigned char>(is_capital ? c - 'A' + 'a' : c);
  }
  return table;
}();

constexpr int small_form(char c) { return small_forms[static_cast<unsigned char>(c)]; }

/// Compares at most the first `count` bytes as `_stricmp` does: texts that agree so far are equal.
/// A `count` of 0 reads nothing and returns 0.
///
/// Requires: no null pointer, save with a `count` of 0.
constexpr int _strnicmp(const char* a, const char* b, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const int difference = small_form(a[i]) - small_form(b[i]);
    if (difference != 0 || a[i] == '\0') return difference;
  }
  return 0;
}

/// Compares two terminated texts whole: negative if `a` comes before `b`, 0 if they are equal but
/// for case, positive if `a` comes after. A text comes after its own beginnings.
///
/// Requires: no null pointer.
constexpr int _stricmp(const char* a, const char* b) {
  return _strnicmp(a, b, std::numeric_limits<std::size_t>::max());
}

}  // namespace zelvan
