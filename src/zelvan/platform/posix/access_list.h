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
  /// Reads the list of a file. False on failure.
  bool read(int fd);
  bool read(const char* path);

  /// Sets a file's list to this one, or removes it if this one is empty. False on failure, also
  /// where the file system holds no lists and this one is not empty.
  bool give_to(int fd) const;

  /// Returns what is left of a file's `mode` without the list: the group keeps its own bits.
  mode_t leave_of(mode_t mode) const;

 private:
  template <typename Call>
  bool read_by(Call call);

  std::string bytes_;
};

}  // namespace zelvan::platform
