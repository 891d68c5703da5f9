/// Conversion of a decimal text to a double, rounded once.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstring>
#include <limits>
#include <system_error>

#if !defined(__cpp_lib_to_chars)
#include <zelvan/platform/numbers.h>
#endif

namespace zelvan {

/// Returns the number in the `length` characters of `written`; 0.0 if they hold no digit.
///
/// The decimal point is `.` in every locale. Requires: a terminator after the characters, and
/// nothing among them but, in this order, a sign, digits with at most one point, and an exponent
/// with digits.
inline double number_of(const char* written, std::size_t length) {
#if defined(__cpp_lib_to_chars)
  const char* const end = written + length;
  const char* const first = *written == '+' ? written + 1 : written;
  double value = 0.0;
  if (std::from_chars(first, end, value).ec != std::errc::result_out_of_range) return value;
  // The number is out of range because of its exponent, since the mantissa alone always fits. So a
  // negative exponent means underflow, any other overflow. The result has the sign of the number.
  const bool is_negative = *written == '-';
  const bool is_tiny = std::memchr(written + 1, '-', length - 1) != nullptr;
  value = is_tiny ? 0.0 : std::numeric_limits<double>::infinity();
  return is_negative ? -value : value;
#else
  // Without std::from_chars for doubles, the slower C library converts.
  static_cast<void>(length);
  return platform::strtod_c(written);
#endif
}

}  // namespace zelvan
