/// Ownership of the system's file handles.
#pragma once

#include <windows.h>

namespace zelvan::platform {

inline constexpr DWORD share_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Owns a file handle, or none, and closes it at the end of its scope. Keeps the reason of an
/// earlier failure.
class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    const DWORD why = ::GetLastError();
    if (is_open()) ::CloseHandle(handle_);
    ::SetLastError(why);
  }

  HANDLE get() const { return handle_; }
  bool is_open() const { return handle_ != INVALID_HANDLE_VALUE; }

 private:
  HANDLE handle_;
};

/// Returns true if both handles refer to one file; false if the system can't tell.
inline bool is_same_file(HANDLE file, HANDLE other) {
  BY_HANDLE_FILE_INFORMATION a;
  BY_HANDLE_FILE_INFORMATION b;
  return ::GetFileInformationByHandle(file, &a) && ::GetFileInformationByHandle(other, &b) &&
         a.dwVolumeSerialNumber == b.dwVolumeSerialNumber && a.nFileIndexHigh == b.nFileIndexHigh &&
         a.nFileIndexLow == b.nFileIndexLow;
}

}  // namespace zelvan::platform
