/// Callers' paths: tests of their length, and completion by a drive letter.
#pragma once

#include <cstdio>

namespace zelvan {

/// The size of a buffer for any path, including the terminator.
inline constexpr int path_size = 1024;

/// Returns true if the path is not null and fits into 1024 bytes; otherwise `errno` has the reason.
bool check_path(const char* path);

/// Completes a rooted path without a drive by a drive on which it exists. Returns 1 if the path in
/// `fixed` exists, else 0; also 0 if no drive has it, although it may exist on a share.
///
/// The current drive is tried first, then those that the system lists, in its order; a root listed
/// in lower case as `a:` or `b:` is left out. `fixed` is the unchanged path if it begins with
/// anything but exactly one backslash, if no drive has it, or if there are no drives at all. It is
/// empty if `check_path` fails.
///
/// Requires: room for 1024 bytes at `fixed`, whatever `size` says.
short osh1_fix_path(char* path, char* fixed, int size);

/// Opens the fixed path, whether it exists or not. Returns a descriptor of at most 32767, or -1.
short osh1_open(char* path, int flags, short mode);

/// Opens a stream on the fixed path, whether it exists or not; returns null on failure.
std::FILE* osh1_fopen(char* path, char* mode);

}  // namespace zelvan
