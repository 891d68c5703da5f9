#include <zelvan/platform/environment.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

namespace zelvan::platform {

int _putenv(const char* assignment) try {
  const char* equals = std::strchr(assignment, '=');
  if (equals == nullptr) {
    errno = EINVAL;
    return -1;
  }
  return ::setenv(std::string(assignment, equals).c_str(), equals + 1, 1);
} catch (const std::bad_alloc&) {
  return -1;
}

}  // namespace zelvan::platform
