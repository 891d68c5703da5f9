#include <zelvan/platform/directories.h>
#include <zelvan/platform/windows/last_error.h>

#include <cstring>
#include <new>
#include <string>

namespace zelvan::platform {
namespace {

constexpr unsigned longest_short_form = 1024;

UINT code_page_of_paths() { return ::AreFileApisANSI() ? CP_ACP : CP_OEMCP; }

std::wstring widened(const char* text) {
  const int bytes = static_cast<int>(std::strlen(text));
  std::wstring wide(bytes, L'\0');  // there are at least as many bytes as characters
  wide.resize(::MultiByteToWideChar(code_page_of_paths(), 0, text, bytes, wide.data(), bytes));
  return wide;
}

/// Returns the absolute form of a path of any length; empty on failure. The narrow call is limited
/// to 259 bytes.
std::wstring absolute_form(const std::wstring& path) {
  std::wstring form(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  const auto size = static_cast<DWORD>(form.size());
  form.resize(::GetFullPathNameW(path.c_str(), size, form.data(), nullptr));
  return form.size() < size ? form : std::wstring();
}

}  // namespace

unsigned GetCurrentDirectoryA(unsigned size, char* buffer) {
  const unsigned length = with_errno(::GetCurrentDirectoryA(size, buffer));
  if (length < size) return length;
  errno = ERANGE;
  return 0;
}

unsigned GetFullPathNameA(const char* path, unsigned size, char* buffer) try {
  const std::wstring form = absolute_form(widened(path));
  const auto to_bytes = [&](char* to, int room) {
    return ::WideCharToMultiByte(code_page_of_paths(), 0, form.c_str(), -1, to, room, nullptr,
                                 nullptr);
  };
  const int needed = with_errno(form.empty() ? 0 : to_bytes(nullptr, 0));
  if (needed == 0 || static_cast<unsigned>(needed) > size) return needed;
  return to_bytes(buffer, needed) - 1;
} catch (const std::bad_alloc&) {
  return 0;
}

unsigned GetShortPathNameA(const char* path, char* buffer, unsigned size) {
  char form[longest_short_form];
  const unsigned length = with_errno(::GetShortPathNameA(path, form, sizeof form));
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
