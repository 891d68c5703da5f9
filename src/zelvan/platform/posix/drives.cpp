#include <zelvan/platform/drives.h>

namespace zelvan::platform {

int _getdrive() { return no_drives; }

unsigned GetLogicalDriveStringsA(unsigned, char*) { return 0; }

bool IsCharAlphaA(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace zelvan::platform
