#include <zelvan/platform/posix/descriptor.h>
#include <zelvan/platform/posix/renames.h>
#include <zelvan/platform/posix/retry_interrupted.h>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace zelvan::platform {
namespace {

/// Reads `errno` after a failed renameat2: returns true if the system can't rename without
/// overwriting, so that another way must be tried.
bool is_missing_call() { return errno == EINVAL || errno == ENOSYS; }

/// Reads `errno` after a failed linkat: returns true if this file can't get a second name. EPERM is
/// reported by file systems without hard links, and where users may link only their own files.
bool is_missing_link() { return errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS; }

/// Creates an empty file or directory. Returns false if the name is in use.
bool reserve(Name name, bool is_directory) {
  if (is_directory) return ::mkdirat(name.folder, name.text, 0777) == 0;
  constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
  return Descriptor(
             retry_interrupted([&] { return ::openat(name.folder, name.text, flags, 0600); }))
      .is_open();
}

/// Creates an empty file or directory under the new name, and renames over it. What others write
/// into that file meanwhile is lost; a directory replaces only an empty one.
bool rename_over_reserved(Name from, Name to, const struct stat& source) {
  if (!reserve(to, S_ISDIR(source.st_mode))) return false;
  struct stat reserved = {};  // if get_status fails, matches no file
  get_status(to, &reserved);
  if (::renameat(from.folder, from.text, to.folder, to.text) == 0) return true;
  const int why = errno;
  if (look_for(to, source) == Found::same) return true;  // see `remove_old_name`
  errno = why;
  take_back(to, reserved, from, source);
  return false;
}

}  // namespace

bool rename_to_free_name(Name from, Name to) {
  if (::renameat2(from.folder, from.text, to.folder, to.text, RENAME_NOREPLACE) == 0) return true;
  struct stat source;
  if (!is_missing_call() || !get_status(from, &source)) return false;
  if (!S_ISDIR(source.st_mode)) {
    // A link never replaces a name that is in use.
    if (::linkat(from.folder, from.text, to.folder, to.text, 0) == 0) {
      if (remove_old_name(from, source)) return true;
      take_back(to, source, from, source);
      return false;
    }
    if (!is_missing_link()) return false;
  }
  return rename_over_reserved(from, to, source);
}

}  // namespace zelvan::platform
