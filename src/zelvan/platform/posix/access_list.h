/// The access-control list of a file: the rights of users and groups other than its own.
#pragma once

#include <string>

#include <sys/types.h>

namespace zelvan::platform {

/// A list in the system's format; empty for a file without one, and where lists are not supported.
///
/// For a file with a list, the group bits of the mode are the list's mask. It limits the rights of
/// all but the owner and others.
class AccessList {
 public:
  /// Reads the list of a file; follows a path that is a symbolic link. Returns false on failure.
  bool read(int fd);
  bool read(const char* path);

  /// Sets a file's list to this one, or removes it if this one is empty. Returns false on failure,
  /// also if this one is not empty and the file system supports no lists.
  bool apply_to(int fd) const;

  /// Returns the mode that the file would have without the list: the group keeps its own
  /// permissions, limited by the mask.
  mode_t mode_without_list(mode_t mode) const;

 private:
  std::string bytes_;
};

}  // namespace zelvan::platform
