/// Files: opening, reading, writing, copying, renaming, removing, and queries about them.
///
/// **Results differ from function to function,** and callers rely on each: on success `osh_unlink`
/// returns 0 and `osh_mkdir` 1. Every comment below states its own. Nothing is printed or thrown;
/// `errno` has the reason of a failure.
///
/// **Paths** are null-terminated bytes of at most 1023. A longer path, or a null one, is refused
/// with the function's own failure; nothing is cut. Symbolic links are followed, except by
/// `osh_rename` and `osh_unlink`; these two refuse a link that leads nowhere. On Windows a path
/// with one leading backslash names the file on the current drive, or else on the first drive that
/// has it; where there are no drives it names just the file of that name.
///
/// **Read-only** is a file that nobody has permission to write, or on Windows one that is marked
/// so. No user can open it for writing, overwrite or delete it here, not even a privileged one; it
/// can be renamed.
///
/// **Power cuts.** `osh_copyfile` over a file sends the content to the disk before it replaces the
/// file: after a power cut the file has either the old content or the new. `osh_rename` to another
/// file system sends the content and the new name to the disk before it removes the old name.
/// Nothing else waits for the disk. After a power cut a copy under a new name may be missing or
/// empty, a file that was renamed within its file system may have either name, and recently written
/// data may be missing.
///
/// **Temporary names.** While a copy is made, its file has no name where the file system allows
/// that, as most on Linux do. Elsewhere, and for a moment at the end, it is called `.zelvan-PID-N`,
/// in the directory of the destination: PID is the number of the process, N counts from 0. If the
/// process is killed, a file of that name may stay. The library never deletes it later; you may.
///
/// **Sizes** are 32 bits wide where the result is an `int`: of a file of 2 GiB or more they are the
/// low 32 bits, which may look negative. Positions within a file are `long`. Where that has 64
/// bits, `osh_lseek` to the end returns the whole size, and such files can be read and written in
/// full. On Windows it has 32 bits, and a call that would return a position of 2 GiB or more fails.
///
/// **Descriptors** fit in `short`. Programs that the process starts inherit no file opened here.
///
/// **Signals.** An interrupted call is resumed, also when a stream is opened and in `osh_readLine`.
/// The other stream functions behave as the runtime's do: a signal whose handler was installed
/// without SA_RESTART interrupts them, and the GNU C library then drops data that was buffered for
/// writing.
///
/// **On Windows** the system puts a copy in the place of a file in two steps. If the process ends
/// between them, the old content stays in the same directory as `.zelvan-PID-N.old`; it also does
/// if the second step fails and can't be undone. A move to another drive is undone if its source
/// can't be deleted; if that fails too, the file is in both places.
///
/// Threads: the library keeps no state, so every function may be called from any thread. A stream
/// is locked during a call. On POSIX a thread that is cancelled during a call leaves no stream
/// locked.
#pragma once

#include <zelvan/export.h>

#include <cstddef>
#include <cstdio>

// ---- how a file is opened: one of the first three, combined with any of the others by `|`

inline constexpr short osh_open_read_only = 0x0000;   ///< for reading
inline constexpr short osh_open_write_only = 0x0001;  ///< for writing
inline constexpr short osh_open_read_write = 0x0002;  ///< for reading and writing
inline constexpr short osh_open_append = 0x0008;      ///< every write goes to the end
inline constexpr short osh_open_create = 0x0100;      ///< if it doesn't exist
inline constexpr short osh_open_truncate = 0x0200;    ///< to length 0; only when opened to write
inline constexpr short osh_open_exclusive = 0x0400;   ///< with create: fail if it exists
inline constexpr short osh_open_as_text = 0x4000;     ///< see `osh_open_text`
inline constexpr short osh_open_as_binary = static_cast<short>(0x8000);  ///< no translation

// ---- the permissions of a file that is created
//
// Values for the argument `mode` of the functions that open a file: these two, or any of the nine
// permission bits of a Unix mode. On Windows only osh_permit_write counts: without it the file is
// read-only.

inline constexpr short osh_permit_read = 0x100;  ///< its owner may read it, even without this bit
inline constexpr short osh_permit_write = 0x80;  ///< its owner may write it

// ---- the kinds of `osh_inquire_file`, to which it adds the permissions

inline constexpr unsigned short osh_kind_file = 0x400;        ///< anything but a directory
inline constexpr unsigned short osh_kind_directory = 0x1000;  ///< a directory

// ---- descriptors

/// Opens a file, binary. Returns a descriptor of 0 to 32767, or -1; a call that fails truncates
/// nothing.
///
/// `mode` counts only for a file that is created: its permissions, less the process's mask. On
/// Windows flags that aren't listed above are those of the C runtime; elsewhere they have no
/// effect. Refused: a directory, write-only and read-write together, and truncating a file that is
/// opened only to be read.
ZELVAN_C_API int osh_open_binary(char* path, short flags, short mode);

