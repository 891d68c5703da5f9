#include <zelvan/platform/drives.h>

namespace zelvan::platform {

int _getdrive() { return no_drives; }

unsigned GetLogicalDriveStringsA(unsigned, char*) { return 0; }

}  // namespace zelvan::platform
