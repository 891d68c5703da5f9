/// The number that a decimal text spells, rounded once.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <system_error>

namespace zelvan {

/// What the `length` characters of `written`, terminated, spell: sign, digits, point, exponent.
/// 0.0 if they have no digit. Unlike `atof` it has the point in every locale.
inline double number_of(const char* written, std::size_t length) {
#if defined(__cpp_lib_to_chars)
  const char* const end = written + length;
  const char* const first = *written == '+' ? written + 1 : written;
  double value = 0.0;
  if (std::from_chars(first, end, value).ec != std::errc::result_out_of_range) return value;
  // The mantissa alone always fits, so the sign of the exponent tells which way.
  const bool is_negative = *written == '-';
  const bool is_tiny = std::memchr(written + 1, '-', length - 1) != nullptr;
  value = is_tiny ? 0.0 : std::numeric_limits<double>::infinity();
  return is_negative ? -value : value;
#elif defined(__EMSCRIPTEN__)
  // The standard library there reads no doubles; the C library does, and knows one locale only.
  static_cast<void>(length);
  return std::strtod(written, nullptr);
#else
#error "zelvan reads numbers by std::from_chars, and this standard library has none for doubles"
#endif
}

}  // namespace zelvan
