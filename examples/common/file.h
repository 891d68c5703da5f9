/// Files, read and written whole.
#pragma once

#include <cstddef>
#include <string>

namespace example {

/// The bytes of a file. Throws `Error` when it can't be read.
std::string read_file(const std::string& path);

/// The `size` bytes from `offset` on. Throws `Error` when they can't be read, or are not there.
std::string read_file_part(const std::string& path, std::size_t offset, std::size_t size);

/// Puts `bytes` into the file at `path`, replacing what was there.
///
/// The bytes are written beside the target, which then takes their name: whoever looks sees
/// the old file or the new one, never a half. Throws `Error` and leaves nothing behind when
/// the file can't be written.
void write_file(const std::string& path, const std::string& bytes);

/// A name that no file had: an empty file holds it, until it is replaced or this object ends.
class FreeName {
 public:
  /// The first free name of `prefix` followed by `letters`, whose capitals count on. Throws
  /// `Error` when there is none, or no file can be made.
  FreeName(const std::string& prefix, const std::string& letters);
  FreeName(const FreeName&) = delete;
  FreeName& operator=(const FreeName&) = delete;
  ~FreeName();

  const std::string& path() const { return path_; }

  /// What stands there now is to stay.
  void keep() { is_kept_ = true; }

 private:
  std::string path_;
  bool is_kept_ = false;
};

}  // namespace example
