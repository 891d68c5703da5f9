#include "support/system.h"

#include <cstdlib>

#include <io.h>
#include <windows.h>

namespace support {

// The system's own count is 0 under Wine.
int open_descriptors() {
  int count = 0;
  DWORD flags;
  for (INT_PTR handle = 4; handle < 4096; handle += 4) {
    count += ::GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags);
  }
  return count;
}

bool is_inherited(int fd) {
  const INT_PTR handle = _get_osfhandle(fd);  // -1 for a socket
  DWORD flags = HANDLE_FLAG_INHERIT;
  ::GetHandleInformation(reinterpret_cast<HANDLE>(handle != -1 ? handle : fd), &flags);
  return (flags & HANDLE_FLAG_INHERIT) != 0;
}

void set_environment(const char* name, const char* value) {
  _putenv_s(name, value != nullptr ? value : "");  // an empty value removes as well
}

std::string language() {
  wchar_t name[LOCALE_NAME_MAX_LENGTH];
  return ::GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH) != 0 ? std::string(name, name + 2)
                                                                       : std::string();
}

std::string own_path() {
  char path[1024];
  return {path, ::GetModuleFileNameA(nullptr, path, sizeof path)};
}

// Plain heap memory: the tests on other systems notice a step beyond it.
char* guarded_pages(std::size_t size) { return static_cast<char*>(std::malloc(size)) + size; }

void release_guarded_pages(char* guard, std::size_t size) { std::free(guard - size); }

}  // namespace support
