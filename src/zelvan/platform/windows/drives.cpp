#include <zelvan/platform/drives.h>

#include <direct.h>
#include <windows.h>

namespace zelvan::platform {

int _getdrive() { return ::_getdrive(); }

unsigned GetLogicalDriveStringsA(unsigned size, char* roots) {
  return ::GetLogicalDriveStringsA(size, roots);
}

// The system's own would let in letters beyond ASCII.
bool IsCharAlphaA(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace zelvan::platform
