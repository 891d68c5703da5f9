/// The current directory, and names as the system sees them.
///
/// Every function may run on any thread. What fails leaves its reason in `errno`.
#pragma once

namespace zelvan::platform {

/// Writes the absolute path of the current directory into the `size` bytes of `buffer` and
/// returns its length. Returns 0 and leaves the buffer alone if it does not fit, or if there is no
/// way to it any more: it was removed, or lies outside the root of the process.
unsigned GetCurrentDirectoryA(unsigned size, char* buffer);

/// Writes the absolute form of `path` into the `size` bytes of `buffer` and returns its length.
/// If it does not fit, leaves the buffer alone and returns the size needed, terminator included;
/// so a `size` of 0 asks for that. Returns 0 for an empty path, and where a current directory is
/// needed and can't be had.
///
/// The text alone is worked on: the current directory goes before a path that does not begin
/// with `/`, and empty parts and `.` are dropped, a `/` at the end too. Nothing has to exist.
/// `..` stays: where the part before it is a link, taking both out would name another place. On
/// Windows the form is that by which the system itself opens the path: `..` is taken out, and the
/// drive's own current directory stands in for what is missing.
unsigned GetFullPathNameA(const char* path, unsigned size, char* buffer);

/// Writes the short form of the path of something that exists, a link's target included, into
/// the `size` bytes of `buffer`, and returns its length. Returns 0 and leaves the buffer alone if
/// there is nothing of that name or the form does not fit. On POSIX names have one form only, so
/// a path is its own short form.
unsigned GetShortPathNameA(const char* path, char* buffer, unsigned size);

/// Returns the default prefix of the paths of log files.
const char* log_prefix();

}  // namespace zelvan::platform
