/// Paths for the system's wide calls, since the narrow ones are limited to 259 characters.
#pragma once

#include <windows.h>

namespace zelvan::platform {

/// The absolute form of a path of up to 1023 bytes, which may be longer. Empty, which names no
/// file, if either is too long. A long path begins with `\\?\`, which lifts the system's default
/// limit.
class SystemPath {
 public:
  explicit SystemPath(const char* path);

  const wchar_t* get() const { return text_; }

 private:
  static constexpr DWORD size = 2400;  // the current directory, a path and the prefix
  wchar_t text_[size] = L"";
};

}  // namespace zelvan::platform
