#include <zelvan/platform/files.h>
#include <zelvan/platform/windows/handle.h>
#include <zelvan/platform/windows/last_error.h>
#include <zelvan/platform/windows/system_path.h>

#include <algorithm>
#include <climits>
#include <cstring>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace zelvan::platform {
namespace {

constexpr std::size_t longest_mode = 62;  // of a stream

unsigned attributes_of(const SystemPath& path) {
  const DWORD attributes = ::GetFileAttributesW(path.get());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
    return attributes;
  }
  // A link counts as the file that it leads to; a link that leads nowhere doesn't exist.
  const Handle target(::CreateFileW(path.get(), 0, share_all, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION information;
  const bool is_there = ::GetFileInformationByHandle(target.get(), &information);
  return is_there ? information.dwFileAttributes : INVALID_FILE_ATTRIBUTES;
}

/// Fails with EACCES if the path is a read-only file, since not every system stops a privileged
/// user.
bool check_not_read_only(const SystemPath& path) {
  constexpr unsigned both = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY;
  if ((attributes_of(path) & both) != FILE_ATTRIBUTE_READONLY) return true;
  errno = EACCES;
  return false;
}

HANDLE handle_under(int fd) { return reinterpret_cast<HANDLE>(::_get_osfhandle(fd)); }

}  // namespace

int _open(const char* path, int flags, int mode) {
  constexpr int access_mask = _O_WRONLY | _O_RDWR;
  const int access = flags & access_mask;
  if (access == access_mask || (access == _O_RDONLY && (flags & _O_TRUNC) != 0)) {
    errno = EINVAL;
    return -1;
  }
  const SystemPath name(path);
  if (access != _O_RDONLY && !check_not_read_only(name)) return -1;
  return ::_wopen(name.get(), flags | _O_NOINHERIT, mode);
}

int _close(int fd) { return ::_close(fd); }

int _read(int fd, void* buffer, unsigned count) {
  return ::_read(fd, buffer, std::min<unsigned>(count, INT_MAX));
}

int _write(int fd, const void* buffer, unsigned count) {
  return ::_write(fd, buffer, std::min<unsigned>(count, INT_MAX));
}

long _lseek(int fd, long offset, int whence) {
  const __int64 before = ::_telli64(fd);
  const __int64 place = ::_lseeki64(fd, offset, whence);
  if (place <= LONG_MAX) return static_cast<long>(place);
  ::_lseeki64(fd, before, SEEK_SET);
  errno = EOVERFLOW;
  return -1;
}

int _fstat64i32(int fd, int* size) {
  struct _stat64 status;  // the 32-bit form fails for a large file
  if (::_fstat64(fd, &status) != 0) return -1;
  *size = static_cast<int>(static_cast<unsigned>(status.st_size));
  return 0;
}

bool is_same_file(int fd, int other) { return is_same_file(handle_under(fd), handle_under(other)); }

std::FILE* fopen(const char* path, const char* mode) {
  if (mode[0] == '\0' || std::strlen(mode) > longest_mode) {
    errno = EINVAL;
    return nullptr;
  }
  const SystemPath name(path);
  const bool writes = mode[0] != 'r' || std::strchr(mode, '+') != nullptr;
  if (writes && !check_not_read_only(name)) return nullptr;
  wchar_t not_inherited[longest_mode + 2] = {static_cast<wchar_t>(mode[0]), L'N'};
  std::copy(mode + 1, mode + std::strlen(mode), not_inherited + 2);  // a mode is ASCII
  return ::_wfopen(name.get(), not_inherited);
}

int _fileno(std::FILE* stream) { return ::_fileno(stream); }

std::FILE* _fdopen(int fd, const char* mode) { return ::_fdopen(fd, mode); }

int _access(const char* path, int) {
  return GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES ? 0 : -1;
}

unsigned GetFileAttributesA(const char* path) {
  const unsigned attributes = attributes_of(SystemPath(path));
  if (attributes == INVALID_FILE_ATTRIBUTES) with_errno(false);
  return attributes;
}

int SetFileAttributesA(const char* path, unsigned attributes) {
  return with_errno(::SetFileAttributesW(SystemPath(path).get(), attributes));
}

int GetFileSize(const char* path) {
  const Handle file(::CreateFileW(SystemPath(path).get(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!with_errno(file.is_open())) return -1;
  return static_cast<int>(::GetFileSize(file.get(), nullptr));
}

int DeleteFileA(const char* path) { return with_errno(::DeleteFileW(SystemPath(path).get())); }

int CreateDirectoryA(const char* path) {
  return with_errno(::CreateDirectoryW(SystemPath(path).get(), nullptr));
}

int RemoveDirectoryA(const char* path) {
  return with_errno(::RemoveDirectoryW(SystemPath(path).get()));
}

}  // namespace zelvan::platform
