/// Drive letters, for the platforms that have them.
#pragma once

namespace zelvan::platform {

inline constexpr int no_drives = -1;

/// Returns the number of the drive of the current directory, 1 for A; 0 if that directory is on a
/// share, and no_drives on a system without drives.
int _getdrive();

/// Writes the roots of all drives into `roots`: of each its letter, a colon and a backslash, with
/// a terminator, and after the last a further terminator. Returns the length without that one, the
/// size needed if `size` bytes don't hold it, and 0 on failure and where there are no drives.
unsigned GetLogicalDriveStringsA(unsigned size, char* roots);

}  // namespace zelvan::platform
