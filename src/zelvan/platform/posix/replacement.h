/// A new file that gets its name once it is complete.
#pragma once

#include <zelvan/platform/posix/descriptor.h>
#include <zelvan/platform/posix/renames.h>

#include <string>

#include <sys/stat.h>

namespace zelvan::platform {

/// A new file in the folder of its target. If it never takes the target's place, it is deleted with
/// this object.
///
/// While it is written it has no name, where the file system allows that (O_TMPFILE), and is
/// deleted as well if the process is killed. Elsewhere it is called `.zelvan-PID-N`: PID is the
/// process, N a number that was free. Just before it takes the target's place it always has such a
/// name.
class Replacement {
 public:
  /// Creates the file, with `mode` less what the process masks out. See `is_open`.
  Replacement(const std::string& target, mode_t mode);
  ~Replacement();

  bool is_open() const { return file_.is_open(); }
  int file() const { return file_.get(); }

  /// Closes the file and puts it in the target's place. False on failure.
  bool replace_target();

  /// Closes the file and puts it under the target's name, which must be free. False on failure.
  bool become_target();

  /// Sends the target's name to the disk. False on failure.
  ///
  /// Where the folder may not be read, the system sends everything that it holds back.
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
  // The last member is made of those before it, and sets the name.
  char own_name_[40];
  bool has_own_name_ = false;
  struct stat made_ = {};  // of this file, to know it from what others put in its place
  Descriptor folder_;
  Descriptor file_;
};

/// Sends to the disk what was written to a file, or the names in a folder. False on failure.
bool send_to_disk(int fd);

}  // namespace zelvan::platform
