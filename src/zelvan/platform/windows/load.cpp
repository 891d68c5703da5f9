// The entry point that the system calls when a process loads the library. It asks for room for 60
// handles.

#include <windows.h>

namespace {

bool is_first_time = true;
constexpr UINT handles_wanted = 60;

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  ::DisableThreadLibraryCalls(library);
  if (is_first_time) ::SetHandleCount(handles_wanted);
  is_first_time = false;
  return TRUE;
}
