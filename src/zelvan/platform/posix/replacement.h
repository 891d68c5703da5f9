/// A new file that gets its name once it is complete.
#pragma once

#include <zelvan/platform/posix/descriptor.h>
#include <zelvan/platform/posix/renames.h>

#include <string>

#include <sys/stat.h>

namespace zelvan::platform {

/// A new file in the folder of its target. Unless it takes the target's place, the destructor
/// deletes it.
///
/// While it is written it has no name, if the file system allows that (O_TMPFILE). It then
/// disappears as well if the process is killed. Otherwise its name is `.zelvan-PID-N`: PID is the
/// process, N a free number. Just before it takes the target's place it always has such a name.
class Replacement {
 public:
  /// Creates the file, with `mode` less the process's mask. See `is_open`.
  Replacement(const std::string& target, mode_t mode);
  ~Replacement();

  bool is_open() const { return file_.is_open(); }
  int file() const { return file_.get(); }

  /// Closes the file and renames it to the target, replacing that if it exists. Returns false on
  /// failure.
  bool replace_target();

  /// Closes the file and renames it to the target, which must not exist. Returns false on failure.
  bool become_target();

  /// Sends the target's name to the disk. Returns false on failure.
  ///
  /// If the folder may not be read, all buffered data of the system is sent.
  bool send_name_to_disk() const;

  /// Undoes `become_target`, unless the `source` has lost its old name or the target is no longer
  /// this file.
  void take_back(Name old_name, const struct stat& source) const;

 private:
  int create(mode_t mode);
  int create_nameless(mode_t mode) const;
  bool take_own_name();
  template <typename Make>
  int make_under_own_name(Make make);

  Name own() const { return {folder_.get(), own_name_}; }
  Name target() const { return {folder_.get(), name_.c_str()}; }

  std::string name_;
  // `file_` is the last member: creating it uses those before it, and sets this name.
  char own_name_[40];
  bool has_own_name_ = false;
  struct stat made_ = {};  // identifies this file if another takes its name
  Descriptor folder_;
  Descriptor file_;
};

/// Sends written data, or the names in a folder, to the disk. Returns false on failure.
bool send_to_disk(int fd);

}  // namespace zelvan::platform
