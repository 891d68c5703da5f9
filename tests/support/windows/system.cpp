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
  const INT_PTR handle = _get_osfhandle(fd);  // none under the number of a socket
  DWORD flags = HANDLE_FLAG_INHERIT;
  ::GetHandleInformation(reinterpret_cast<HANDLE>(handle != -1 ? handle : fd), &flags);
  return (flags & HANDLE_FLAG_INHERIT) != 0;
}

void set_environment(const char* name, const char* value) {
  const bool is_empty = value != nullptr && *value == '\0';
  _putenv_s(name, value == nullptr ? "" : is_empty ? " " : value);  // an empty value removes
  if (is_empty) *std::getenv(name) = '\0', ::SetEnvironmentVariableA(name, "");
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

constexpr std::size_t page = 0x1000;

// What is not committed can't be read.
char* guarded_pages(std::size_t size) {
  const std::size_t usable = (size + page - 1) / page * page;
  void* const pages = ::VirtualAlloc(nullptr, usable + page, MEM_RESERVE, PAGE_READWRITE);
  if (usable != 0) ::VirtualAlloc(pages, usable, MEM_COMMIT, PAGE_READWRITE);
  return static_cast<char*>(pages) + usable;
}

void release_guarded_pages(char* guard, std::size_t size) {
  ::VirtualFree(guard - (size + page - 1) / page * page, 0, MEM_RELEASE);
}

}  // namespace support
