/// Files that are read and written whole, and the program's standard output.
#pragma once

#include <cstddef>
#include <string>

#include <signal.h>

namespace example {

/// Returns the bytes of a file. Throws `Error` if it can't be read.
std::string read_file(const std::string& path);

/// Returns `size` bytes of a file, from `offset` on. Throws `Error` if there are fewer, or if they
/// can't be read.
std::string read_file_part(const std::string& path, std::size_t offset, std::size_t size);

/// Writes `bytes` to the file at `path` and replaces what was there.
///
/// The bytes go to a second file in the same folder, which is then renamed. So a reader sees the
/// old file or the new one, never a part. If it can't be written, throws `Error` and removes the
/// second file. An interrupt (Ctrl-C) takes effect only after that, so it leaves no second file.
void write_file(const std::string& path, const std::string& bytes);

/// Writes what standard output still holds back. Throws `Error` if any of the program's output is
/// lost, as on a full disk.
void finish_output();

/// Holds back SIGINT (Ctrl-C), SIGHUP and SIGTERM until this object ends, so that no unfinished
/// file is left. Other threads of the program have to block these signals themselves.
class HeldInterrupts {
 public:
  HeldInterrupts();
  HeldInterrupts(const HeldInterrupts&) = delete;
  HeldInterrupts& operator=(const HeldInterrupts&) = delete;
  ~HeldInterrupts();

 private:
  sigset_t before_;
};

/// A file name that was free, reserved by an empty file. The destructor removes the file, unless
/// `keep` was called. While this object lives, interrupts are held back; see `HeldInterrupts`.
class FreeName {
 public:
  /// Takes the first free name of `prefix` followed by `letters`, whose capitals count up: AAA,
  /// AAB and so on. Throws `Error` if none is free, or if the file can't be created.
  FreeName(const std::string& prefix, const std::string& letters);
  FreeName(const FreeName&) = delete;
  FreeName& operator=(const FreeName&) = delete;
  ~FreeName();

  const std::string& path() const { return path_; }

  /// Keeps the file after the end of this object.
  void keep() { is_kept_ = true; }

 private:
  HeldInterrupts held_;
  std::string path_;
  bool is_kept_ = false;
};

}  // namespace example