/// Opens a file as text; all else is as with `osh_open_binary`. On Windows the runtime writes a
/// line feed as carriage return and line feed and reads that as one; elsewhere bytes are not
/// translated.
ZELVAN_C_API int osh_open_text(char* path, short flags, short mode);

/// Closes a descriptor. Returns 0, or -1.
ZELVAN_C_API short osh_close(int fd);

/// Reads up to `count` bytes, INT_MAX at most. Returns the number of bytes read, 0 at the end of
/// the file, negative on failure.
ZELVAN_C_API int osh_read(int fd, void* buffer, unsigned int count);

/// Writes `count` bytes. Returns `count`, or -1 if not all of them could be written. A count above
/// INT_MAX is refused.
ZELVAN_C_API int osh_write(int fd, void* buffer, unsigned int count);

/// Sets the position of the next access, counted from the start (`whence` 0), the current position
/// (1) or the end (2). Returns the new position from the start, or -1.
ZELVAN_C_API long osh_lseek(int fd, long offset, short whence);

/// Returns the size of an open file, its low 32 bits, or -1.
ZELVAN_C_API int osh_fdfilesize(int fd);

// ---- streams
//
// Requires, throughout: `fp` is an open stream.

/// Opens a stream, binary: `mode` is "r", "w", "a" or one of these and one more character, mostly
/// "+"; what follows is dropped. Returns the stream, to be closed by `osh_fclose`, or null.
///
/// A directory is refused, and so is a null or empty mode.
ZELVAN_C_API std::FILE* osh_fopen_binary(char* path, char* mode);

/// Opens a stream with any mode of the runtime's `fopen`, of up to 62 characters; all else is as
/// with `osh_fopen_binary`.
ZELVAN_C_API std::FILE* osh_fopen_text(char* path, char* mode);

/// Closes a stream. Returns 0, or -1 if written data may be lost; the stream is closed in either
/// case.
ZELVAN_C_API short osh_fclose(std::FILE* fp);

/// Sets the position of the next access, as `osh_lseek` does. Returns 0, or nonzero on failure.
ZELVAN_C_API short osh_fseek(std::FILE* fp, long offset, int whence);

/// Returns the position of the next access, or -1.
ZELVAN_C_API long osh_ftell(std::FILE* fp);

/// Writes buffered data to the file. Returns 0, even if there was none, or -1 on failure.
ZELVAN_C_API short osh_fflush(std::FILE* fp);

/// Writes a number in decimal, padded with blanks to `width` characters: before it, or after it if
/// `width` is negative. Returns the number of characters written, negative on failure.
ZELVAN_C_API int osh_fputint(int value, int width, std::FILE* fp);

/// Reads a line, including its end, without translation, up to `size` bytes. Returns the number of
/// bytes stored; 0 at the end of the file and if `size` is less than 1.
///
/// A line ends after a line feed, or after a carriage return that neither a line feed nor another
/// carriage return follows. No terminator is written. A read error ends the line as the end of the
/// file does. Whether a carriage return ends the line depends on the next byte. So on a pipe or
/// terminal, a line that ends with one is returned only after more data has arrived.
///
/// Requires: room for `size` bytes.
ZELVAN_C_API int osh_readLine(std::FILE* fp, char* buffer, int size);

// ---- the runtime's own stream functions, with its arguments and results

/// Reads `count` elements of `size` bytes. Returns the number of whole elements read, fewer at the
/// end of the file and on an error. Requires: room for all of them.
ZELVAN_C_API std::size_t osh_fread(void* buffer, unsigned int size, unsigned int count,
                                   std::FILE* fp);

/// Writes `count` elements of `size` bytes. Returns the number of whole elements written, fewer on
/// an error.
ZELVAN_C_API std::size_t osh_fwrite(void* buffer, unsigned int size, unsigned int count,
                                    std::FILE* fp);

/// Reads up to the next line feed, that included, but at most `size` - 1 bytes, and adds a
/// terminator. Returns `buffer`, or null on an error and if the file ends before the first byte.
ZELVAN_C_API char* osh_fgets(char* buffer, int size, std::FILE* fp);

/// Reads a byte. Returns 0 to 255, or the runtime's `EOF`, -1, at the end of the file and on an
/// error.
ZELVAN_C_API int osh_getc(std::FILE* fp);

/// Puts a byte back, to be read next. Only one byte is certain to fit. Returns the byte, or `EOF`.
ZELVAN_C_API int osh_ungetc(int c, std::FILE* fp);

/// Writes a byte, the low 8 bits of `c`. Returns the byte, or `EOF` on an error.
ZELVAN_C_API int osh_fputc(int c, std::FILE* fp);

/// Writes a text without its terminator. Returns a value that is not negative, or `EOF` on an
/// error.
ZELVAN_C_API int osh_fputs(char* text, std::FILE* fp);

/// Returns nonzero after a read has reached the end of the file, else 0.
ZELVAN_C_API int osh_feof(std::FILE* fp);

