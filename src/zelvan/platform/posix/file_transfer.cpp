#include <zelvan/platform/file_transfer.h>
#include <zelvan/platform/files.h>
#include <zelvan/platform/posix/renames.h>
#include <zelvan/platform/posix/resumed.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelvan::platform {
namespace {

constexpr mode_t permission_bits = 0777;
constexpr mode_t write_bits = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t private_file = S_IRUSR | S_IWUSR;
constexpr int most_names_tried = 10'000;

bool refuse(int why) {
  errno = why;
  return false;
}

/// A descriptor, or -1 for none, that is closed with its block.
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

  /// False if what was written may not have arrived.
  bool close() {
    const bool closed = fd_ < 0 || _close(fd_) == 0;
    fd_ = -1;
    return closed;
  }

 private:
  int fd_;
};

/// A new file in the directory of `target`, under a name of its own, that takes the target's
/// place once it is complete. If it never does, it vanishes with this object.
class Replacement {
 public:
  Replacement(const std::string& target, mode_t mode)
      : name_(target.substr(target.rfind('/') + 1)),
        folder_(open_folder_of(target)),
        file_(folder_.is_open() ? create(mode) : -1) {}

  ~Replacement() {
    const int why = errno;
    if (has_own_name_) ::unlinkat(folder_.get(), own_name_, 0);
    errno = why;
  }

  bool is_open() const { return file_.is_open(); }
  int file() const { return file_.get(); }

  bool replace_target() {
    if (!file_.close()) return false;
    has_own_name_ = ::renameat(folder_.get(), own_name_, folder_.get(), name_.c_str()) != 0;
    return !has_own_name_;
  }

  /// Does so only if no such target exists.
  bool become_target() {
    if (!file_.close()) return false;
    has_own_name_ = !rename_to_free_name(folder_.get(), own_name_, folder_.get(), name_.c_str());
    return !has_own_name_;
  }

 private:
  static int open_folder_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    constexpr int flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
    return resumed([&] { return ::open(folder.c_str(), flags); });
  }

  /// Other threads and processes make such files as well; each takes a name that is free.
  int create(mode_t mode) {
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    for (int i = 0; i < most_names_tried; ++i) {
      std::snprintf(own_name_, sizeof own_name_, ".zelvan-%d-%d", ::getpid(), i);
      const int fd = resumed([&] { return ::openat(folder_.get(), own_name_, flags, mode); });
      has_own_name_ = fd >= 0;
      if (has_own_name_ || errno != EEXIST) return fd;
    }
    return -1;
  }

  std::string name_;
  char own_name_[40];
  bool has_own_name_ = false;
  Descriptor folder_;
  Descriptor file_;
};

/// Opens a regular file to be copied; -1 for anything else.
int open_source(const char* path, struct stat* status) {
  const int fd = CreateFileA(path);
  if (fd < 0) return -1;
  const int why = ::fstat(fd, status) != 0 ? errno : S_ISREG(status->st_mode) ? 0 : EINVAL;
  if (why == 0) return fd;
  _close(fd);
  errno = why;
  return -1;
}

bool copy_content(int from, int to) {
#if defined(__linux__)
  // By the kernel alone as far as it goes. What it leaves, or refuses, is read and written, and if
  // that fails as well, the reason is that of the write.
  constexpr std::size_t most_at_once = std::size_t{1} << 30;
  while (::copy_file_range(from, nullptr, to, nullptr, most_at_once, 0) > 0) {
  }
#endif
  char buffer[64 * 1024];
  for (;;) {
    const int got = _read(from, buffer, sizeof buffer);
    if (got <= 0) return got == 0;
    if (_write(to, buffer, static_cast<unsigned>(got)) != got) return false;
  }
}

/// Gives a file the owner, group and permissions of another; the owner as far as that is allowed.
bool resemble(int fd, const struct stat& other, mode_t mode) {
  const auto give_to = [&](uid_t owner) {
    return resumed([&] { return ::fchown(fd, owner, other.st_gid); }) == 0;
  };
  constexpr uid_t as_it_is = static_cast<uid_t>(-1);
  const bool has_owner = give_to(other.st_uid);
  if (!has_owner) give_to(as_it_is);
  // Who can't hand on the owner must not hand on the right to act in the owner's name.
  const mode_t allowed = has_owner ? mode : mode & permission_bits;
  return resumed([&] { return ::fchmod(fd, allowed); }) == 0;
}

bool reach_the_disk(int fd) {
  return resumed([=] { return ::fsync(fd); }) == 0;
}

bool may_replace(const char* path, const struct stat& status, const struct stat& source) {
  if (status.st_dev == source.st_dev && status.st_ino == source.st_ino) return refuse(EINVAL);
  if (S_ISDIR(status.st_mode)) return refuse(EISDIR);
  if (!S_ISREG(status.st_mode)) return refuse(EINVAL);
  if ((status.st_mode & write_bits) == 0) return refuse(EACCES);
  return ::faccessat(AT_FDCWD, path, W_OK, AT_EACCESS) == 0;
}

bool copy_over(int from, const char* target, const struct stat& old) {
  Replacement copy(target, private_file);  // private until it has the old permissions
  return copy.is_open() && copy_content(from, copy.file()) &&
         resemble(copy.file(), old, old.st_mode & permission_bits) &&
         // Were the rename to reach the disk ahead of the content, a crash would leave neither.
         reach_the_disk(copy.file()) && copy.replace_target();
}

bool copy_to_new_name(int from, const char* target, mode_t mode) {
  Replacement copy(target, mode & permission_bits);
  return copy.is_open() && copy_content(from, copy.file()) && copy.replace_target();
}

bool move_to_other_file_system(const char* from, const char* to) {
  struct stat status;
  if (::lstat(from, &status) != 0) return false;
  if (!S_ISREG(status.st_mode)) return refuse(EXDEV);
  const Descriptor in(open_source(from, &status));
  if (!in.is_open()) return false;
  Replacement copy(to, private_file);
  const timespec times[] = {status.st_atim, status.st_mtim};
  if (!copy.is_open() || !copy_content(in.get(), copy.file()) ||
      !resemble(copy.file(), status, status.st_mode & 07777) ||
      ::futimens(copy.file(), times) != 0 || !reach_the_disk(copy.file()) ||
      !copy.become_target()) {
    return false;
  }
  if (::unlink(from) == 0) return true;
  const int why = errno;
  ::unlink(to);  // the file is where it was
  return refuse(why);
}

}  // namespace

int CopyFileA(const char* from, const char* to) try {
  struct stat source;
  const Descriptor in(open_source(from, &source));
  if (!in.is_open()) return 0;
  struct stat old;
  if (::lstat(to, &old) != 0)
    return errno == ENOENT && copy_to_new_name(in.get(), to, source.st_mode);
  const std::unique_ptr<char, decltype(&std::free)> target(::realpath(to, nullptr), &std::free);
  return target != nullptr && ::stat(target.get(), &old) == 0 &&
         may_replace(target.get(), old, source) && copy_over(in.get(), target.get(), old);
} catch (const std::bad_alloc&) {
  return refuse(ENOMEM);
}

int MoveFileA(const char* from, const char* to) try {
  return rename_to_free_name(AT_FDCWD, from, AT_FDCWD, to) ||
         (errno == EXDEV && move_to_other_file_system(from, to));
} catch (const std::bad_alloc&) {
  return refuse(ENOMEM);
}

}  // namespace zelvan::platform
