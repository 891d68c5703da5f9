/// A descriptor with an owner.
#pragma once

#include <zelvan/platform/files.h>

#include <cerrno>
#include <utility>

namespace zelvan::platform {

/// Owns a descriptor, or none (-1), and closes it when it goes out of scope. `errno` stays.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    const int why = errno;  // of a failure that is being reported
    close();
    errno = why;
  }

  int get() const { return fd_; }
  bool is_open() const { return fd_ >= 0; }

  /// Returns the descriptor and releases it: the caller closes it.
  int release() { return std::exchange(fd_, -1); }

  /// Closes the descriptor, if any. False if what was written may not have arrived.
  bool close() {
    const int fd = release();
    return fd < 0 || _close(fd) == 0;
  }

 private:
  int fd_;
};

}  // namespace zelvan::platform
