#include <zelvan/platform/files.h>
#include <zelvan/platform/posix/descriptor.h>
#include <zelvan/platform/posix/retry_interrupted.h>
#include <zelvan/platform/posix/status.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelvan::platform {
namespace {

constexpr std::size_t longest_mode = 62;  // of a stream
constexpr int highest_descriptor = SHRT_MAX;

/// Fails with EACCES if the path is a read-only file, since the system itself doesn't stop a
/// privileged user.
bool check_not_read_only(const char* path) {
  struct stat status;
  if (::stat(path, &status) != 0 || !S_ISREG(status.st_mode) || !is_read_only(status)) return true;
  errno = EACCES;
  return false;
}

/// Fails with EISDIR if the descriptor refers to a directory.
bool check_not_directory(int fd) {
  struct stat status = {};  // if fstat fails, counts as no directory
  ::fstat(fd, &status);
  if (!S_ISDIR(status.st_mode)) return true;
  errno = EISDIR;
  return false;
}

/// Empties an open regular file. Leaves anything else, such as a device, unchanged.
bool truncate(int fd) {
  struct stat status;
  if (::fstat(fd, &status) != 0) return false;
  return !S_ISREG(status.st_mode) || retry_interrupted([=] { return ::ftruncate(fd, 0); }) == 0;
}

int open_file(const char* path, int flags, mode_t mode) {
  Descriptor file(
      retry_interrupted([=] { return ::open(path, flags | O_CLOEXEC | O_NOCTTY, mode); }));
  return file.is_open() && check_not_directory(file.get()) ? file.release() : -1;
}

}  // namespace

int _open(const char* path, int flags, int mode) {
  constexpr int access_mask = _O_WRONLY | _O_RDWR;
  const int access = flags & access_mask;
  if (access == access_mask || (access == _O_RDONLY && (flags & _O_TRUNC) != 0)) {
    errno = EINVAL;
    return -1;
  }
  if (access != _O_RDONLY && !check_not_read_only(path)) return -1;
  int native = access == _O_RDONLY ? O_RDONLY : access == _O_WRONLY ? O_WRONLY : O_RDWR;
  if ((flags & _O_APPEND) != 0) native |= O_APPEND;
  if ((flags & _O_CREAT) != 0) native |= (flags & _O_EXCL) != 0 ? O_CREAT | O_EXCL : O_CREAT;
  Descriptor file(open_file(path, native, (static_cast<mode_t>(mode) & 0777) | S_IRUSR));
  if (!file.is_open()) return -1;
  if (file.get() > highest_descriptor) {
    errno = EMFILE;
    return -1;
  }
  // Truncate last: if the call fails, the content must remain.
  if ((flags & _O_TRUNC) != 0 && !truncate(file.get())) return -1;
  return file.release();
}

int _close(int fd) {
  const int why = errno;  // the reason of an earlier failure
  if (::close(fd) == 0) return 0;
  if (errno != EINTR) return -1;
  // Interrupted, but closed. A second call could close a file that another thread has just opened
  // under the same number. So this is a success.
  errno = why;
  return 0;
}

int _read(int fd, void* buffer, unsigned count) {
  const std::size_t wanted = std::min<std::size_t>(count, INT_MAX);  // the result is an `int`
  return static_cast<int>(retry_interrupted([=] { return ::read(fd, buffer, wanted); }));
}

int _write(int fd, const void* buffer, unsigned count) {
  const std::size_t wanted = std::min<std::size_t>(count, INT_MAX);
  const char* const bytes = static_cast<const char*>(buffer);
  std::size_t written = 0;
  do {
    const ssize_t took =
        retry_interrupted([=] { return ::write(fd, bytes + written, wanted - written); });
    if (took < 0) return written > 0 ? static_cast<int>(written) : -1;
    if (took == 0) break;
    written += static_cast<std::size_t>(took);
  } while (written < wanted);
  return static_cast<int>(written);
}

