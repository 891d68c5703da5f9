/// Drive letters, on platforms that have them.
#pragma once

namespace zelvan::platform {

inline constexpr int no_drives = -1;

/// Returns the number of the current directory's drive, 1 for A. Returns 0 if that directory is on
/// a share, and `no_drives` on a system without drives.
int _getdrive();

/// Writes the roots of all drives into `roots`, and returns the length. A root is a letter, a
/// colon, a backslash and a terminator; a further terminator, not part of the length, ends the
/// list. Returns the size needed if `size` bytes are too few, and 0 on failure or without drives.
unsigned GetLogicalDriveStringsA(unsigned size, char* roots);

}  // namespace zelvan::platform
