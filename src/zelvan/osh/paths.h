/// Paths and file names, taken apart, put together and found.
///
/// Nothing is reported but by results, and these differ from function to function. Names are
/// strings of bytes; both `/` and a backslash can separate, but not for every function: each
/// says which. No function knows the size of a buffer that it writes to. Where a path buffer
/// is asked for, the family's limit holds: 1024 bytes, terminator included, and what would not
/// fit is refused, never cut. No pointer may be null unless a function says so.
///
/// Every function may run on any thread. The current directory and the record of
/// `osh_get_sys_parms` are the whole process's.
#pragma once

#include <zelvan/export.h>

/// Writes the system's short form of the name of something that exists to `alternate`, up to
/// 1024 bytes. Where names have one form only, as on Linux, that is `path` itself; a link that
/// leads nowhere names nothing that exists.
///
/// Result: 1 if the two differ by more than the case of letters, 0 if they don't. -1 if there
/// is no form: then `alternate` is a copy of `path`, or empty if that would not fit 1024 bytes.
ZELVAN_C_API int osh_alternate_pathname(char* path, char* alternate);

/// Writes `first`, a backslash and `second` to `result`. The backslash is left out if `first`
/// ends in one or `second` begins with one; if both do, both stay. A `/` at the seam doesn't
/// count, and an empty `first` does not end in a backslash.
///
/// Result: 1, always. `result` holds the lengths of both, a backslash and a terminator; it may
/// be one of them.
ZELVAN_C_API int osh_append_path(char* first, char* second, char* result);

/// Splits a path at its last separator, `/` or backslash, which goes to neither side: so the
/// root before a name is an empty `directory`, and a path that ends in a separator has an
/// empty `file`. Without a separator all of it is `file`. A byte inside a longer character is no
/// separator; the characters are those of the process's locale, on Windows of its code page.
///
/// Result: 1, or 0 with nothing written if one of the three is null. Neither output gets longer
/// than `path`, and one of them may lie in its place; otherwise it is only read.
ZELVAN_C_API int osh_truncate_path(char* path, char* directory, char* file);

/// Checks nothing. Result: 0, always.
ZELVAN_C_API int osh_verify_file_name(void);

/// The absolute form of `path`, of any length. In spite of the name nothing is looked for: the
/// text goes behind the current directory if it does not begin with `/`, and empty parts, `.`
/// and a `/` at the end are dropped. `..` and links stay as they are, since only the file
/// system knows where a `..` behind a link leads. On Windows it is the form that the system makes,
/// with a drive or a share in front, backslashes, and no `..` left.
///
/// Result: a string of the heap, which the caller releases with `free`. It is empty for an
/// empty path, and where the current directory can't be had. Null where the heap refuses.
ZELVAN_C_API char* osh_find_exec_path(char* path);

/// Writes the absolute path of the current directory, up to 1024 bytes, links resolved.
///
/// Result: 1, or 0 with `directory` untouched if that was removed or its path doesn't fit.
ZELVAN_C_API int osh_get_working_dir(char* directory);

/// The extension of a path with its dot: from the first dot behind the last separator, `/` or
/// backslash, to the end. So `a.tar.gz` has `.tar.gz`, and `.profile` is all extension.
///
/// Result: a pointer into `path`; without an extension to its terminator, an empty string.
ZELVAN_C_API char* utl_file_extension(char* path);

/// Finds a name that no file has: `prefix` followed by `letters`, in which capital letters
/// count on until the name is free, Z after Y and then A with a carry to the left. "AAZ" is
/// followed by "ABA". All other characters keep their places, and no carry reaches `prefix`.
/// `prefix` may be a path.
///
/// Result: 0 with the name in `result`, up to 1024 bytes, and `errno` as it was before. -1 if
/// all names from there on are taken, with the last of them in `result`, or if a name would
/// not fit 1024 bytes, with `result` empty. `result` may be `prefix` or `letters`.
///
/// Somebody else may take the name before you do: create the file exclusively, and ask again
/// if it is there by then.
ZELVAN_C_API int utl_unique_filename(char* prefix, char* letters, char* result);

/// Writes the ten numbers of the file parameters to `parms`: 1, 2, the system type of
/// `osh_system_type`, 2, 1, 1, 2, 4, 4, 8. No result.
ZELVAN_C_API void osh_get_file_parms(short* parms);

/// Result: the address of the same ten numbers in a record that the library owns, the same at
/// every call. It is the caller's to read, not to release.
ZELVAN_C_API short* osh_get_sys_parms(void);
