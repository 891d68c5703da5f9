#include <zelvan/platform/posix/renames.h>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelvan::platform {

bool rename_to_free_name(int from_folder, const char* from, int to_folder, const char* to) {
  if (::renameat2(from_folder, from, to_folder, to, RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // This file system knows no such rename. A second name can only be a free one, and a directory
  // replaces nothing but an empty one, such as the one that is made for it here.
  struct stat status;
  if (::fstatat(from_folder, from, &status, AT_SYMLINK_NOFOLLOW) != 0) return false;
  const bool is_directory = S_ISDIR(status.st_mode);
  if (is_directory) {
    if (::mkdirat(to_folder, to, 0777) != 0) return false;
    if (::renameat(from_folder, from, to_folder, to) == 0) return true;
  } else {
    if (::linkat(from_folder, from, to_folder, to, 0) != 0) return false;
    if (::unlinkat(from_folder, from, 0) == 0) return true;
  }
  const int why = errno;
  ::unlinkat(to_folder, to, is_directory ? AT_REMOVEDIR : 0);
  errno = why;
  return false;
}

}  // namespace zelvan::platform
