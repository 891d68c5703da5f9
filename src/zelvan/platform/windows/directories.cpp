#include <zelvan/platform/directories.h>
#include <zelvan/platform/windows/last_error.h>

#include <cstring>

namespace zelvan::platform {
namespace {

constexpr unsigned longest_short_form = 1024;

}  // namespace

unsigned GetCurrentDirectoryA(unsigned size, char* buffer) {
  const unsigned length = explained(::GetCurrentDirectoryA(size, buffer));
  if (length < size) return length;
  errno = ERANGE;
  return 0;
}

unsigned GetFullPathNameA(const char* path, unsigned size, char* buffer) {
  return explained(::GetFullPathNameA(path, size, buffer, nullptr));
}

unsigned GetShortPathNameA(const char* path, char* buffer, unsigned size) {
  char form[longest_short_form];
  const unsigned length = explained(::GetShortPathNameA(path, form, sizeof form));
  if (length == 0) return 0;
  if (length >= sizeof form || length >= size) {
    errno = ERANGE;
    return 0;
  }
  std::memcpy(buffer, form, length + 1);
  return length;
}

const char* log_prefix() { return "c:\\temp\\logQelt-"; }

}  // namespace zelvan::platform
