#include <zelvan/detail/comparison.h>
#include <zelvan/osh/detail/fixed_path.h>
#include <zelvan/osh/file_access.h>
#include <zelvan/osh/paths.h>
#include <zelvan/osh/system_services.h>
#include <zelvan/platform/characters.h>
#include <zelvan/platform/directories.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iterator>

namespace platform = zelvan::platform;
using zelvan::path_size;

namespace {

constexpr int system_type_index = 2;

/// The record whose address is returned to callers, who may only read it. If one has changed the
/// system type, the next call restores it; otherwise nothing is written, since other threads may be
/// reading.
short system_parameters[10] = {1, 2, 8, 2, 1, 1, 2, 4, 4, 8};

bool is_separator(char c) { return c == '/' || c == '\\'; }

/// Advances a counter; returns false if it has no next value. The rightmost capital other than Z is
/// increased by one, and the capitals to its right become A again.
bool advance(char* counter, std::size_t length) {
  char* digit = counter + length;
  do {
    if (digit == counter) return false;
    --digit;
  } while (*digit < 'A' || *digit > 'Y');
  ++*digit;
  std::replace_if(
      digit + 1, counter + length, [](char c) { return c >= 'B' && c <= 'Z'; }, 'A');
  return true;
}

}  // namespace

int osh_alternate_pathname(char* path, char* alternate) {
  if (platform::GetShortPathNameA(path, alternate, path_size) == 0) {
    const bool fits = zelvan::check_path(path);
    std::memmove(alternate, fits ? path : "", fits ? std::strlen(path) + 1 : 1);
    return -1;
  }
  return zelvan::_stricmp(path, alternate) != 0;
}

int osh_append_path(char* first, char* second, char* result) {
  const std::size_t length = std::strlen(first);
  const bool is_joined = (length != 0 && first[length - 1] == '\\') || second[0] == '\\';
  // Copy the second part first, so that the result may overwrite either part.
  std::memmove(result + length + !is_joined, second, std::strlen(second) + 1);
  std::memmove(result, first, length);
  if (!is_joined) result[length] = '\\';
  return 1;
}

int osh_truncate_path(char* path, char* directory, char* file) {
  if (path == nullptr || directory == nullptr || file == nullptr) return 0;
  const char* slash = platform::_mbsrchr(path, '/');
  const char* backslash = platform::_mbsrchr(path, '\\');
  const char* separator = std::max(slash, backslash, std::less<const char*>());
  if (separator == nullptr) {
    std::memmove(file, path, std::strlen(path) + 1);
    directory[0] = '\0';
    return 1;
  }
  // First the directory, then the file: so either output may be the path itself.
  const std::size_t length = separator - path;
  std::memmove(directory, path, length);
  directory[length] = '\0';
  std::memmove(file, separator + 1, std::strlen(separator + 1) + 1);
  return 1;
}

int osh_verify_file_name() { return 0; }

char* osh_find_exec_path(char* path) {
  const unsigned size = platform::GetFullPathNameA(path, 0, nullptr);
  char* absolute = static_cast<char*>(std::malloc(std::size_t{size} + 1));
  if (absolute == nullptr) return nullptr;
  // The result is the empty string if the path can't be made absolute, or if it no longer fits
  // because another thread has changed the directory.
  absolute[0] = '\0';
  if (size != 0) platform::GetFullPathNameA(path, size, absolute);
  return absolute;
}

int osh_get_working_dir(char* directory) {
  char current[path_size];
  if (platform::GetCurrentDirectoryA(path_size, current) == 0) return 0;
  std::strcpy(directory, current);
  return 1;
}

char* utl_file_extension(char* path) {
  char* end = path + std::strlen(path);
  char* component = end;
  while (component != path && !is_separator(component[-1])) --component;
  return std::find(component, end, '.');
}

int utl_unique_filename(char* prefix, char* letters, char* result) {
  const std::size_t prefix_length = std::strlen(prefix);
  const std::size_t length = std::strlen(letters);
  if (prefix_length + length >= path_size) {
    result[0] = '\0';
    return -1;
  }
  std::memmove(result + prefix_length, letters, length + 1);  // `result` may be `letters`
  std::memmove(result, prefix, prefix_length);
  const int noted_errno = errno;
  while (osh_file_exists(result)) {
    if (!advance(result + prefix_length, length)) return -1;
  }
  errno = noted_errno;
  return 0;
}

void osh_get_file_parms(short* parms) {
  std::copy(std::begin(system_parameters), std::end(system_parameters), parms);
  parms[system_type_index] = static_cast<short>(osh_system_type());
}

short* osh_get_sys_parms() {
  const short type = static_cast<short>(osh_system_type());
  if (system_parameters[system_type_index] != type) system_parameters[system_type_index] = type;
  return system_parameters;
}
