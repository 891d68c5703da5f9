/// Paths from callers, checked for their length and given the drive that they may leave out.
#pragma once

#include <cstdio>

namespace zelvan {

/// Room for every path, its terminator included.
inline constexpr int path_size = 1024;

/// Fails if the path is null or doesn't fit; `errno` says why.
bool check_path(const char* path);

/// Adds to a path that is rooted but names no drive the drive on which it exists: the current one,
/// else the first in the order of the drives. `fixed` is the path itself where it begins with
/// anything but just one backslash, where no drive has it, and where there are no drives at all;
/// empty if `check_path` fails. Returns 1 if `fixed` exists, else 0.
///
/// Requires: room for 1024 bytes at `fixed`, whatever `size` says.
short osh1_fix_path(char* path, char* fixed, int size);

/// Opens the fixed path, whether it exists or not. Returns a descriptor of at most 32767, or -1.
short osh1_open(char* path, int flags, short mode);

/// Opens a stream on the fixed path, whether it exists or not; returns null on failure.
std::FILE* osh1_fopen(char* path, char* mode);

}  // namespace zelvan
