#include <zelvan/platform/posix/names.h>
#include <zelvan/platform/posix/status.h>

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace zelvan::platform {

bool get_status(Name name, struct stat* status) {
  return ::fstatat(name.folder, name.text, status, AT_SYMLINK_NOFOLLOW) == 0;
}

Found look_for(Name name, const struct stat& file) {
  struct stat status;
  if (!get_status(name, &status)) return errno == ENOENT ? Found::other : Found::unknown;
  return is_same_file(status, file) ? Found::same : Found::other;
}

bool remove_old_name(Name name, const struct stat& file) {
  if (look_for(name, file) == Found::other) return true;
  if (::unlinkat(name.folder, name.text, 0) == 0) return true;
  const int why = errno;
  const bool is_removed = look_for(name, file) == Found::other;
  errno = why;
  return is_removed;
}

void take_back(Name new_name, const struct stat& made, Name old_name, const struct stat& source) {
  const int why = errno;
  if (look_for(old_name, source) == Found::same && look_for(new_name, made) == Found::same) {
    ::unlinkat(new_name.folder, new_name.text, S_ISDIR(made.st_mode) ? AT_REMOVEDIR : 0);
  }
  errno = why;
}

}  // namespace zelvan::platform
