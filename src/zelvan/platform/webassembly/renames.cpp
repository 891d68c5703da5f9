#include <zelvan/platform/posix/renames.h>

#include <cerrno>
#include <cstdio>

namespace zelvan::platform {

// A program is alone in its file system, so the name stays free between the test and the rename.
bool rename_to_free_name(Name from, Name to) {
  struct stat status;
  if (get_status(to, &status)) {
    errno = EEXIST;
    return false;
  }
  return errno == ENOENT && ::renameat(from.folder, from.text, to.folder, to.text) == 0;
}

}  // namespace zelvan::platform