/// Sets the position to the start of the file and clears the end-of-file and error states.
ZELVAN_C_API void osh_rewind(std::FILE* fp);

/// Returns the descriptor under a stream, or -1. The stream keeps it.
ZELVAN_C_API int osh_fileno(std::FILE* fp);

/// Opens a stream over a descriptor, with any mode of the runtime that agrees with the descriptor's
/// flags. Returns the stream, or null. `osh_fclose` then closes both.
ZELVAN_C_API std::FILE* osh_fdopen(int fd, char* mode);

// ---- named files

/// Returns 1 if the path exists, else 0.
ZELVAN_C_API short osh_file_exists(char* path);

/// Returns 1 if the path exists, else 0. If `mode` contains the bit of value 2, also returns 0 for
/// a file that is read-only. Does not test whether this user may write.
ZELVAN_C_API short osh_file_access(char* path, unsigned short mode);

/// Stores kind and permissions of a path. Returns 1, or 0 with `*mode` untouched.
///
/// `*mode` becomes osh_kind_directory or osh_kind_file, plus 0x16D (octal 555) if it is
/// read-only, else 0x1FF (octal 777).
ZELVAN_C_API int osh_inquire_file(char* path, unsigned short* mode);

/// Returns the size of a file that may be read, its low 32 bits, or -1. For a directory it is -1.
/// For a FIFO it is 0, and its writers keep waiting.
ZELVAN_C_API int osh_filesize(char* path);

/// Appends `source` to `destination`, which is created if need be, for its owner alone. Returns 1,
/// or 0.
///
/// If it fails midway, the destination ends with a part of the source. A file is not appended to
/// itself, whatever the names.
ZELVAN_C_API short osh_cat(char* destination, char* source);

/// Copies a regular file over another or to a new name: destination first. Returns nonzero, or 0.
///
/// The copy takes its place only when it is complete: whatever fails, the destination is as it was.
/// (For the one exception see **On Windows** at the top of this file.) The directory of the
/// destination must be writable. If others hold a lease on the source, the call waits until they
/// give it up.
///
/// A new file gets the permissions of the source, less the process's mask. If the source has an
/// access-control list, its group's own permissions count, not the list's mask. If the new file's
/// directory has a default list, that applies in place of the process's mask. On Windows a new file
/// gets the attributes of the source, and inherits permissions from its directory.
///
/// A file that is replaced keeps its permissions, its access list and, where possible, its owner
/// and group. It loses its set-ID bits, and other hard links to it keep the old content. If it
/// can't keep its group, the group's permissions are reduced to those of others. Other extended
/// attributes are not copied. If the destination is a symbolic link, the file that it leads to is
/// replaced.
///
/// Holes of a sparse source are filled with zeros, so its copy can take more room on the disk.
///
/// Refused:
/// - a source that is no regular file; it is not even opened;
/// - a file onto itself;
/// - a destination that is read-only, that this user may not write or that is no regular file;
/// - one that can't be replaced: a mount point, or another user's file in a sticky directory;
/// - one whose permissions or access list the copy can't get;
/// - a symbolic link that leads nowhere, or to a path of more than 4095 bytes.
ZELVAN_C_API int osh_copyfile(char* destination, char* source);

/// Renames a file or directory: old name first. Returns 0, or -1.
///
/// Nothing is overwritten: the new name must be free. Some file systems can't rename without
/// overwriting. There a file gets the new name as a second one before it loses the old one. Where a
/// file can't have two names, as on exFAT and FAT by FUSE, an empty file reserves the new name and
/// is then replaced: data that another process writes into it in the meantime is lost. A
/// directory's new name is reserved by an empty directory. In all three cases both names exist for
/// a moment, and stay if the process is killed then.
///
/// A regular file may move to another file system; directories, symbolic links and devices may not.
/// The file keeps its permissions, access list and times. It keeps its owner and group where the
/// system allows that, as in `osh_copyfile`, but no other extended attributes. The move fails if
/// its permissions or list can't be kept there, or if the source can't be removed. If it is unknown
/// whether the source was removed, the call fails and the copy stays. On Windows a file that is
/// moved to another drive inherits permissions from its new directory.
ZELVAN_C_API int osh_rename(char* from, char* to);

/// Deletes a file or a symbolic link. Returns 0, or 1 on failure. A directory is refused, and so is
/// a read-only file; on Windows also a link to a directory.
ZELVAN_C_API short osh_unlink(char* path);

/// Makes a file or directory read-only, or writable if `mode` has any write bit (octal 222).
/// Returns 1, or 0.
///
/// Nothing else of `mode` counts. Writable means that its owner may write; on the others'
/// permissions it has no effect.
ZELVAN_C_API int osh_chmod(char* path, unsigned short mode);

/// Makes one directory; the one above it must exist. Returns 1, or 0.
ZELVAN_C_API int osh_mkdir(char* path);

/// Removes an empty directory. Returns 1, or 0.
ZELVAN_C_API int osh_rmdir(char* path);