long _lseek(int fd, long offset, int whence) {
  if (whence < SEEK_SET || whence > SEEK_END) {  // `lseek` may accept further values
    errno = EINVAL;
    return -1;
  }
  constexpr bool is_narrow = sizeof(long) < sizeof(off_t);
  const off_t before = is_narrow ? ::lseek(fd, 0, SEEK_CUR) : 0;
  const off_t place = ::lseek(fd, offset, whence);
  if (place <= LONG_MAX) return static_cast<long>(place);
  ::lseek(fd, before, SEEK_SET);
  errno = EOVERFLOW;
  return -1;
}

int _fstat64i32(int fd, int* size) {
  struct stat status;
  if (::fstat(fd, &status) != 0) return -1;
  *size = static_cast<int>(static_cast<unsigned>(status.st_size));
  return 0;
}

bool is_same_file(int fd, int other) {
  struct stat a;
  struct stat b;
  return ::fstat(fd, &a) == 0 && ::fstat(other, &b) == 0 && is_same_file(a, b);
}

std::FILE* fopen(const char* path, const char* mode) {
  if (mode[0] == '\0' || std::strlen(mode) > longest_mode) {
    errno = EINVAL;
    return nullptr;
  }
  const bool writes = mode[0] != 'r' || std::strchr(mode, '+') != nullptr;
  if (writes && !check_not_read_only(path)) return nullptr;
  // 'e' (close on exec) keeps the file from started programs. It comes before any letters that take
  // an argument.
  char closed_on_start[longest_mode + 2] = {mode[0], 'e'};
  std::strcpy(closed_on_start + 2, mode + 1);
  std::FILE* stream = ::fopen(path, closed_on_start);
  while (stream == nullptr && errno == EINTR) stream = ::fopen(path, closed_on_start);
  if (stream == nullptr || check_not_directory(::fileno(stream))) return stream;
  std::fclose(stream);
  errno = EISDIR;
  return nullptr;
}

int _fileno(std::FILE* stream) { return ::fileno(stream); }

std::FILE* _fdopen(int fd, const char* mode) { return ::fdopen(fd, mode); }

int _access(const char* path, int mode) {
  // Checks the effective user's rights, as the other calls do.
  return ::faccessat(AT_FDCWD, path, mode, AT_EACCESS);
}

unsigned GetFileAttributesA(const char* path) {
  struct stat status;
  if (::stat(path, &status) != 0) return INVALID_FILE_ATTRIBUTES;
  unsigned attributes = 0;
  if (is_read_only(status)) attributes |= FILE_ATTRIBUTE_READONLY;
  if (S_ISDIR(status.st_mode)) attributes |= FILE_ATTRIBUTE_DIRECTORY;
  return attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
}

int SetFileAttributesA(const char* path, unsigned attributes) {
  struct stat status;
  if (::stat(path, &status) != 0) return 0;
  const mode_t before = status.st_mode & 07777;
  const bool read_only = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
  const mode_t after = read_only ? before & ~write_bits : before | S_IWUSR;
  // If nothing changes, no permission to change it is needed.
  return after == before || ::chmod(path, after) == 0;
}

int GetFileSize(const char* path) {
  struct stat status = {};  // if stat fails, counts as no FIFO
  ::stat(path, &status);
  const bool is_fifo = S_ISFIFO(status.st_mode);
  if (is_fifo && ::faccessat(AT_FDCWD, path, R_OK, AT_EACCESS) != 0) return -1;
  // Don't open a FIFO for reading: closing it again would lose what others write meanwhile.
  const Descriptor file(open_file(path, is_fifo ? O_PATH : O_RDONLY | O_NONBLOCK, 0));
  int size = -1;
  if (file.is_open()) _fstat64i32(file.get(), &size);
  return size;
}

int DeleteFileA(const char* path) {
  struct stat status;
  if (::lstat(path, &status) != 0) return 0;
  if (S_ISDIR(status.st_mode)) {
    errno = EISDIR;
    return 0;
  }
  if (S_ISREG(status.st_mode) && is_read_only(status)) {
    errno = EACCES;
    return 0;
  }
  return ::unlink(path) == 0;
}

int CreateDirectoryA(const char* path) { return ::mkdir(path, 0777) == 0; }

int RemoveDirectoryA(const char* path) { return ::rmdir(path) == 0; }

}  // namespace zelvan::platform
