#include <zelvan/platform/numbers.h>

#include <cerrno>

#include <locale.h>
#include <stdlib.h>
#if __has_include(<xlocale.h>)
#include <xlocale.h>  // declares strtod_l on macOS and FreeBSD
#endif

double zelvan::platform::strtod_c(const char* text) {
  static const locale_t c_locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
  const int earlier_error = errno;
  // The locale is null if the heap refused it: some systems allocate memory for it.
  const double value =
      c_locale != nullptr ? ::strtod_l(text, nullptr, c_locale) : ::strtod(text, nullptr);
  errno = earlier_error;
  return value;
}
