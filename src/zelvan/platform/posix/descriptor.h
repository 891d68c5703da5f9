/// Ownership of descriptors.
#pragma once

#include <zelvan/platform/files.h>

#include <cerrno>
#include <utility>

namespace zelvan::platform {

/// Owns a descriptor, or none (-1), and closes it at the end of its scope. `errno` is kept.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    const int why = errno;  // the reason of a failure that is being reported
    close();
    errno = why;
  }

  int get() const { return fd_; }
  bool is_open() const { return fd_ >= 0; }

  /// Releases the descriptor and returns it; the caller must close it.
  int release() { return std::exchange(fd_, -1); }

  /// Closes the descriptor, if any. Returns false if written data may be lost.
  bool close() {
    const int fd = release();
    return fd < 0 || _close(fd) == 0;
  }

 private:
  int fd_;
};

}  // namespace zelvan::platform
