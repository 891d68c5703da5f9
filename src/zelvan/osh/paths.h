/// Paths and file names: splitting, joining, searching.
///
/// Failures are reported by results only, which differ from function to function. Names are strings
/// of bytes. Each function says whether `/`, a backslash or both are separators. No function knows
/// the size of a buffer that it writes to. Buffers for paths hold 1024 bytes, terminator included;
/// a longer path is refused, never cut. No pointer may be null unless a comment allows it.
///
/// Threads: every function may be called from any thread. The current directory and the record of
/// `osh_get_sys_parms` belong to the whole process.
#pragma once

#include <zelvan/export.h>

/// Writes the system's short form of the name of an existing file to `alternate`, up to 1024 bytes.
///
/// Where names have one form only, as on Linux, that is `path` itself.
///
/// Returns 1 if the two differ by more than the case of letters, else 0. Returns -1 if nothing of
/// that name exists, or only a link that leads nowhere: then `alternate` is a copy of `path`, or
/// empty if that would not fit 1024 bytes.
ZELVAN_C_API int osh_alternate_pathname(char* path, char* alternate);

/// Writes `first`, a backslash and `second` to `result`. Returns 1.
///
/// The backslash is left out if `first` ends in one or `second` begins with one; if both do, both
/// stay. A `/` there doesn't count, and an empty `first` does not end in a backslash.
///
/// Requires: room in `result` for both texts, a backslash and a terminator. `result` may be `first`
/// or `second`.
ZELVAN_C_API int osh_append_path(char* first, char* second, char* result);

/// Splits a path at its last separator, `/` or backslash, into `directory` and `file`.
///
/// The separator goes to neither: so `/name` has an empty `directory`, and a path that ends in a
/// separator has an empty `file`. Without a separator the whole path is `file`. A byte inside a
/// longer character is no separator; the characters are those of the process's locale, on Windows
/// of its code page.
///
/// Returns 1, or 0 with nothing written if one of the three is null. Neither output gets longer
/// than `path`. One of them may be the same buffer as `path`, which otherwise is only read.
ZELVAN_C_API int osh_truncate_path(char* path, char* directory, char* file);

/// Checks nothing and returns 0.
ZELVAN_C_API int osh_verify_file_name(void);

/// Returns the absolute form of `path`, of any length. In spite of its name it searches nothing.
///
/// A path that does not begin with `/` is appended to the current directory; empty parts, `.` and a
/// `/` at the end are dropped. `..` and links stay as they are, since only the file system knows
/// where a `..` after a link leads. On Windows it is the form that the system makes, with a drive
/// or a share at its start, backslashes, and without `..`.
///
/// The result comes from `malloc`, and the caller releases it with `free`. It is empty if the path
/// is empty or the current directory can't be determined, and null if the heap refuses.
ZELVAN_C_API char* osh_find_exec_path(char* path);

/// Writes the absolute path of the current directory, up to 1024 bytes, links resolved.
///
/// Returns 1, or 0 with `directory` unchanged if the current directory was removed or its path
/// doesn't fit.
ZELVAN_C_API int osh_get_working_dir(char* directory);

/// Returns the extension of a path, its dot included, as a pointer into `path`.
///
/// It starts at the first dot after the last separator, `/` or backslash. So `a.tar.gz` has
/// `.tar.gz`, and the whole of `.profile` is an extension. Without an extension the result is an
/// empty string, the terminator of `path`.
ZELVAN_C_API char* utl_file_extension(char* path);

/// Finds an unused file name: `prefix`, followed by `letters`, which are counted up until no file
/// has the name.
///
/// Capital letters count like digits, from A to Z with a carry to the left: "ABA" comes after
/// "AAZ". All other characters stay, and no carry reaches `prefix`, which may be a path.
///
/// Returns 0 with the name in `result`, up to 1024 bytes, and `errno` unchanged. Returns -1 if all
/// names from there on are taken, with the last of them in `result`, or if a name would not fit
/// 1024 bytes, with `result` empty. `result` may be `prefix` or `letters`.
///
/// Another process may take the name before you do: create the file exclusively, and call again if
/// it exists by then.
ZELVAN_C_API int utl_unique_filename(char* prefix, char* letters, char* result);

/// Writes the ten numbers of the file parameters to `parms`: 1, 2, the system type of
/// `osh_system_type`, 2, 1, 1, 2, 4, 4, 8.
ZELVAN_C_API void osh_get_file_parms(short* parms);

/// Returns the address of the ten numbers of `osh_get_file_parms` in a record that the library
/// owns, the same at every call. The caller may read it.
ZELVAN_C_API short* osh_get_sys_parms(void);
