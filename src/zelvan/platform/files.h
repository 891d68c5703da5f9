/// Files: opening, reading and writing them, and queries about a path.
///
/// The numbers of flags and attributes are those of the library's interface, not the operating
/// system's. Paths are null-terminated bytes and follow symbolic links. A failure leaves its
/// reason in `errno`. An interrupted call is resumed.
///
/// A file is read-only if nobody has permission to write it, on Windows if it has the read-only
/// attribute. It is never opened for writing, overwritten or deleted, not even by a privileged
/// user.
///
/// Started programs do not inherit files opened here. Every function may run on any thread.
#pragma once

#include <cstdio>

namespace zelvan::platform {

// The flags of `_open`. On POSIX any other bit is ignored; files are read and written unchanged, so
// text and binary are the same. On Windows every bit is passed to the runtime, which translates the
// line ends of a file that isn't opened as binary.
inline constexpr int _O_RDONLY = 0x0000;
inline constexpr int _O_WRONLY = 0x0001;
inline constexpr int _O_RDWR = 0x0002;
inline constexpr int _O_APPEND = 0x0008;
inline constexpr int _O_CREAT = 0x0100;
inline constexpr int _O_TRUNC = 0x0200;
inline constexpr int _O_EXCL = 0x0400;  // with _O_CREAT: fail if the path exists
inline constexpr int _O_BINARY = 0x8000;

/// Opens a file and returns its descriptor, at most 32767, or -1. A new file gets the permissions
/// `mode` less the process's mask; its owner may always read it.
///
/// Fails for a directory, and if the flags truncate a file that is opened only to be read. A call
/// that fails truncates nothing.
int _open(const char* path, int flags, int mode);

/// Closes the descriptor. Returns 0, or -1 on failure; it is closed in either case.
int _close(int fd);

/// Reads up to `count` bytes, at most INT_MAX. Returns the number of bytes read, 0 at the end of
/// the file, -1 on failure.
int _read(int fd, void* buffer, unsigned count);

/// Writes `count` bytes, at most INT_MAX, and returns the number of bytes written. That is less
/// than `count` only after a failure; -1 if nothing was written.
int _write(int fd, const void* buffer, unsigned count);

/// Sets the position of the next access, relative to the start of the file (`whence` 0), the
/// present position (1) or the end (2). Returns the new position from the start. Returns -1 on
/// failure, also if a `long` can't hold it.
long _lseek(int fd, long offset, int whence);

/// Stores the low 32 bits of an open file's size in `size`. Returns 0, or -1 with `size` untouched.
int _fstat64i32(int fd, int* size);

/// Returns true if both descriptors refer to one file; false if the system can't tell.
bool is_same_file(int fd, int other);

/// Opens a stream as the runtime's `fopen` does, or returns null. Fails for a directory.
std::FILE* fopen(const char* path, const char* mode);

/// Returns the descriptor under a stream, or -1.
int _fileno(std::FILE* stream);

/// Returns a stream over a descriptor, which it owns from then on; null on failure.
std::FILE* _fdopen(int fd, const char* mode);

/// Returns 0 if the path exists, else -1. Requires: `mode` is 0.
int _access(const char* path, int mode);

inline constexpr unsigned FILE_ATTRIBUTE_READONLY = 0x01;
inline constexpr unsigned FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr unsigned FILE_ATTRIBUTE_NORMAL = 0x80;  // no other attribute
inline constexpr unsigned INVALID_FILE_ATTRIBUTES = ~0u;

/// Returns the attributes of a file or directory, or INVALID_FILE_ATTRIBUTES if there is none.
unsigned GetFileAttributesA(const char* path);

/// Removes all write permissions if `attributes` has the read-only bit, otherwise restores the
/// owner's. No other permission changes; on Windows the attributes become exactly these. Returns
/// nonzero on success.
int SetFileAttributesA(const char* path, unsigned attributes);

/// Returns the low 32 bits of the size of an existing file, or -1. Fails for a directory and for a
/// file that may not be read. Never waits, whatever the kind of file, and is not seen by a FIFO's
/// writers.
int GetFileSize(const char* path);

/// Deletes a file or a symbolic link, never a directory. Returns nonzero on success.
int DeleteFileA(const char* path);

/// Creates one directory; its parent must exist. Returns nonzero on success.
int CreateDirectoryA(const char* path);

/// Removes an empty directory. Returns nonzero on success.
int RemoveDirectoryA(const char* path);

}  // namespace zelvan::platform
