#include <zelvan/platform/drives.h>

#include <direct.h>
#include <windows.h>

namespace zelvan::platform {

int _getdrive() { return ::_getdrive(); }

unsigned GetLogicalDriveStringsA(unsigned size, char* roots) {
  return ::GetLogicalDriveStringsA(size, roots);
}

}  // namespace zelvan::platform
