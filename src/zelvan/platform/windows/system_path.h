/// Paths for the system's wide calls, since the narrow ones are limited to 259 characters.
#pragma once

#include <windows.h>

namespace zelvan::platform {

/// The absolute form of a path. The path may have up to 1023 characters, its absolute form more. If
/// either is too long, the result is empty, which names no file. A long absolute form begins with
/// `\\?\`, which lifts the system's default limit.
class SystemPath {
 public:
  explicit SystemPath(const char* path);

  const wchar_t* get() const { return text_; }

 private:
  static constexpr DWORD size = 2400;  // room for the current directory, a path and `\\?\`
  wchar_t text_[size] = L"";
};

}  // namespace zelvan::platform
