#include <zelvan/detail/heap_text.h>
#include <zelvan/platform/directories.h>
#include <zelvan/platform/files.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

#include <unistd.h>

namespace zelvan::platform {
namespace {

/// Returns the current directory, of any length; empty on failure. Throws `std::bad_alloc` if the
/// heap refuses the string.
std::string current_directory() {
  const HeapText text(::getcwd(nullptr, 0));
  if (text == nullptr) return {};
  if (text.get()[0] == '/') return text.get();
  // The directory lies outside the root of the process. Some C libraries pass on the kernel's text,
  // which then begins with "(unreachable)"; others fail.
  errno = ENOENT;
  return {};
}

std::string absolute_form(std::string_view path) {
  if (path.empty()) {
    errno = ENOENT;
    return {};
  }
  std::string form;
  if (path[0] != '/') {
    form = current_directory();
    if (form.empty()) return {};
    if (form == "/") form.clear();
  }
  while (!path.empty()) {
    const std::string_view part = path.substr(0, path.find('/'));
    if (!part.empty() && part != ".") form.append("/").append(part);
    path.remove_prefix(std::min(part.size() + 1, path.size()));
  }
  return form.empty() ? "/" : form;
}

/// Stores the text with its terminator and returns its length. If it doesn't fit, stores nothing
/// and returns the size needed, the length plus 1. Requires: that size fits an `unsigned`.
unsigned store(std::string_view text, char* buffer, unsigned size) {
  const auto length = static_cast<unsigned>(text.size());
  if (length >= size) return length + 1;
  std::memcpy(buffer, text.data(), length);
  buffer[length] = '\0';
  return length;
}

}  // namespace

unsigned GetCurrentDirectoryA(unsigned size, char* buffer) try {
  const std::string directory = current_directory();
  if (directory.empty()) return 0;
  if (directory.size() < size) return store(directory, buffer, size);
  errno = ERANGE;
  return 0;
} catch (const std::bad_alloc&) {
  return 0;
}

unsigned GetFullPathNameA(const char* path, unsigned size, char* buffer) try {
  const std::string form = absolute_form(path);
  if (form.size() >= UINT_MAX) {  // an unsigned result can't hold the size needed
    errno = ENAMETOOLONG;
    return 0;
  }
  return form.empty() ? 0 : store(form, buffer, size);
} catch (const std::bad_alloc&) {
  return 0;
}

unsigned GetShortPathNameA(const char* path, char* buffer, unsigned size) {
  if (_access(path, 0) != 0) return 0;
  if (std::strlen(path) < size) return store(path, buffer, size);
  errno = ERANGE;
  return 0;
}

const char* log_prefix() { return "/tmp/logQelt-"; }

}  // namespace zelvan::platform
