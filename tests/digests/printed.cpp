#include "digests/printed.h"

#include <cstdarg>
#include <cstring>
#include <string_view>

support::Digest* printed = nullptr;

static int take(const char* format, std::va_list arguments) {
  if (printed == nullptr) return 0;
  (*printed)(std::string_view(format));
  for (const char* p = std::strchr(format, '%'); p != nullptr; p = std::strchr(p + 1, '%')) {
    const std::string_view directive(p, std::strcspn(p, "dsx") + 1);
    if (directive == "%d") (*printed)(va_arg(arguments, int));
    if (directive == "%ld") (*printed)(va_arg(arguments, long));
    if (directive == "%s") (*printed)(std::string_view(va_arg(arguments, const char*)));
    if (directive.back() == 'x') va_arg(arguments, unsigned long long);
  }
  return 0;
}

// The linker puts these in the place of the C library's: what one or another of them, and its
// checks, make of a call of vprintf. Through the third goes much else.
extern "C" {
int __wrap_vprintf(const char* format, std::va_list arguments) { return take(format, arguments); }
int __wrap___vprintf_chk(int, const char* format, std::va_list arguments) {
  return take(format, arguments);
}
int __real_vfprintf(std::FILE* stream, const char* format, std::va_list arguments);
int __wrap_vfprintf(std::FILE* stream, const char* format, std::va_list arguments) {
  if (stream == stdout && printed != nullptr) return take(format, arguments);
  return __real_vfprintf(stream, format, arguments);
}
int __wrap___vfprintf_chk(std::FILE* stream, int, const char* format, std::va_list arguments) {
  return __wrap_vfprintf(stream, format, arguments);
}
int __wrap___mingw_vfprintf(std::FILE* stream, const char* format, std::va_list arguments) {
  return __wrap_vfprintf(stream, format, arguments);
}
}
