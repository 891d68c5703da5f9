#include <zelvan/platform/windows/system_path.h>

#include <cwchar>

namespace zelvan::platform {
namespace {

constexpr int path_size = 1024;
// The system's limit is 259 for files and 247 for folders. The library may append a name of its
// own.
constexpr DWORD longest_plain_path = 200;
constexpr wchar_t mark[] = L"\\\\?\\", share_mark[] = L"\\\\?\\UNC\\";

}  // namespace

SystemPath::SystemPath(const char* path) {
  constexpr DWORD room = size - 8;  // after the longer mark
  const UINT code_page = ::AreFileApisANSI() ? CP_ACP : CP_OEMCP;
  wchar_t wide_path[path_size];
  wchar_t absolute[room];
  if (::MultiByteToWideChar(code_page, 0, path, -1, wide_path, path_size) == 0) return;
  const DWORD length = ::GetFullPathNameW(wide_path, room, absolute, nullptr);
  if (length == 0 || length >= room) return;
  const bool is_of_share = absolute[0] == L'\\' && absolute[1] == L'\\';
  const bool is_marked = is_of_share && (absolute[2] == L'?' || absolute[2] == L'.');
  if (length <= longest_plain_path || is_marked) {
    std::wcscpy(text_, absolute);
  } else {
    std::wcscpy(text_, is_of_share ? share_mark : mark);
    std::wcscat(text_, is_of_share ? absolute + 2 : absolute);
  }
}

}  // namespace zelvan::platform
