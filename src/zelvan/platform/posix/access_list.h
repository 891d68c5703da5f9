/// The access-control list of a file: what users and groups besides its own may do with it.
#pragma once

#include <string>

#include <sys/types.h>

namespace zelvan::platform {

/// A list as the system stores it; empty for a file that has none, and where there are no lists.
///
/// Where a file has a list, the group bits of its mode are the list's mask: the most that anybody
/// but the owner and others may do.
class AccessList {
 public:
  /// Reads the list of a file; a path may be a link to it. False on failure.
  bool read(int fd);
  bool read(const char* path);

  /// Sets a file's list to this one, or removes it if this one is empty. False on failure, also
  /// where the file system holds no lists and this one is not empty.
  bool give_to(int fd) const;

  /// Returns the file's `mode` as it is without the list: the group keeps its own permissions,
  /// within the mask.
  mode_t mode_without_list(mode_t mode) const;

 private:
  template <typename Call>
  bool read_by(Call call);

  std::string bytes_;
};

}  // namespace zelvan::platform
