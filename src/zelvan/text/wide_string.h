/// The type of wide text: a string of UTF-16 code units, one `unsigned short` each.
///
/// With GNU's standard library `zelvan::wide_string` is `std::basic_string<unsigned short>`. The
/// C++ standard defines no character traits for `unsigned short`, and other libraries have none or
/// are removing them; there the string has the traits of this header. Both behave the same.
#pragma once

#include <cstddef>
#include <cstring>
#include <cwchar>
#include <ios>
#include <string>

namespace zelvan {

#if defined(__GLIBCXX__)

/// A string of UTF-16 code units.
using wide_string = std::basic_string<unsigned short>;

#else

/// Character traits of UTF-16 code units, which compare as numbers.
struct wide_traits {
  using char_type = unsigned short;   ///< a code unit
  using int_type = unsigned long;     ///< holds every code unit, and `eof()` besides
  using off_type = std::streamoff;    ///< for streams
  using pos_type = std::streampos;    ///< for streams
  using state_type = std::mbstate_t;  ///< for streams

  /// Sets one unit.
  static constexpr void assign(char_type& to, const char_type& from) noexcept { to = from; }

  /// Returns true if two units are equal.
  static constexpr bool eq(char_type a, char_type b) noexcept { return a == b; }

  /// Returns true if `a` is the smaller number.
  static constexpr bool lt(char_type a, char_type b) noexcept { return a < b; }

  /// Compares the first `n` units: negative, 0 or positive, as `a` is less, equal or greater.
  static constexpr int compare(const char_type* a, const char_type* b, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
      if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
    }
    return 0;
  }

  /// Returns the number of units before the first 0.
  static constexpr std::size_t length(const char_type* text) {
    std::size_t n = 0;
    while (text[n] != 0) ++n;
    return n;
  }

  /// Returns the first of `n` units that equals `unit`, or null.
  static constexpr const char_type* find(const char_type* text, std::size_t n,
                                         const char_type& unit) {
    for (std::size_t i = 0; i < n; ++i) {
      if (text[i] == unit) return text + i;
    }
    return nullptr;
  }

  /// Copies `n` units between ranges that may overlap.
  static char_type* move(char_type* to, const char_type* from, std::size_t n) {
    if (n != 0) std::memmove(to, from, n * sizeof *to);
    return to;
  }

  /// Copies `n` units between ranges that do not overlap.
  static char_type* copy(char_type* to, const char_type* from, std::size_t n) {
    return move(to, from, n);
  }

  /// Sets `n` units to `unit`.
  static constexpr char_type* assign(char_type* to, std::size_t n, char_type unit) {
    for (std::size_t i = 0; i < n; ++i) to[i] = unit;
    return to;
  }

  /// Returns the code unit that `c` holds.
  static constexpr char_type to_char_type(int_type c) noexcept { return static_cast<char_type>(c); }

  /// Returns `c`, which is never `eof()`.
  static constexpr int_type to_int_type(char_type c) noexcept { return c; }

  /// Returns true if two values are equal; each may be `eof()`.
  static constexpr bool eq_int_type(int_type a, int_type b) noexcept { return a == b; }

  /// Returns the value that is no code unit.
  static constexpr int_type eof() noexcept { return ~int_type{0}; }

  /// Returns `c`, or 0 in place of `eof()`.
  static constexpr int_type not_eof(int_type c) noexcept { return c == eof() ? 0 : c; }
};

/// A string of UTF-16 code units.
using wide_string = std::basic_string<unsigned short, wide_traits>;

#endif

}  // namespace zelvan
