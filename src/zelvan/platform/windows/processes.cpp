#include <zelvan/platform/processes.h>

#include <new>
#include <string>

#include <process.h>
#include <windows.h>

namespace zelvan::platform {

int CreateProcessA(const char* command_line) try {
  std::string line = command_line;  // a copy, since the system may write to the line
  STARTUPINFOA start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESHOWWINDOW;
  start.wShowWindow = SW_HIDE;
  constexpr DWORD flags = NORMAL_PRIORITY_CLASS | CREATE_NEW_PROCESS_GROUP;
  PROCESS_INFORMATION process;
  if (!::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, flags, nullptr, nullptr,
                        &start, &process)) {
    return 0;
  }
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return 1;
} catch (const std::bad_alloc&) {
  return 0;
}

int WinExec(const char* command) { return static_cast<int>(::WinExec(command, SW_SHOW)); }

int _getpid() { return ::_getpid(); }

}  // namespace zelvan::platform
