#include <zelvan/platform/processes.h>

#include <unistd.h>

namespace zelvan::platform {

// Nothing can be started here: the platform has no processes.

int CreateProcessA(const char*) { return 0; }

int WinExec(const char*) { return 2; }

int _getpid() { return ::getpid(); }

}  // namespace zelvan::platform
