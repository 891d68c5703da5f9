/// Drive letters, for the platforms that have them.
#pragma once

namespace zelvan::platform {

/// The number of the current drive, 1 for A; 0 where there are no drives.
int _getdrive();

/// Writes the roots of all drives into `roots`: of each its letter, a colon and a backslash, with
/// a terminator, and after the last a further terminator. Gives the length without that one, the
/// size needed if `size` bytes don't hold it, and 0 on failure and where there are no drives.
unsigned GetLogicalDriveStringsA(unsigned size, char* roots);

/// Is it one of the letters A to Z and a to z?
bool IsCharAlphaA(char c);

}  // namespace zelvan::platform
