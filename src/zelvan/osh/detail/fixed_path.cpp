#include <zelvan/osh/detail/fixed_path.h>
#include <zelvan/platform/drives.h>
#include <zelvan/platform/files.h>

#include <cassert>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace zelvan {
namespace {

bool is_ascii_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool exists(const char* path) { return platform::_access(path, 0) == 0; }

/// Adds the drive letter to the path. Returns true if the result fits and exists.
bool exists_on_drive(char letter, const char* path, char* candidate) {
  const int length = std::snprintf(candidate, path_size, "%c:%s", letter, path);
  return length < path_size && exists(candidate);
}

/// Finds the first drive that has the path, trying the current one first. `current_drive` is 0 if
/// the current directory is on a share.
bool exists_on_any_drive(int current_drive, const char* path, char* candidate) {
  const char current_letter = static_cast<char>('A' - 1 + current_drive);
  if (current_drive != 0 && exists_on_drive(current_letter, path, candidate)) return true;
  char roots[path_size];
  const unsigned length = platform::GetLogicalDriveStringsA(path_size, roots);
  if (length == 0 || length >= path_size) return false;
  assert(roots[length] == '\0');  // an empty root ends the list
  for (std::string_view root = roots; !root.empty(); root = root.data() + root.size() + 1) {
    const bool is_drive =
        is_ascii_letter(root[0]) && root[0] != 'a' && root[0] != 'b' && root.substr(1, 2) == ":\\";
    if (is_drive && exists_on_drive(root[0], path, candidate)) return true;
  }
  return false;
}

}  // namespace

bool check_path(const char* path) {
  if (path != nullptr && ::strnlen(path, path_size) < path_size) return true;
  errno = path == nullptr ? EINVAL : ENAMETOOLONG;
  return false;
}

short osh1_fix_path(char* path, char* fixed, int) {
  *fixed = '\0';
  if (!check_path(path)) return 0;
  const bool lacks_drive = path[0] == '\\' && path[1] != '\\';
  const int current_drive = lacks_drive ? platform::_getdrive() : platform::no_drives;
  const bool needs_drive = current_drive != platform::no_drives;
  if (needs_drive && exists_on_any_drive(current_drive, path, fixed)) return 1;
  std::strcpy(fixed, path);
  return !needs_drive && exists(fixed);
}

short osh1_open(char* path, int flags, short mode) {
  char fixed[path_size];
  osh1_fix_path(path, fixed, sizeof fixed);
  if (!check_path(path)) return -1;
  return static_cast<short>(platform::_open(fixed, flags, mode));  // at most 32767
}

std::FILE* osh1_fopen(char* path, char* mode) {
  char fixed[path_size];
  osh1_fix_path(path, fixed, sizeof fixed);
  if (!check_path(path)) return nullptr;
  if (mode != nullptr) return platform::fopen(fixed, mode);
  errno = EINVAL;
  return nullptr;
}

}  // namespace zelvan
