#include <zelvan/platform/environment.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include <windows.h>

namespace zelvan::platform {

int _putenv(const char* assignment) try {
  const char* equals = std::strchr(assignment, '=');
  if (equals == nullptr || equals == assignment) {
    errno = EINVAL;
    return -1;
  }
  if (equals[1] != '\0') return ::_putenv(assignment);
  // The runtime removes the variable if the value is empty. So the value is set to a blank, which
  // is then removed from the runtime's copy; the system's copy is set separately.
  const std::string name(assignment, equals);
  if (::_putenv((name + "= ").c_str()) != 0) return -1;
  if (char* value = std::getenv(name.c_str())) *value = '\0';
  return ::SetEnvironmentVariableA(name.c_str(), "") ? 0 : -1;
} catch (const std::bad_alloc&) {
  return -1;
}

}  // namespace zelvan::platform
