// Descriptors and named files.
#include <zelvan/osh/detail/fixed_path.h>
#include <zelvan/osh/file_access.h>
#include <zelvan/platform/file_transfer.h>
#include <zelvan/platform/files.h>

#include <cerrno>
#include <climits>

using namespace zelvan;

namespace {

constexpr unsigned short write_wanted = 0x2;  // of `osh_file_access`
constexpr unsigned short any_write = 0x92;    // octal 222: owner, group, others
constexpr unsigned short read_only = 0x16D;   // octal 555
constexpr unsigned short read_write = 0x1FF;  // octal 777
constexpr unsigned cat_block = 1024;

/// Returns a caller's flags without sign extension: a `short` with its highest bit set is negative.
int unsigned_flags(short flags) { return static_cast<unsigned short>(flags); }

/// Appends the rest of `source` to `destination`.
bool append_rest(int destination, int source) {
  char block[cat_block];
  for (;;) {
    const int got = osh_read(source, block, sizeof block);
    if (got <= 0) return got == 0;
    if (osh_write(destination, block, static_cast<unsigned>(got)) != got) return false;
  }
}

}  // namespace

int osh_open_binary(char* path, short flags, short mode) {
  return osh1_open(path, unsigned_flags(flags) | platform::_O_BINARY, mode);
}

int osh_open_text(char* path, short flags, short mode) {
  return osh1_open(path, unsigned_flags(flags), mode);
}

short osh_close(int fd) { return static_cast<short>(platform::_close(fd)); }

int osh_read(int fd, void* buffer, unsigned int count) {
  return platform::_read(fd, buffer, count);
}

int osh_write(int fd, void* buffer, unsigned int count) {
  if (count > INT_MAX) {
    errno = EINVAL;
    return -1;
  }
  const int wanted = static_cast<int>(count);
  return platform::_write(fd, buffer, count) == wanted ? wanted : -1;
}

long osh_lseek(int fd, long offset, short whence) { return platform::_lseek(fd, offset, whence); }

int osh_fdfilesize(int fd) {
  int size;
  return platform::_fstat64i32(fd, &size) == 0 ? size : -1;
}

short osh_file_exists(char* path) { return osh_file_access(path, 0); }

short osh_file_access(char* path, unsigned short mode) {
  char fixed[path_size];
  if (osh1_fix_path(path, fixed, sizeof fixed) == 0) return 0;
  const unsigned attributes = platform::GetFileAttributesA(fixed);
  if (attributes == platform::INVALID_FILE_ATTRIBUTES) return 0;
  return (mode & write_wanted) == 0 || (attributes & platform::FILE_ATTRIBUTE_READONLY) == 0;
}

int osh_inquire_file(char* path, unsigned short* mode) {
  char fixed[path_size];
  if (osh1_fix_path(path, fixed, sizeof fixed) == 0) return 0;
  const unsigned attributes = platform::GetFileAttributesA(fixed);
  if (attributes == platform::INVALID_FILE_ATTRIBUTES) return 0;
  const bool is_directory = (attributes & platform::FILE_ATTRIBUTE_DIRECTORY) != 0;
  const bool is_read_only = (attributes & platform::FILE_ATTRIBUTE_READONLY) != 0;
  *mode =
      (is_directory ? osh_kind_directory : osh_kind_file) + (is_read_only ? read_only : read_write);
  return 1;
}

int osh_filesize(char* path) {
  char fixed[path_size];
  return osh1_fix_path(path, fixed, sizeof fixed) != 0 ? platform::GetFileSize(fixed) : -1;
}

short osh_cat(char* destination, char* source) {
  char fixed[path_size];
  if (osh1_fix_path(source, fixed, sizeof fixed) == 0) return 0;
  const int from = osh1_open(fixed, platform::_O_RDONLY | platform::_O_BINARY, 0);
  if (from < 0) return 0;
  const int to = osh1_open(
      destination,
      platform::_O_WRONLY | platform::_O_APPEND | platform::_O_CREAT | platform::_O_BINARY,
      osh_permit_read | osh_permit_write);
  if (to < 0) {
    osh_close(from);
    return 0;
  }
  osh_lseek(to, 0, 2);
  // Refuse to append a file to itself: it would grow without end.
  const bool is_endless = platform::is_same_file(from, to);
  if (is_endless) errno = EINVAL;
  const bool done = !is_endless && append_rest(to, from);
  osh_close(from);
  return osh_close(to) == 0 && done;
}

int osh_copyfile(char* destination, char* source) {
  char fixed[path_size];
  return osh1_fix_path(source, fixed, sizeof fixed) != 0 && check_path(destination) &&
         platform::CopyFileA(fixed, destination) != 0;
}

int osh_rename(char* from, char* to) {
  char fixed[path_size];
  const bool done = osh1_fix_path(from, fixed, sizeof fixed) != 0 && check_path(to) &&
                    platform::MoveFileA(fixed, to) != 0;
  return done ? 0 : -1;
}

short osh_unlink(char* path) {
  char fixed[path_size];
  const bool done =
      osh1_fix_path(path, fixed, sizeof fixed) != 0 && platform::DeleteFileA(fixed) != 0;
  return done ? 0 : 1;
}

int osh_chmod(char* path, unsigned short mode) {
  char fixed[path_size];
  if (osh1_fix_path(path, fixed, sizeof fixed) == 0) return 0;
  const unsigned attributes = platform::FILE_ATTRIBUTE_NORMAL |
                              ((mode & any_write) == 0 ? platform::FILE_ATTRIBUTE_READONLY : 0);
  return platform::SetFileAttributesA(fixed, attributes) != 0;
}

int osh_mkdir(char* path) { return check_path(path) && platform::CreateDirectoryA(path) != 0; }

int osh_rmdir(char* path) { return check_path(path) && platform::RemoveDirectoryA(path) != 0; }
