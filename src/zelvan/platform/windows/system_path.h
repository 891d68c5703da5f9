/// Paths as the system takes them, for calls whose narrow forms end at 259 characters.
#pragma once

#include <windows.h>

namespace zelvan::platform {

/// The absolute form of a path of up to 1023 bytes. One that does not fit is empty, which names no
/// file. Longer ones than the system would take by default bear the mark that lifts its limit.
class SystemPath {
 public:
  explicit SystemPath(const char* path);

  const wchar_t* get() const { return text_; }

 private:
  static constexpr DWORD size = 2400;  // a path, the current directory ahead of it, and the mark
  wchar_t text_[size] = L"";
};

}  // namespace zelvan::platform
