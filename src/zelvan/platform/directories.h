/// The current directory, and the absolute and short forms of paths.
///
/// Every function may run on any thread. A failure leaves its reason in `errno`.
#pragma once

namespace zelvan::platform {

/// Writes the absolute path of the current directory into the `size` bytes of `buffer` and returns
/// its length. Returns 0 and leaves the buffer unchanged if the path does not fit, or if the
/// directory can't be reached any more: it was removed, or lies outside the root of the process.
unsigned GetCurrentDirectoryA(unsigned size, char* buffer);

/// Writes the absolute form of `path` into the `size` bytes of `buffer` and returns its length. If
/// it does not fit, leaves the buffer unchanged and returns the size needed, including the
/// terminator; pass a `size` of 0 to ask for it. Returns 0 for an empty path, and if the current
/// directory is needed but can't be reached.
///
/// Works on the text alone; nothing has to exist. Puts the current directory before a path that
/// does not begin with `/`. Drops empty parts, `.` and a `/` at the end. Keeps `..`: if the part
/// before it is a link, removing both would name another place. On Windows the result is the form
/// by which the system itself opens the path: `..` is resolved, and a drive's own current directory
/// completes a path that lacks it.
unsigned GetFullPathNameA(const char* path, unsigned size, char* buffer);

/// Writes the short form of an existing path into the `size` bytes of `buffer`, and returns its
/// length. Returns 0 and leaves the buffer unchanged if the path, or the target of a link, does not
/// exist or the form does not fit. On POSIX, names have only one form, so a path is its own short
/// form.
unsigned GetShortPathNameA(const char* path, char* buffer, unsigned size);

/// Returns the default prefix of the paths of log files.
const char* log_prefix();

}  // namespace zelvan::platform
